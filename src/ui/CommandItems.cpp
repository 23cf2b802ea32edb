#include "ui/CommandItems.h"

#include <QFileInfo>

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
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char(','));
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
