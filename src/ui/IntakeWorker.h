#pragma once

#include "convert/Refusal.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>

namespace Quorlin {

/// Looks at documents and folders on a thread of its own, one after the other. The thread may
/// outlive everything else: a file system that does not answer cannot be interrupted.
class IntakeWorker : public std::enable_shared_from_this<IntakeWorker>
{
public:
    /// Why a document is not taken. Called on the thread.
    using Query = std::function<Refusal(const QString &path)>;
    /// Called on the thread when there is something to take, or nothing left to do.
    using Wake = std::function<void()>;

    struct Result
    {
        QString path;
        bool isAccepted; ///< otherwise it is a PostScript file that is none
    };

    [[nodiscard]] static std::shared_ptr<IntakeWorker> start(Query query, Wake wake);

    /// Behind everything that was asked before.
    void ask(const QStringList &paths);
    /// The oldest results, at most so many.
    [[nodiscard]] QList<Result> take(qsizetype most);
    /// Everything asked has been looked at, and all results have been taken.
    [[nodiscard]] bool isIdle();
    /// Ends the thread at the next entry. When it returns, nobody is woken any more.
    void stop();
    /// @return false when the thread has not ended within the time.
    bool waitForEnd(std::chrono::milliseconds time);

private:
    IntakeWorker(Query query, Wake wake);
    void run();
    [[nodiscard]] bool takeNext(QString &path);
    void look(const QString &path);
    void test(const QString &path);
    void add(const Result &result);

    const Query m_query;
    std::stop_source m_stop;
    std::mutex m_mutex; ///< for all below
    std::condition_variable m_news;
    Wake m_wake;
    std::deque<QString> m_asked;
    QList<Result> m_results;
    bool m_isLooking = false;
    bool m_hasEnded = false;
};

} // namespace Quorlin
