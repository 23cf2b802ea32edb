#pragma once

#include <QByteArrayView>

#include <optional>
#include <span>

namespace Quorlin {

/// One locale: its POSIX name without a character set, its Windows identifier, and the code page
/// that programs without Unicode use there; 0 where there is none.
struct LocaleRow
{
    QByteArrayView name;
    quint32 identifier;
    int ansiCodePage;
};

/// What Windows knows about the locales that POSIX systems name.
namespace LocaleTable {

/// All of them. A language's rows stand together; its first country stands for the language.
[[nodiscard]] std::span<const LocaleRow> all();

/// @param posixName as in "de_AT.UTF-8" or "sr_RS@latin". An unknown country counts as the
/// language's first one; "", "C" and "POSIX" are English (United States).
/// @return 0 for an unknown language.
[[nodiscard]] quint32 identifier(QByteArrayView posixName);

/// Of a locale, or of another one in the same language. Nothing for an unknown language.
[[nodiscard]] std::optional<int> ansiCodePage(quint32 identifier);

} // namespace LocaleTable

} // namespace Quorlin
