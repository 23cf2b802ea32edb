#pragma once

#include <string>
#include <vector>

class QPDFObjectHandle;

namespace Quorlin {

/// The numbers of an array, at most @p most of them; anything else in it is left out.
[[nodiscard]] std::vector<double> numbersOf(QPDFObjectHandle array, std::size_t most = 64);

/// Numbers in brackets, as PostScript and PDF write them.
[[nodiscard]] std::string bracketed(const std::vector<double> &numbers);

/// The number of components of a colour space; 0 for one that stands for no device colours.
[[nodiscard]] int deviceComponents(QPDFObjectHandle space);

/// The device colour space with this many components, with its slash; empty for another number.
[[nodiscard]] std::string deviceSpaceName(int components);

} // namespace Quorlin
