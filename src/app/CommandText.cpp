#include "app/CommandText.h"

#include "ui/CommandItems.h"

#include <QFileInfo>
#include <QUrl>

namespace Quorlin {

namespace {

constexpr QLatin1Char Separator(',');

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
