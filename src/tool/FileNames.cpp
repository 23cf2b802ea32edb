#include "tool/FileNames.h"

#include <algorithm>

namespace Quorlin::FileNames {

namespace {

constexpr char16_t FirstHalf = 0xDC00;

/// A second half of a surrogate pair without its first one.
bool isStray(const QString &name, qsizetype position)
{
    return name.at(position).isLowSurrogate() &&
           (position == 0 || !name.at(position - 1).isHighSurrogate());
}

} // namespace

QString fromBytes(QByteArrayView bytes)
{
    auto name = QString::fromUtf8(bytes);
    if (name.toUtf8() == bytes)
        return name;
    name.resize(bytes.size());
    std::ranges::transform(bytes, name.begin(), [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return QChar(value < 0x80 ? value : static_cast<char16_t>(FirstHalf + value));
    });
    return name;
}

bool isUtf8(const QString &name)
{
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (isStray(name, i))
            return false;
    }
    return true;
}

QString legible(QString name)
{
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (isStray(name, i))
            name[i] = QChar::ReplacementCharacter;
    }
    return name;
}

QString fullPath(const QString &name, const QString &folder)
{
    const bool isFull = QDir::isAbsolutePath(name) && !name.startsWith(QLatin1Char(':'));
    return QDir::cleanPath(isFull ? name : folder + QLatin1Char('/') + name);
}

} // namespace Quorlin::FileNames
