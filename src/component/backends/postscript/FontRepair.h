#pragma once

#include "component/backends/postscript/FontUnicode.h"

#include <qpdf/QPDFObjectHandle.hh>

namespace Quorlin {

/// Mends what makes the printing tool or a distiller stumble over a font dictionary.
namespace FontRepair {

/// Gives a font that is not embedded and names no encoding the standard one, takes glyphs that
/// do not exist out of the map of a composite font, and gives a drawn font an empty glyph for
/// the codes that show nothing.
void repair(QPDF &pdf, QPDFObjectHandle font);

/// The text behind the codes that the printing tool will write for this font: character codes
/// of a simple font, CIDs of a composite one. Empty when the font does not say.
[[nodiscard]] FontUnicode readTexts(QPDFObjectHandle font);

} // namespace FontRepair

} // namespace Quorlin
