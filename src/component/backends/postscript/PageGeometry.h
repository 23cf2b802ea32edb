#pragma once

#include "component/backends/postscript/Matrix.h"

#include <array>

class QPDFObjectHandle;

namespace Quorlin {

/// A rectangle by two opposite corners: left, bottom, right, top, in points.
using Box = std::array<double, 4>;

/// The rectangle around the four corners of a box after a matrix was applied to them.
[[nodiscard]] Box mapBox(const Box &box, const Matrix &matrix);

/// The visible part of a page and how it stands upright on a sheet of its own.
///
/// A sheet has its origin in its lower left corner and is never turned; this is how a printed
/// page is seen again.
class PageGeometry
{
public:
    PageGeometry() = default;

    /// @param box the visible box in the page's coordinates.
    /// @param rotation clockwise, in degrees; brought to 0, 90, 180 or 270.
    /// @param unit points in one unit of the page; made smaller where the sheet would be larger
    /// than a PDF may have it.
    PageGeometry(const Box &box, int rotation, double unit = 1);

    /// Reads a page object, inherited attributes included. A page without a usable box gets
    /// the size of a letter, as viewers do.
    [[nodiscard]] static PageGeometry of(QPDFObjectHandle page);

    [[nodiscard]] const Box &box() const { return m_box; }
    [[nodiscard]] int rotation() const { return m_rotation; }
    [[nodiscard]] bool isSideways() const { return m_rotation == 90 || m_rotation == 270; }
    [[nodiscard]] double sheetWidth() const;
    [[nodiscard]] double sheetHeight() const;

    /// From the page's coordinates to those of its sheet.
    [[nodiscard]] Matrix toSheet() const;

private:
    [[nodiscard]] Matrix turned() const;

    Box m_box{0, 0, 612, 792};
    int m_rotation = 0;
    double m_unit = 1;
};

} // namespace Quorlin
