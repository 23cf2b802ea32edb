#include "tool/EarlierResults.h"

#include "component/protocol/Acceptance.h"
#include "component/protocol/ResultNames.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace Quorlin {

namespace {

bool isPdf(const QFileInfo &file)
{
    return Acceptance::entranceOf(file.fileName()) == Entrance::Pdf;
}

bool hasUsualEnding(const QFileInfo &pdf)
{
    return pdf.fileName().endsWith(QLatin1String(".pdf"));
}

QString keyOf(const QString &name)
{
    return name.toCaseFolded();
}

QString baseOf(const QFileInfo &file)
{
    return keyOf(ResultNames::baseOf(file.fileName()));
}

/// Where the last table of references begins; -1 when the file does not tell.
qint64 referencesOf(QFile &file)
{
    constexpr qint64 TailSize = 1024;
    static const QByteArray word("startxref");
    if (!file.seek(std::max<qint64>(0, file.size() - TailSize)))
        return -1;
    const auto tail = file.read(TailSize);
    const auto found = tail.lastIndexOf(word);
    if (found < 0)
        return -1;
    bool isNumber = false;
    const auto number = tail.mid(found + word.size()).simplified().split(' ').first();
    const auto position = number.toLongLong(&isNumber);
    return isNumber && position >= 0 && position <= file.size() ? position : -1;
}

/// Whether the distiller that makes all results made this PDF: it tells its name last, before the
/// references.
bool isDistilled(const QString &path)
{
    constexpr qint64 InformationSize = 16 * 1024;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const auto end = referencesOf(file);
    const auto begin = std::max<qint64>(0, end - InformationSize);
    return end > 0 && file.seek(begin) && file.read(end - begin).contains("GPL Ghostscript");
}

} // namespace

EarlierResults::EarlierResults(const QFileInfoList &documents)
{
    for (const auto &document : documents) {
        m_bases.insert(baseOf(document));
        if (!isPdf(document))
            m_certain << baseOf(document) << keyOf(document.fileName());
        else if (!hasUsualEnding(document))
            m_unusualBases.insert(baseOf(document));
    }
}

bool EarlierResults::contains(const QFileInfo &document) const
{
    if (!isPdf(document))
        return false;
    const auto base = baseOf(document);
    if (m_certain.contains(base))
        return true;
    const bool isPossible = mayBeNumbered(base) || mayDifferInCase(document);
    return isPossible && isDistilled(document.filePath());
}

bool EarlierResults::mayBeNumbered(const QString &base) const
{
    static const QRegularExpression number(QStringLiteral("^(.+) \\((?:[2-9]|[1-9][0-9]+)\\)$"),
                                           QRegularExpression::DotMatchesEverythingOption);
    const auto match = number.match(base);
    return match.hasMatch() && m_bases.contains(match.captured(1));
}

bool EarlierResults::mayDifferInCase(const QFileInfo &document) const
{
    return hasUsualEnding(document) && m_unusualBases.contains(baseOf(document));
}

} // namespace Quorlin
