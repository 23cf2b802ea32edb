#include "app/CommandText.h"

#include "ui/CommandItems.h"

#include <QFileInfo>

namespace Quorlin {

namespace {

constexpr QLatin1Char Separator(',');

QString absolute(const QString &path, const QString &folder)
{
    // A name that begins with ":" counts as a resource of the program, but it names a file.
    const bool isColon = path.startsWith(QLatin1Char(':'));
    if (path.isEmpty() || folder.isEmpty() || (QDir::isAbsolutePath(path) && !isColon))
        return path;
    const auto whole =
        isColon ? QDir::cleanPath(QDir(folder).absoluteFilePath(QLatin1String("./") + path))
                : QDir(folder).absoluteFilePath(path);
    return QFileInfo::exists(whole) ? whole : path;
}

QString pathOf(const QString &argument, const QString &folder)
{
    // A file may well be named like an address.
    const auto asPath = absolute(argument, folder);
    if (asPath != argument)
        return asPath;
    const auto path = CommandItems::pathOfAddress(argument);
    return path.isEmpty() ? argument : absolute(path, folder);
}

/// A path would be divided at its comma, its address is not.
QString item(const QString &argument, const QString &folder)
{
    const auto path = pathOf(argument, folder);
    const auto isDivided =
        path.contains(Separator) && QDir::isAbsolutePath(path) && QFileInfo::exists(path);
    return isDivided ? CommandItems::addressOf(path) : path;
}

} // namespace

QStringList CommandText::items(const QStringList &arguments, const QString &folder)
{
    QStringList items;
    for (const auto &argument : arguments)
        items.append(item(argument, folder));
    return items;
}

QString CommandText::make(const QStringList &arguments, const QString &folder)
{
    return items(arguments, folder).join(Separator);
}

QStringList CommandText::parts(const QStringList &items, qsizetype most)
{
    const auto hasVerb = CommandItems::verbOf(items) != CommandItems::Verb::None;
    const auto start = hasVerb ? items.first() + Separator : QString();
    QStringList texts;
    for (const auto &item : hasVerb ? items.mid(1) : items) {
        if (!texts.isEmpty() && texts.last().size() + 1 + item.size() <= most)
            texts.last() += Separator + item;
        else
            texts.append(start + item);
    }
    return texts.isEmpty() ? items : texts;
}

} // namespace Quorlin
