#include "component/backends/office/ImportFilter.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace Quorlin::ImportFilter {

namespace {

constexpr qint64 HeadSize = 4096;

bool isOneOf(const QString &extension, const char *names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' ')).contains(extension);
}

bool isAnotherKind(const QByteArray &head)
{
    const auto kinds = {QByteArray("PK"), QByteArray("\xD0\xCF\x11\xE0"), QByteArray("{\\rtf")};
    return std::ranges::any_of(kinds, [&head](const auto &kind) { return head.startsWith(kind); });
}

/// Word processors wrote web pages under the names of their own documents.
bool isWebPage(const QString &path)
{
    QFile file(path);
    const auto extension = QFileInfo(path).suffix().toLower();
    if (!isOneOf(extension, "html htm xhtml doc dot") || !file.open(QIODevice::ReadOnly))
        return false;
    const auto head = file.read(HeadSize);
    if (isOneOf(extension, "doc dot"))
        return head.toLower().contains("<html") && !isAnotherKind(head);
    return !isAnotherKind(head);
}

} // namespace

rtl::OUString nameFor(const QString &path)
{
    return isWebPage(path) ? rtl::OUString("HTML (StarWriter)") : rtl::OUString();
}

} // namespace Quorlin::ImportFilter
