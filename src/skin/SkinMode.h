#pragma once

#include <QtGlobal>

#include <cstddef>

namespace Quorlin {

/// The two layouts that every skin describes. Calls give a layout as a mode: 0 is Classic, any
/// other value is Advanced.
enum class SkinLayout : std::size_t { Classic, Advanced };

/// Place of a mode's values in an array of two.
[[nodiscard]] constexpr std::size_t layoutIndex(qint32 mode)
{
    return std::size_t(mode == 0 ? SkinLayout::Classic : SkinLayout::Advanced);
}

} // namespace Quorlin
