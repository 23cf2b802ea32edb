#include "component/supervisor/OutputNames.h"

#include "component/protocol/Acceptance.h"
#include "component/supervisor/ExclusiveFile.h"

#include <QDir>
#include <QFileInfo>

namespace Quorlin {

OutputNames::OutputNames(const QStringList &fallbackFolders) : m_fallbackFolders(fallbackFolders) {}

QList<OutputNames::Place> OutputNames::places(const QStringList &documents) const
{
    QSet<QString> taken;
    for (const auto &document : documents)
        taken.insert(QDir::cleanPath(document));
    QList<Place> places(documents.size());
    // PostScript documents come first: they are used as they are, so their names are given.
    for (const bool postScript : {true, false}) {
        for (qsizetype i = 0; i < documents.size(); ++i) {
            if ((Acceptance::entranceOf(documents[i]) == Entrance::PostScript) != postScript)
                continue;
            places[i] = freePlace(documents[i], taken);
            taken.insert(places[i].result());
        }
    }
    return places;
}

OutputNames::Place OutputNames::freePlace(const QString &document, const QSet<QString> &taken) const
{
    const QFileInfo info(document);
    const auto entrance = Acceptance::entranceOf(document);
    const auto own = info.absolutePath();
    const auto folder = writableFolder(own);
    const auto base = baseOf(document);
    const auto fits = [&](const QString &name) {
        return !taken.contains(Place{folder, name}.result());
    };
    if (fits(base))
        return {folder, base, entrance == Entrance::PostScript && folder == own};
    // A PDF's full name would read "report.pdf.pdf".
    if (entrance != Entrance::Pdf && fits(info.fileName()))
        return {folder, info.fileName()};
    for (int number = 2;; ++number) {
        const auto name = QStringLiteral("%1 (%2)").arg(base).arg(number);
        if (fits(name))
            return {folder, name};
    }
}

QString OutputNames::writableFolder(const QString &folder) const
{
    const auto known = m_writable.constFind(folder);
    if (known != m_writable.cend())
        return *known;
    QString found;
    for (const auto &candidate : QStringList{folder} + m_fallbackFolders) {
        if (!candidate.isEmpty() && ExclusiveFile::canCreateIn(candidate)) {
            found = QDir::cleanPath(candidate);
            break;
        }
    }
    m_writable.insert(folder, found);
    return found;
}

QString OutputNames::baseOf(const QString &file)
{
    const auto name = QFileInfo(file).fileName();
    const auto point = name.lastIndexOf(QLatin1Char('.'));
    return point < 0 ? name : name.left(point);
}

QString OutputNames::hiddenName(const QString &folder, const QString &base,
                                const QString &extension, int number)
{
    const auto counter = number == 0 ? QString() : QString::number(number + 1);
    return folder + QLatin1Char('/') + base + QLatin1Char('.') + extension + counter +
           QLatin1Char('~');
}

QString OutputNames::missingName(const QString &folder, const QString &base,
                                 const QString &extension)
{
    for (int number = 0;; ++number) {
        const auto name = hiddenName(folder, base, extension, number);
        if (ExclusiveFile::identityOf(name).isEmpty())
            return name;
    }
}

} // namespace Quorlin
