#pragma once

#include <QByteArray>
#include <QVariant>

#include <optional>

namespace Quorlin {

/// The types of registry values, by the system's own numbers.
namespace RegistryType {
inline constexpr quint32 Text = 1;
inline constexpr quint32 ExpandText = 2;
inline constexpr quint32 Binary = 3;
inline constexpr quint32 Number = 4;
inline constexpr quint32 BigEndianNumber = 5;
inline constexpr quint32 MultiText = 7;
} // namespace RegistryType

/// A registry value as a store keeps it. Texts are UTF-8 without a closing zero; several texts
/// have a zero byte between them; numbers are four bytes, the least first unless the type says
/// otherwise.
struct RegistryValue
{
    quint32 type = RegistryType::Text;
    QByteArray data;

    /// What a program gets: QString for texts, several of them with line feeds between, and
    /// environment variables left as they stand; qint32 for a number; QByteArray for every other
    /// type. Not valid when a number has not four bytes.
    [[nodiscard]] QVariant toVariant() const;

    /// The value of a type. Text types take what has a text form; Binary takes bytes alone; both
    /// number types take signed and unsigned integers of 16 and 32 bits alone. Nothing for
    /// everything else.
    [[nodiscard]] static std::optional<RegistryValue> from(quint32 type, const QVariant &value);
};

[[nodiscard]] bool operator==(const RegistryValue &one, const RegistryValue &other);

} // namespace Quorlin
