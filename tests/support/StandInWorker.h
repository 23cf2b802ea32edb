#pragma once

#include "component/protocol/Reason.h"

#include <QJsonObject>
#include <QString>

namespace Quorlin {

/// The pipe of a worker that does what it is told, good or bad.
///
/// A program by the name of one of the component's workers does that worker's requests as the
/// document asks for; see StandInDocuments. Every program knows the requests "echo",
/// "progress", "garbage", "other-id", "pid", "die", "hang", "hang-with-child",
/// "exit-with-child" and "wait-for".
class StandInWorker
{
public:
    /// Greets as the option after --greeting says ("none", "unavailable", "die", "garbage";
    /// a proper greeting otherwise) and serves requests.
    int run(const QString &greeting);

    void say(const QJsonObject &message);
    void say(const QByteArray &bytes);

    // What a request may end in.
    void progress(int percent);
    void done(QJsonObject values = {});
    void failed(Reason reason, const QString &text = {});
    [[noreturn]] static void die();
    [[noreturn]] static void hang();
    /// @return once the file is there; gives up after a minute.
    static void waitFor(const QString &file);

private:
    void serve(const QJsonObject &request);
    void note(QJsonObject request) const;
    [[nodiscard]] qint64 startChild() const;

    QJsonObject m_request;
};

} // namespace Quorlin
