#include "component/backends/postscript/FormBox.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <algorithm>

namespace Quorlin {

Matrix formMatrix(QPDFObjectHandle form)
{
    auto object = form.getDict().getKey("/Matrix");
    if (!object.isMatrix())
        return {};
    const auto m = object.getArrayAsMatrix();
    return {m.a, m.b, m.c, m.d, m.e, m.f};
}

std::optional<Box> formInnerBox(QPDFObjectHandle form)
{
    auto object = form.getDict().getKey("/BBox");
    if (!object.isRectangle())
        return std::nullopt;
    const auto r = object.getArrayAsRectangle();
    const Box box{std::min(r.llx, r.urx), std::min(r.lly, r.ury), std::max(r.llx, r.urx),
                  std::max(r.lly, r.ury)};
    if (!(box[2] - box[0] > 0) || !(box[3] - box[1] > 0))
        return std::nullopt;
    return box;
}

std::optional<Box> formBox(QPDFObjectHandle form)
{
    const auto inner = formInnerBox(form);
    if (!inner)
        return std::nullopt;
    return mapBox(*inner, formMatrix(form));
}

} // namespace Quorlin
