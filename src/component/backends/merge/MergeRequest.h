#pragma once

#include "component/protocol/Reason.h"

#include <QJsonObject>
#include <QString>

#include <functional>

namespace Quorlin {

/// What became of one merge.
struct MergeOutcome
{
    Reason reason = Reason::None; ///< None: the merged file is there
    QString text;                 ///< for people, names the file that was at fault
    QJsonObject values;           ///< "pages", or "index" of that file, from 1
};

/// One request of the merge worker: {"op":"merge","inputs":[{"file":…,"title":…}],"output":…,
/// "bookmarks":true}.
class MergeRequest
{
public:
    /// @param progress called with 0 to 100 after each document and while writing.
    MergeRequest(const QJsonObject &request, std::function<void(int)> progress);

    [[nodiscard]] MergeOutcome run();

private:
    [[nodiscard]] QString refusal() const;
    [[nodiscard]] MergeOutcome merge();
    [[nodiscard]] MergeOutcome failed(Reason reason, const QString &text) const;

    QJsonObject m_request;
    std::function<void(int)> m_progress;
    int m_index = 0;    ///< of the input that is being read, from 1; 0 when none is
    QString m_fileName; ///< of that input
};

} // namespace Quorlin
