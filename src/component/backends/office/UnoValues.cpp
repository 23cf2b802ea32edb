#include "component/backends/office/UnoValues.h"

#include <QUrl>

namespace Quorlin::UnoValues {

rtl::OUString text(const QString &text)
{
    return {reinterpret_cast<const sal_Unicode *>(text.utf16()),
            static_cast<sal_Int32>(text.size())};
}

QString text(const rtl::OUString &text)
{
    return QString(reinterpret_cast<const QChar *>(text.getStr()), text.getLength());
}

rtl::OUString fileAddress(const QString &path)
{
    return text(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded)));
}

} // namespace Quorlin::UnoValues
