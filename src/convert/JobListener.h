#pragma once

#include "component/protocol/Reason.h"

#include <QJsonObject>

namespace Quorlin {

/// Who waits for the reports of one job. Called from the event loop, one report at a time.
class JobListener
{
public:
    JobListener() = default;
    virtual ~JobListener() = default;
    JobListener(const JobListener &) = delete;
    JobListener &operator=(const JobListener &) = delete;

    /// A report of the job. After one of type "complete" nothing more comes.
    virtual void jobReported(const QJsonObject &report) = 0;

    /// The job ended without completion: the component died, cannot be started or did not
    /// take the job. Nothing more comes.
    virtual void jobLost(Reason reason, const QString &text) = 0;
};

} // namespace Quorlin
