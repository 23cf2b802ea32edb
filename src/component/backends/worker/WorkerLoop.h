#pragma once

#include "component/backends/worker/StandardPipe.h"
#include "component/protocol/Reason.h"

#include <QJsonObject>
#include <QString>

#include <functional>
#include <mutex>

namespace Quorlin {

/// What a worker answers to one request.
struct WorkerResult
{
    Reason reason = Reason::None; ///< None: done
    QString text;                 ///< for people; empty means the reason's own text
    QJsonObject values;           ///< what the request asked for, merged into the answer
    bool last = false;            ///< the worker cannot go on: it ends with this answer
};

/// The life of a worker process: greets, answers requests one at a time, ends at end-of-file.
///
/// A worker reads one JSON object a line from standard input, each with an "id", and writes
/// to standard output:
///   {"event":"ready", …}                         once, or
///   {"event":"unavailable","reason":"program-missing","text":"…"}   and nothing more
///   {"id":7,"event":"progress","percent":40}     any number of times
///   {"id":7,"event":"done", …}  or
///   {"id":7,"event":"failed","reason":"protected","text":"…"}   exactly once
/// The last of these carry "last":true from a worker that ends with them.
/// Standard error is for logs only. The worker may block while it works; its supervisor
/// watches the clock and kills the whole process group of a worker that hangs.
class WorkerLoop
{
public:
    using Handler = std::function<WorkerResult(const QJsonObject &request)>;

    /// Greets with these values and serves requests until end-of-file.
    /// @return the exit code of the process: 0 at end-of-file, 1 when the pipe broke, 2 after
    /// a result that was the last one.
    int run(const QJsonObject &greeting, const Handler &handler);

    /// Says, in place of a greeting, why this worker cannot work.
    /// @return the exit code of the process: 3.
    [[nodiscard]] int refuse(Reason reason, const QString &text);

    /// Reports progress of the request being handled, 0 to 100. Callable from any thread.
    void progress(int percent);

private:
    bool send(const QJsonObject &message);
    void begin(const QJsonObject &request);
    int answer(const QJsonObject &request, const Handler &handler);

    StandardPipe m_pipe;
    std::mutex m_mutex; ///< guards all below and keeps lines whole
    QJsonValue m_currentId;
    int m_lastPercent = -1;
};

} // namespace Quorlin
