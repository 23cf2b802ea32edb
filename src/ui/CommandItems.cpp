#include "ui/CommandItems.h"

#include <QFileInfo>
#include <QUrl>

namespace Quorlin::CommandItems {

namespace {

Verb verbNamed(const QString &word)
{
    if (word == QLatin1String("/p"))
        return Verb::Print;
    if (word == QLatin1String("/a"))
        return Verb::Add;
    return word == QLatin1String("/n") ? Verb::New : Verb::None;
}

} // namespace

QStringList split(const QString &text)
{
    if (text.isEmpty())
        return {};
    auto items = text.split(QLatin1Char(','));
    for (auto &item : items) {
        if (const auto path = pathOfAddress(item); !path.isEmpty())
            item = path;
    }
    return items;
}

/// Other characters stay as they are: the room for a text is scarce.
QString addressOf(const QString &path)
{
    QString address = QStringLiteral("file://");
    for (const auto character : path) {
        if (QLatin1String(",%?#").contains(character))
            address += QString::fromLatin1(QUrl::toPercentEncoding(character));
        else
            address += character;
    }
    return address;
}

QString pathOfAddress(const QString &text)
{
    if (!text.startsWith(QLatin1String("file:"), Qt::CaseInsensitive))
        return {};
    QUrl address(text);
    if (address.host() == QLatin1String("localhost"))
        address.setHost({});
    if (!address.isLocalFile() || !address.host().isEmpty())
        return {};
    const auto path = address.toLocalFile();
    return path.contains(QChar(0)) ? QString() : path;
}

Verb verbOf(const QStringList &items, const std::function<bool(const QString &)> &isFolder)
{
    const auto verb = verbNamed(items.value(0));
    if (verb == Verb::None)
        return verb;
    const auto isMeantAsFolder =
        isFolder ? isFolder(items.first()) : QFileInfo(items.first()).isDir();
    return isMeantAsFolder ? Verb::None : verb;
}

} // namespace Quorlin::CommandItems
