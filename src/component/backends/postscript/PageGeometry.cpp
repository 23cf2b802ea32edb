#include "component/backends/postscript/PageGeometry.h"

#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include <algorithm>
#include <optional>

namespace Quorlin {

namespace {

constexpr double SmallestSide = 1;
constexpr double LargestSide = 200000;
constexpr double LargestSheet = 14400;

std::optional<Box> readBox(QPDFObjectHandle object)
{
    if (!object.isRectangle())
        return std::nullopt;
    const auto r = object.getArrayAsRectangle();
    Box box{std::min(r.llx, r.urx), std::min(r.lly, r.ury), std::max(r.llx, r.urx),
            std::max(r.lly, r.ury)};
    const double width = box[2] - box[0];
    const double height = box[3] - box[1];
    const bool usable = width >= SmallestSide && height >= SmallestSide && width <= LargestSide &&
                        height <= LargestSide;
    return usable ? std::optional(box) : std::nullopt;
}

std::optional<Box> commonPart(const Box &a, const Box &b)
{
    const Box box{std::max(a[0], b[0]), std::max(a[1], b[1]), std::min(a[2], b[2]),
                  std::min(a[3], b[3])};
    if (box[2] - box[0] < SmallestSide || box[3] - box[1] < SmallestSide)
        return std::nullopt;
    return box;
}

int quarterTurns(int degrees)
{
    return ((degrees / 90) % 4 + 4) % 4;
}

} // namespace

Box mapBox(const Box &box, const Matrix &matrix)
{
    const Point corners[] = {matrix.map({box[0], box[1]}), matrix.map({box[2], box[1]}),
                             matrix.map({box[2], box[3]}), matrix.map({box[0], box[3]})};
    Box result{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const auto &corner : corners) {
        result[0] = std::min(result[0], corner.x);
        result[1] = std::min(result[1], corner.y);
        result[2] = std::max(result[2], corner.x);
        result[3] = std::max(result[3], corner.y);
    }
    return result;
}

PageGeometry::PageGeometry(const Box &box, int rotation, double unit)
    : m_box(box), m_rotation(90 * quarterTurns(rotation))
{
    const auto [shorter, longer] = std::minmax({box[2] - box[0], box[3] - box[1]});
    m_unit = unit > 1 ? std::max(1.0, std::min(unit, LargestSheet / longer))
                      : std::min(1.0, std::max(unit, SmallestSide / shorter));
}

PageGeometry PageGeometry::of(QPDFObjectHandle page)
{
    QPDFPageObjectHelper helper(page);
    const auto media = readBox(helper.getAttribute("/MediaBox", false));
    const auto crop = readBox(helper.getAttribute("/CropBox", false));
    Box box = media.value_or(PageGeometry().box());
    if (crop)
        box = commonPart(*crop, box).value_or(box);
    auto rotate = helper.getAttribute("/Rotate", false);
    auto unit = page.getKey("/UserUnit");
    return {box,
            rotate.isNumber() ? static_cast<int>(std::clamp(rotate.getNumericValue(), -1e6, 1e6))
                              : 0,
            unit.isNumber() && unit.getNumericValue() > 0 ? unit.getNumericValue() : 1};
}

double PageGeometry::sheetWidth() const
{
    return m_unit * (isSideways() ? m_box[3] - m_box[1] : m_box[2] - m_box[0]);
}

double PageGeometry::sheetHeight() const
{
    return m_unit * (isSideways() ? m_box[2] - m_box[0] : m_box[3] - m_box[1]);
}

Matrix PageGeometry::toSheet() const
{
    return turned().then({m_unit, 0, 0, m_unit, 0, 0});
}

Matrix PageGeometry::turned() const
{
    switch (m_rotation) {
    case 90:
        return {0, -1, 1, 0, -m_box[1], m_box[2]};
    case 180:
        return {-1, 0, 0, -1, m_box[2], m_box[3]};
    case 270:
        return {0, 1, -1, 0, m_box[3], -m_box[0]};
    default:
        return {1, 0, 0, 1, -m_box[0], -m_box[1]};
    }
}

} // namespace Quorlin
