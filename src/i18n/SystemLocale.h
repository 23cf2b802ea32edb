#pragma once

#include <QByteArray>

namespace Quorlin {

/// The locale of the system. Nothing is thrown.
class SystemLocale
{
public:
    virtual ~SystemLocale() = default;

    /// Identifier of the locale of this thread, in the numbers of Windows: 1033 is English
    /// (United States). 0 for one that has no identifier.
    ///
    /// On Linux it is that of the first of LC_ALL, LC_MESSAGES and LANG that is set and not
    /// empty; "C", "POSIX" and none of them count as English (United States).
    [[nodiscard]] virtual quint32 threadLocale() const = 0;

    /// The default ANSI code page of a locale as the system writes it into a buffer of 16
    /// characters: digits, a zero character, and whatever lies behind. Empty for an identifier
    /// that the system does not know.
    [[nodiscard]] virtual QByteArray defaultAnsiCodePage(quint32 locale) const = 0;

    /// The system's own.
    [[nodiscard]] static const SystemLocale &current();
};

} // namespace Quorlin
