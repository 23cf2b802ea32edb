#include "tool/NameList.h"

#include "tool/FileNames.h"

#include <utility>

namespace Quorlin {

bool NameList::add(const QByteArray &piece)
{
    const char separator = m_separator == Separator::Nul ? '\0' : '\n';
    const auto bytes = std::exchange(m_rest, {}) + piece;
    qsizetype begin = 0;
    for (auto end = bytes.indexOf(separator); end >= 0; end = bytes.indexOf(separator, begin)) {
        if (!take(QByteArrayView(bytes).sliced(begin, end - begin)))
            return false;
        begin = end + 1;
    }
    m_rest = bytes.sliced(begin);
    // A carriage return at its end may not count.
    return m_rest.size() <= MostBytes + 1 || take(m_rest);
}

bool NameList::end()
{
    // Nothing writes such a list but a program that separates by lines.
    if (m_separator == Separator::Nul && !m_begun && m_rest.contains('\n'))
        return refuse(QStringLiteral("there is no NUL in it; lists of lines need no --null"));
    return take(std::exchange(m_rest, {}));
}

bool NameList::take(QByteArrayView name)
{
    const bool isLine = m_separator == Separator::LineFeed;
    const bool isFirst = !std::exchange(m_begun, true);
    if (isLine && isFirst && name.startsWith("\xEF\xBB\xBF"))
        name = name.sliced(3);
    if (isLine && name.endsWith('\r'))
        name.chop(1);
    if (name.size() > MostBytes)
        return refuse(
            QStringLiteral("a name of more than %1 bytes is no name%2")
                .arg(MostBytes)
                .arg(isLine ? QString() : QStringLiteral("; lists of lines need no --null")));
    if (isLine && name.contains('\0'))
        return refuse(QStringLiteral("there is a NUL in a name; such lists need --null"));
    if (name.isEmpty())
        return true;
    if (m_names.size() == MostNames)
        return refuse(QStringLiteral("there are more than %1 names").arg(MostNames));
    m_names.append(FileNames::fromBytes(name));
    return true;
}

bool NameList::refuse(const QString &error)
{
    m_error = error;
    return false;
}

} // namespace Quorlin
