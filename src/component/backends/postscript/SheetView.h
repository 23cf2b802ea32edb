#pragma once

#include "component/backends/postscript/PdfInventory.h"

namespace Quorlin {

/// A view of a page in the coordinates of its upright sheet. On a page that lies on its side a
/// view of the full width becomes one of the full height, and the other way round.
[[nodiscard]] PdfView onSheet(const PdfView &view, const PageGeometry &page);

} // namespace Quorlin
