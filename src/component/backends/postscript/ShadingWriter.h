#pragma once

#include <optional>
#include <string>

class QPDFObjectHandle;

namespace Quorlin {

/// Writes smooth shadings as PostScript, which knows them as well, so that they stay smooth
/// instead of being cut into strips.
namespace ShadingWriter {

/// PostScript that fills the current clipping area with an axial or radial shading; nothing for
/// the other kinds and for colours and functions that PostScript does not know.
[[nodiscard]] std::optional<std::string> fill(QPDFObjectHandle shading);

} // namespace ShadingWriter

} // namespace Quorlin
