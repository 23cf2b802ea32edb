#include "component/backends/postscript/SheetView.h"

namespace Quorlin {

namespace {

using Value = std::optional<double>;

Value at(const std::vector<Value> &values, std::size_t index)
{
    return index < values.size() ? values[index] : std::nullopt;
}

/// Maps coordinates of which any may be unknown; each depends on one of the two only.
std::pair<Value, Value> mapPair(Value x, Value y, const PageGeometry &page)
{
    const auto matrix = page.toSheet();
    const auto point = matrix.map({x.value_or(0), y.value_or(0)});
    const bool knowsX = page.isSideways() ? y.has_value() : x.has_value();
    const bool knowsY = page.isSideways() ? x.has_value() : y.has_value();
    return {knowsX ? Value(point.x) : std::nullopt, knowsY ? Value(point.y) : std::nullopt};
}

PdfView mapLine(const PdfView &view, const PageGeometry &page)
{
    const bool horizontal = view.type.back() == 'H';
    const auto value = at(view.values, 0);
    const auto mapped =
        horizontal ? mapPair(std::nullopt, value, page) : mapPair(value, std::nullopt, page);
    const bool staysHorizontal = horizontal != page.isSideways();
    auto type = view.type;
    type.back() = staysHorizontal ? 'H' : 'V';
    return {type, {staysHorizontal ? mapped.second : mapped.first}};
}

PdfView mapRectangle(const PdfView &view, const PageGeometry &page)
{
    for (std::size_t i = 0; i < 4; ++i)
        if (!at(view.values, i))
            return {"Fit", {}};
    const auto box = mapBox({*view.values[0], *view.values[1], *view.values[2], *view.values[3]},
                            page.toSheet());
    return {"FitR", {box[0], box[1], box[2], box[3]}};
}

} // namespace

PdfView onSheet(const PdfView &view, const PageGeometry &page)
{
    if (view.type == "XYZ") {
        const auto [x, y] = mapPair(at(view.values, 0), at(view.values, 1), page);
        return {"XYZ", {x, y, at(view.values, 2)}};
    }
    if (view.type == "FitR")
        return mapRectangle(view, page);
    if (view.type == "Fit" || view.type == "FitB")
        return {view.type, {}};
    return mapLine(view, page);
}

} // namespace Quorlin
