#include "app/CommandText.h"

#include <QFileInfo>
#include <QUrl>

namespace Quorlin {

namespace {

/// The path of a "file:" address on this machine; empty for everything else.
QString pathOfAddress(const QString &argument)
{
    if (!argument.startsWith(QLatin1String("file:"), Qt::CaseInsensitive))
        return {};
    QUrl address(argument);
    if (address.host() == QLatin1String("localhost"))
        address.setHost({});
    if (!address.isLocalFile() || !address.host().isEmpty())
        return {};
    const auto path = address.toLocalFile();
    return path.contains(QChar(0)) ? QString() : path;
}

QString absolute(const QString &path, const QString &folder)
{
    if (path.isEmpty() || folder.isEmpty() || QDir::isAbsolutePath(path))
        return path;
    const auto whole = QDir(folder).absoluteFilePath(path);
    return QFileInfo::exists(whole) ? whole : path;
}

QString item(const QString &argument, const QString &folder)
{
    // A file may well be named like an address.
    const auto asPath = absolute(argument, folder);
    if (asPath != argument)
        return asPath;
    const auto path = pathOfAddress(argument);
    return path.isEmpty() ? argument : absolute(path, folder);
}

} // namespace

QString CommandText::make(const QStringList &arguments, const QString &folder)
{
    QStringList items;
    for (const auto &argument : arguments)
        items.append(item(argument, folder));
    return items.join(QLatin1Char(','));
}

} // namespace Quorlin
