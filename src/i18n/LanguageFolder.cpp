#include "i18n/LanguageFolder.h"

#include <QDirIterator>

namespace Quorlin {

namespace {

constexpr QLatin1StringView FileEnd(".slg");

} // namespace

LanguageFolder::LanguageFolder(const QString &applicationFolder)
    : m_folder(applicationFolder.isEmpty() ? QString()
                                           : applicationFolder + QLatin1String("/language"))
{
}

QStringList LanguageFolder::fileNames() const
{
    QStringList names;
    if (m_folder.isEmpty())
        return names;
    QDirIterator files(m_folder, QDir::Files);
    while (files.hasNext()) {
        files.next();
        const auto name = files.fileName();
        if (name.endsWith(FileEnd, Qt::CaseInsensitive))
            names.append(name);
    }
    return names;
}

QStringList LanguageFolder::languages() const
{
    auto names = fileNames();
    for (auto &name : names)
        name.truncate(name.indexOf(QLatin1Char('.')));
    return names;
}

/// Looks for an entry of the folder, so that a name cannot lead out of it: the setting that it
/// comes from may hold anything.
QString LanguageFolder::fileOf(const QString &language) const
{
    const auto wanted = language + FileEnd;
    const auto names = fileNames();
    auto at = names.indexOf(wanted);
    for (qsizetype other = 0; at < 0 && other < names.size(); ++other) {
        if (names.at(other).compare(wanted, Qt::CaseInsensitive) == 0)
            at = other;
    }
    return at < 0 ? QString() : m_folder + QLatin1Char('/') + names.at(at);
}

} // namespace Quorlin
