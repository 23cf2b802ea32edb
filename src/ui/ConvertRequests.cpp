#include "ui/ConvertRequests.h"

#include "ui/DocumentList.h"
#include "ui/RefusedFiles.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace Quorlin {

ConvertRequests::ConvertRequests(DocumentList &list, RefusedFiles &refused, Window window,
                                 IntakeWorker::Query query)
    : m_list(list), m_refused(refused), m_window(std::move(window)), m_intake(std::move(query))
{
    m_wait.setSingleShot(true);
    connect(&m_wait, &QTimer::timeout, this, &ConvertRequests::goOn);
    connect(&m_intake, &DocumentIntake::documentsAccepted, this, &ConvertRequests::take);
    connect(&m_intake, &DocumentIntake::refusedPostScript, this,
            [this](const QString &path) { m_refused.add(path); });
    connect(&m_intake, &DocumentIntake::idle, this, &ConvertRequests::wait);
    connect(&m_intake, &DocumentIntake::idle, this, [this] { m_refused.tell(); });
    connect(&m_list, &DocumentList::changed, this, &ConvertRequests::listChanged);
}

/// Who has to wait for a window asks once more.
void ConvertRequests::add(const QStringList &paths)
{
    QStringList news;
    for (const auto &path : paths)
        if (!m_asked.contains(path))
            news.append(path);
    m_asked.unite(QSet<QString>(paths.cbegin(), paths.cend()));
    m_intake.add(news);
    wait();
}

void ConvertRequests::cancel()
{
    m_intake.cancel();
    m_asked.clear();
    m_arrived.clear();
    m_refused.forget();
    if (m_phase == Phase::Due)
        m_phase = Phase::Open;
}

void ConvertRequests::wait()
{
    m_wait.start(m_intake.isBusy() ? LongestWait : Quiet);
}

void ConvertRequests::take(const QStringList &documents)
{
    m_arrived += documents;
    place();
    wait();
}

void ConvertRequests::place()
{
    if (m_arrived.isEmpty() || !m_window.isFree())
        return;
    const QScopedValueRollback placing(m_isPlacing, true);
    if (m_phase == Phase::Converted)
        m_list.clear();
    if (m_list.count() == 0) {
        m_brought.clear();
        m_phase = Phase::Due;
    }
    if (m_phase == Phase::Due || !m_brought.isEmpty())
        m_brought.unite(QSet<QString>(m_arrived.cbegin(), m_arrived.cend()));
    m_list.addDocuments(std::exchange(m_arrived, {}));
}

/// Looks again and again while it has to wait: what a window does comes to an end in many ways.
void ConvertRequests::goOn()
{
    if (isPending() && !m_window.isFree()) {
        m_wait.start(Quiet);
        return;
    }
    place();
    m_asked.clear();
    if (m_phase == Phase::Due) {
        m_phase = Phase::Open;
        m_window.convert();
    }
    Q_EMIT settled();
}

void ConvertRequests::workingModeChanged(bool working)
{
    if (working)
        m_phase = Phase::Open;
    else if (m_isWorking && !m_brought.isEmpty())
        m_phase = Phase::Converted;
    m_isWorking = working;
}

void ConvertRequests::listChanged()
{
    if (m_isPlacing)
        return;
    m_phase = Phase::Open;
    const auto &documents = m_list.DocFullNameList();
    if (!std::ranges::all_of(documents,
                             [this](const auto &path) { return m_brought.contains(path); }))
        m_brought.clear();
}

} // namespace Quorlin
