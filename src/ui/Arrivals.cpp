#include "ui/Arrivals.h"

#include "ui/DocumentList.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <utility>

namespace Quorlin {

Arrivals::Arrivals(DocumentList &list, MessageService &messages, const TextSource &texts,
                   std::function<bool()> isWorking)
    : m_list(list), m_messages(messages), m_texts(texts), m_isWorking(std::move(isWorking))
{
    connect(&m_intake, &DocumentIntake::documentsAccepted, this, &Arrivals::take);
    connect(&m_intake, &DocumentIntake::refusedPostScript, this, &Arrivals::tellRefusal);
    connect(&m_intake, &DocumentIntake::idle, this, &Arrivals::settled);
}

void Arrivals::add(const QStringList &paths)
{
    m_intake.add(paths);
}

void Arrivals::take(const QStringList &documents)
{
    if (m_isWorking())
        m_waiting += documents;
    else
        m_list.addDocuments(documents);
}

void Arrivals::cancel()
{
    m_intake.cancel();
    m_waiting.clear();
}

void Arrivals::takeWaiting()
{
    if (!m_waiting.isEmpty())
        m_list.addDocuments(std::exchange(m_waiting, {}));
}

void Arrivals::tellRefusal(const QString &path)
{
    const auto text = m_texts.text(QStringLiteral("ErrorInvalidPRNFile1")) + QLatin1Char(' ') +
                      path + QLatin1Char(' ') +
                      m_texts.text(QStringLiteral("ErrorInvalidPRNFile2"));
    m_messages.show(text, MessageStyle::Information,
                    m_texts.text(QStringLiteral("InfoWindowTitle")));
}

} // namespace Quorlin
