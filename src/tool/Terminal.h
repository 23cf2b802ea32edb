#pragma once

#include <cstdio>

namespace Quorlin::Terminal {

/// The width in columns of the terminal behind a stream; 0 when there is none.
///
/// One source per system stands beside this header.
[[nodiscard]] int width(std::FILE *stream);

/// The columns that a character takes: 2 for most of East Asia, 0 for marks that combine with
/// the one before and for what is not seen.
[[nodiscard]] int columnsOf(char32_t character);

/// Opens what stands for a standard stream that was closed, so that no other file of the
/// program gets its number. Reading it and writing to it fails, as before.
void fillClosedStreams();

} // namespace Quorlin::Terminal
