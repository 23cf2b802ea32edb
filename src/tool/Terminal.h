#pragma once

#include <cstdio>

namespace Quorlin::Terminal {

/// The width in columns of the terminal behind a stream; 0 when there is none.
///
/// One source per system stands beside this header.
[[nodiscard]] int width(std::FILE *stream);

} // namespace Quorlin::Terminal
