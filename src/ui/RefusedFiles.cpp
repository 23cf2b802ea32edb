#include "ui/RefusedFiles.h"

#include "convert/ReasonTexts.h"
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

RefusedFiles::RefusedFiles(MessageService &messages, const TextSource &texts,
                           const ReasonTexts *reasons)
    : m_messages(messages), m_texts(texts), m_reasons(reasons)
{
}

void RefusedFiles::tell()
{
    if (m_isTelling)
        return;
    const QScopedValueRollback telling(m_isTelling, true);
    while (!m_paths.isEmpty())
        show(std::exchange(m_paths, {}));
}

void RefusedFiles::show(const QStringList &paths)
{
    QStringList lines;
    for (const auto &path : paths.first(std::min(paths.size(), MostTold)))
        lines.append(lineOf(path));
    if (paths.size() > MostTold)
        lines.append(QString(QChar(0x2026)));
    m_messages.showWithDetail(lines.join(QLatin1Char('\n')), MessageStyle::Information,
                              m_texts.text(QStringLiteral("InfoWindowTitle")),
                              m_reasons ? m_reasons->advice(Reason::NotPostScript) : QString());
}

QString RefusedFiles::lineOf(const QString &path) const
{
    return m_texts.text(QStringLiteral("ErrorInvalidPRNFile1")) + QLatin1Char(' ') + path +
           QLatin1Char(' ') + m_texts.text(QStringLiteral("ErrorInvalidPRNFile2"));
}

} // namespace Quorlin
