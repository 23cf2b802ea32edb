#include "component/protocol/ResultNames.h"

#include "component/protocol/Acceptance.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace Quorlin {

namespace {

bool canCreateIn(const QString &folder)
{
    const QFileInfo info(folder);
    return info.isDir() && info.isWritable() && info.isExecutable();
}

} // namespace

ResultNames::ResultNames(const QStringList &fallbackFolders) : m_fallbackFolders(fallbackFolders) {}

QStringList ResultNames::usersFolders()
{
    return {QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation), QDir::homePath()};
}

QList<ResultNames::Place> ResultNames::places(const QStringList &documents) const
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

ResultNames::Place ResultNames::freePlace(const QString &document, const QSet<QString> &taken) const
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

QString ResultNames::writableFolder(const QString &folder) const
{
    const auto known = m_writable.constFind(folder);
    if (known != m_writable.cend())
        return *known;
    QString found;
    for (const auto &candidate : QStringList{folder} + m_fallbackFolders) {
        if (!candidate.isEmpty() && canCreateIn(candidate)) {
            found = QDir::cleanPath(candidate);
            break;
        }
    }
    m_writable.insert(folder, found);
    return found;
}

QString ResultNames::baseOf(const QString &file)
{
    const auto name = QFileInfo(file).fileName();
    const auto point = name.lastIndexOf(QLatin1Char('.'));
    return point < 0 ? name : name.left(point);
}

} // namespace Quorlin
