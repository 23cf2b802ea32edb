#include "ui/Arrivals.h"

#include "ui/DocumentList.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace Quorlin {

namespace {

/// So many files have room in a message.
constexpr qsizetype MostTold = 10;

} // namespace

Arrivals::Arrivals(DocumentList &list, MessageService &messages, const TextSource &texts,
                   std::function<bool()> isWorking)
    : m_list(list), m_messages(messages), m_texts(texts), m_isWorking(std::move(isWorking))
{
    connect(&m_intake, &DocumentIntake::documentsAccepted, this, &Arrivals::take);
    connect(&m_intake, &DocumentIntake::refusedPostScript, this, &Arrivals::noteRefusal);
    connect(&m_intake, &DocumentIntake::idle, this, &Arrivals::tellRefusals);
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
    m_refused.clear();
}

void Arrivals::takeWaiting()
{
    if (!m_waiting.isEmpty())
        m_list.addDocuments(std::exchange(m_waiting, {}));
}

void Arrivals::noteRefusal(const QString &path)
{
    m_refused.append(path);
}

/// While the message is on the screen, more can come.
void Arrivals::tellRefusals()
{
    if (m_isTelling)
        return;
    const QScopedValueRollback telling(m_isTelling, true);
    while (!m_refused.isEmpty()) {
        const auto refused = std::exchange(m_refused, {});
        QStringList lines;
        for (const auto &path : refused.first(std::min(refused.size(), MostTold)))
            lines.append(refusalOf(path));
        if (refused.size() > MostTold)
            lines.append(QString(QChar(0x2026)));
        m_messages.show(lines.join(QLatin1Char('\n')), MessageStyle::Information,
                        m_texts.text(QStringLiteral("InfoWindowTitle")));
    }
}

QString Arrivals::refusalOf(const QString &path) const
{
    return m_texts.text(QStringLiteral("ErrorInvalidPRNFile1")) + QLatin1Char(' ') + path +
           QLatin1Char(' ') + m_texts.text(QStringLiteral("ErrorInvalidPRNFile2"));
}

} // namespace Quorlin
