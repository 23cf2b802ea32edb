#include "ui/DocumentIntake.h"

#include <QPointer>

#include <utility>

namespace Quorlin {

namespace {

using namespace std::chrono_literals;

/// Few large deliveries cost the list less than many small ones.
constexpr auto Pause = 15ms;
/// A thread that is not within the system ends much sooner.
constexpr auto LongestWait = 50ms;

} // namespace

DocumentIntake::DocumentIntake(IntakeWorker::Query query, QObject *parent)
    : QObject(parent), m_query(std::move(query))
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &DocumentIntake::deliver);
}

DocumentIntake::~DocumentIntake()
{
    if (!m_worker)
        return;
    m_worker->stop();
    m_worker->waitForEnd(LongestWait);
}

void DocumentIntake::add(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    if (!m_worker) {
        const auto wake = [this] {
            QMetaObject::invokeMethod(this, &DocumentIntake::deliver, Qt::QueuedConnection);
        };
        m_worker = IntakeWorker::start(m_query, wake);
    }
    m_isBusy = true;
    m_worker->ask(paths);
}

void DocumentIntake::cancel()
{
    if (!m_worker)
        return;
    m_worker->stop();
    m_worker.reset();
    m_pause.start(0ms);
}

void DocumentIntake::deliver()
{
    if (m_isDelivering || m_pause.isActive())
        return;
    m_isDelivering = true;
    const auto results = m_worker ? m_worker->take(MostAtOnce) : QList<IntakeWorker::Result>();
    const QPointer<DocumentIntake> self(this);
    const auto isWhole = report(results);
    if (!self)
        return;
    m_isDelivering = false;
    if (isWhole && !results.isEmpty())
        m_pause.start(results.size() == MostAtOnce ? 0ms : Pause);
    else
        settle();
}

bool DocumentIntake::report(const QList<IntakeWorker::Result> &results)
{
    const QPointer<DocumentIntake> self(this);
    const auto worker = m_worker;
    QStringList accepted;
    const auto flush = [&] {
        if (!accepted.isEmpty())
            Q_EMIT documentsAccepted(std::exchange(accepted, {}));
        return self && m_worker == worker;
    };
    for (const auto &result : results) {
        if (result.isAccepted) {
            accepted.append(result.path);
            continue;
        }
        if (!flush())
            return false;
        Q_EMIT refusedPostScript(result.path);
        if (!self || m_worker != worker)
            return false;
    }
    return flush();
}

void DocumentIntake::settle()
{
    if (!m_isBusy || (m_worker && !m_worker->isIdle()))
        return;
    m_isBusy = false;
    Q_EMIT idle();
}

} // namespace Quorlin
