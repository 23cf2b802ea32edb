#include "app/HandoffFrame.h"

#include "app/FrameReader.h"

#include <QtEndian>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr quint32 MostBytesOfUnit = 3;

bool isToken(const QByteArray &bytes)
{
    return bytes.size() <= HandoffFrame::MostTokenBytes &&
           std::ranges::all_of(bytes, [](char byte) { return byte > ' ' && byte <= '~'; });
}

QByteArray toFirstZero(const QByteArray &bytes)
{
    const auto zero = bytes.indexOf('\0');
    return zero < 0 ? bytes : bytes.left(zero);
}

template <typename Number>
void append(QByteArray &bytes, Number number)
{
    const auto little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

} // namespace

QString HandoffFrame::cut(const QString &text)
{
    if (text.size() <= MostCharacters)
        return text;
    const bool splitsPair =
        text.at(MostCharacters - 1).isHighSurrogate() && text.at(MostCharacters).isLowSurrogate();
    return text.left(splitsPair ? MostCharacters - 1 : MostCharacters);
}

HandoffFrame HandoffFrame::ofText(const QString &text)
{
    return {Kind::Text, TextTag, cut(text).toUtf8() + '\0'};
}

HandoffFrame HandoffFrame::ofActivation(const QByteArray &token)
{
    return {Kind::Activate, 0, (isToken(token) ? token : QByteArray()) + '\0'};
}

quint32 HandoffFrame::mostBytes(Kind kind)
{
    switch (kind) {
    case Kind::Text:
        return static_cast<quint32>(MostCharacters) * MostBytesOfUnit + 1;
    case Kind::Activate:
        return static_cast<quint32>(MostTokenBytes) + 1;
    }
    return 0;
}

QString HandoffFrame::text() const
{
    return cut(QString::fromUtf8(toFirstZero(bytes)));
}

QByteArray HandoffFrame::token() const
{
    const auto found = toFirstZero(bytes);
    return isToken(found) ? found : QByteArray();
}

QByteArray HandoffFrame::encoded() const
{
    QByteArray result = FrameReader::magic();
    append(result, Version);
    append(result, static_cast<quint16>(kind));
    append(result, tag);
    append(result, static_cast<quint32>(bytes.size()));
    return result + bytes;
}

} // namespace Quorlin
