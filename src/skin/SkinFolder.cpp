#include "skin/SkinFolder.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>

namespace Quorlin {

namespace {

constexpr auto EveryEntry = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

QStringList entriesOf(const QString &folder)
{
    QStringList names;
    QDirIterator entries(folder, EveryEntry);
    while (entries.hasNext()) {
        entries.next();
        names.append(entries.fileName());
    }
    return names;
}

/// Looks for an entry instead of asking for a path, so that a name cannot lead elsewhere.
QString entryOf(const QString &folder, const QString &name)
{
    const auto names = folder.isEmpty() ? QStringList() : entriesOf(folder);
    auto at = names.indexOf(name);
    for (qsizetype other = 0; at < 0 && other < names.size(); ++other) {
        if (names.at(other).compare(name, Qt::CaseInsensitive) == 0)
            at = other;
    }
    return at < 0 ? QString() : folder + QLatin1Char('/') + names.at(at);
}

QString folderOf(const QString &folder, const QString &name)
{
    const auto path = entryOf(folder, name);
    return QFileInfo(path).isDir() ? path : QString();
}

} // namespace

SkinFolder::SkinFolder(const QString &applicationFolder) : m_applicationFolder(applicationFolder) {}

QString SkinFolder::path() const
{
    return folderOf(m_applicationFolder, QStringLiteral("skins"));
}

QStringList SkinFolder::names() const
{
    const auto folder = path();
    auto names = folder.isEmpty() ? QStringList() : entriesOf(folder);
    names.removeAll(QStringLiteral("None"));
    return names;
}

QString SkinFolder::pathOf(const QString &skin) const
{
    return folderOf(path(), skin);
}

QString SkinFolder::descriptionOf(const QString &skin) const
{
    return entryOf(pathOf(skin), QStringLiteral("Info.ssk"));
}

QString SkinFolder::fileIn(const QString &skinPath, const QString &value)
{
    static const QRegularExpression separator(QStringLiteral("[/\\\\]"));
    auto found = skinPath;
    // An empty part, as an absolute path begins with, and ".." are no entries of any folder.
    for (const auto &part : value.split(separator))
        found = entryOf(found, part);
    const QFileInfo file(found);
    if (found.isEmpty() || !file.isFile())
        return {};
    const auto real = file.canonicalFilePath();
    const auto inside = QFileInfo(skinPath).canonicalFilePath() + QLatin1Char('/');
    return real.startsWith(inside) ? real : QString();
}

} // namespace Quorlin
