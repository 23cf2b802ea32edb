#pragma once

#include "i18n/TextKey.h"

#include <QLatin1StringView>
#include <QStringView>

#include <cstddef>
#include <span>

namespace Quorlin {

/// What a language file must give for a key.
enum class TextCheck {
    None,
    Required,
    PairFirst, ///< nothing yet: the key after it is the second of the pair
    PairSecond ///< one of the two, at least
};

/// One key of the text table.
struct TextRow
{
    TextKey key;
    QLatin1StringView group;
    QLatin1StringView name;
    QLatin1StringView builtIn; ///< the text while no language file is loaded
    TextCheck check;

    /// All keys, in the order in which they are read; row i is that of the key with number i.
    [[nodiscard]] static std::span<const TextRow> all();

    [[nodiscard]] static const TextRow &of(TextKey key);
    /// The row of a key's name, which counts case; nothing when there is none.
    [[nodiscard]] static const TextRow *find(QStringView name);

    [[nodiscard]] constexpr std::size_t index() const { return static_cast<std::size_t>(key); }
};

} // namespace Quorlin
