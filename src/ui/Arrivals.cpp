#include "ui/Arrivals.h"

#include "ui/DocumentList.h"
#include "ui/RefusedFiles.h"

#include <utility>

namespace Quorlin {

Arrivals::Arrivals(DocumentList &list, RefusedFiles &refused, std::function<bool()> isHeldBack)
    : m_list(list), m_refused(refused), m_isHeldBack(std::move(isHeldBack))
{
    connect(&m_intake, &DocumentIntake::documentsAccepted, this, &Arrivals::take);
    connect(&m_intake, &DocumentIntake::refusedPostScript, this,
            [this](const QString &path) { m_refused.add(path); });
    connect(&m_intake, &DocumentIntake::idle, this, [this] { m_refused.tell(); });
    connect(&m_intake, &DocumentIntake::idle, this, &Arrivals::settled);
}

void Arrivals::add(const QStringList &paths)
{
    m_intake.add(paths);
}

void Arrivals::take(const QStringList &documents)
{
    m_waiting += documents;
    takeWaiting();
}

void Arrivals::cancel()
{
    m_intake.cancel();
    m_waiting.clear();
    m_refused.forget();
}

void Arrivals::takeWaiting()
{
    if (!m_isHeldBack())
        m_list.addDocuments(std::exchange(m_waiting, {}));
}

} // namespace Quorlin
