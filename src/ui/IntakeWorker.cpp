#include "ui/IntakeWorker.h"

#include "convert/FolderWalk.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <thread>
#include <utility>

namespace Quorlin {

namespace {

/// A PostScript file that is none, of which the user is told.
constexpr qint32 NoPostScript = 42;
/// The thread waits when nobody takes the results.
constexpr qsizetype MostWaiting = 4096;

/// A path that begins with ":" would be one of the program's own resources.
QString fullPath(const QString &path)
{
    return QDir::isAbsolutePath(path) && !path.startsWith(QLatin1Char(':'))
               ? path
               : QDir::currentPath() + QLatin1Char('/') + path;
}

} // namespace

IntakeWorker::IntakeWorker(Query query, Wake wake)
    : m_query(std::move(query)), m_wake(std::move(wake))
{
}

std::shared_ptr<IntakeWorker> IntakeWorker::start(Query query, Wake wake)
{
    const std::shared_ptr<IntakeWorker> worker(new IntakeWorker(std::move(query), std::move(wake)));
    std::thread([worker] { worker->run(); }).detach();
    return worker;
}

void IntakeWorker::ask(const QStringList &paths)
{
    const std::lock_guard lock(m_mutex);
    m_asked.insert(m_asked.end(), paths.begin(), paths.end());
    m_news.notify_all();
}

QList<IntakeWorker::Result> IntakeWorker::take(qsizetype most)
{
    const std::lock_guard lock(m_mutex);
    const auto count = std::min(most, m_results.size());
    const auto taken = m_results.first(count);
    m_results.remove(0, count);
    m_news.notify_all();
    return taken;
}

bool IntakeWorker::isIdle()
{
    const std::lock_guard lock(m_mutex);
    return m_asked.empty() && m_results.isEmpty() && !m_isLooking;
}

void IntakeWorker::stop()
{
    m_stop.request_stop();
    const std::lock_guard lock(m_mutex);
    m_wake = [] {};
    m_news.notify_all();
}

bool IntakeWorker::waitForEnd(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_mutex);
    return m_news.wait_for(lock, time, [this] { return m_hasEnded; });
}

void IntakeWorker::run()
{
    QString path;
    while (takeNext(path))
        look(path);
    const std::lock_guard lock(m_mutex);
    m_hasEnded = true;
    m_news.notify_all();
}

/// Waits for something to do. @return false when the thread is to end.
bool IntakeWorker::takeNext(QString &path)
{
    std::unique_lock lock(m_mutex);
    if (std::exchange(m_isLooking, false) && m_asked.empty())
        m_wake();
    m_news.wait(lock, [this] { return !m_asked.empty() || m_stop.stop_requested(); });
    if (m_stop.stop_requested())
        return false;
    path = m_asked.front();
    m_asked.pop_front();
    m_isLooking = true;
    return true;
}

void IntakeWorker::look(const QString &path)
{
    if (path.isEmpty())
        return;
    const auto full = fullPath(path);
    if (QFileInfo(full).isDir())
        FolderWalk::walk(
            full, [this](const QString &file) { test(file); }, m_stop.get_token());
    else
        test(full);
}

void IntakeWorker::test(const QString &path)
{
    const auto code = m_query(path).code();
    if (code == 0 || code == NoPostScript)
        add({path, code == 0});
}

void IntakeWorker::add(const Result &result)
{
    std::unique_lock lock(m_mutex);
    m_news.wait(lock, [this] { return m_results.size() < MostWaiting || m_stop.stop_requested(); });
    m_results.append(result);
    if (m_results.size() == 1)
        m_wake();
}

} // namespace Quorlin
