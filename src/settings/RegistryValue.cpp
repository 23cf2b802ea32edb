#include "settings/RegistryValue.h"

#include <QString>
#include <QtEndian>

namespace Quorlin {

namespace {

constexpr qsizetype NumberBytes = 4;

std::optional<quint32> numberOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Short:
    case QMetaType::Int:
        return static_cast<quint32>(value.toInt());
    case QMetaType::UShort:
    case QMetaType::UInt:
        return value.toUInt();
    default:
        return {};
    }
}

std::optional<QByteArray> numberBytes(const QVariant &value, bool bigEndian)
{
    const auto number = numberOf(value);
    if (!number)
        return {};
    QByteArray bytes(NumberBytes, Qt::Uninitialized);
    if (bigEndian)
        qToBigEndian(*number, bytes.data());
    else
        qToLittleEndian(*number, bytes.data());
    return bytes;
}

std::optional<QByteArray> textBytes(const QVariant &value)
{
    if (value.isValid() && !value.canConvert<QString>())
        return {};
    return value.toString().toUtf8();
}

std::optional<QByteArray> dataOf(quint32 type, const QVariant &value)
{
    switch (type) {
    case RegistryType::Text:
    case RegistryType::ExpandText:
        return textBytes(value);
    case RegistryType::MultiText: {
        auto bytes = textBytes(value);
        return bytes ? bytes->replace('\n', '\0') : bytes;
    }
    case RegistryType::Binary:
        return value.typeId() == QMetaType::QByteArray ? std::optional(value.toByteArray())
                                                       : std::nullopt;
    case RegistryType::Number:
    case RegistryType::BigEndianNumber:
        return numberBytes(value, type == RegistryType::BigEndianNumber);
    default:
        return {};
    }
}

} // namespace

QVariant RegistryValue::toVariant() const
{
    switch (type) {
    case RegistryType::Text:
    case RegistryType::ExpandText:
        return QString::fromUtf8(data);
    case RegistryType::MultiText:
        return QString::fromUtf8(data).replace(QChar(0), QLatin1Char('\n'));
    case RegistryType::Number:
        return data.size() == NumberBytes ? qFromLittleEndian<qint32>(data.constData())
                                          : QVariant();
    default:
        return data;
    }
}

std::optional<RegistryValue> RegistryValue::from(quint32 type, const QVariant &value)
{
    const auto data = dataOf(type, value);
    return data ? std::optional(RegistryValue{type, *data}) : std::nullopt;
}

bool operator==(const RegistryValue &one, const RegistryValue &other)
{
    return one.type == other.type && one.data == other.data;
}

} // namespace Quorlin
