#include "component/backends/postscript/PictureUses.h"

#include <cmath>

namespace Quorlin {

namespace {

constexpr double FewPixels = 1024;
constexpr double Tolerance = 1.02;
constexpr double LargestSide = 14400; ///< points

double number(QPDFObjectHandle value)
{
    return value.isNumber() ? value.getNumericValue() : 0;
}

/// Stencils take the colour of the moment; small pictures are not worth it.
bool isWorthKeeping(QPDFObjectHandle picture)
{
    auto dictionary = picture.getDict();
    auto stencil = dictionary.getKey("/ImageMask");
    return !(stencil.isBool() && stencil.getBoolValue()) && !dictionary.hasKey("/Mask") &&
           !dictionary.hasKey("/OC") &&
           number(dictionary.getKey("/Width")) * number(dictionary.getKey("/Height")) >= FewPixels;
}

} // namespace

PictureUses::Use PictureUses::use(QPDFObjectHandle picture, const Matrix &place)
{
    const double width = std::hypot(place.a, place.b);
    const double height = std::hypot(place.c, place.d);
    if (!isWorthKeeping(picture) || !(width >= 1 && width <= LargestSide) ||
        !(height >= 1 && height <= LargestSide))
        return {{}, false};
    auto &kept = m_kept[picture.getObjGen()];
    // A distiller may have thinned a picture out for the place where it stood first.
    if (kept.serial != 0 && width <= kept.width * Tolerance && height <= kept.height * Tolerance) {
        kept.again = true;
        return {m_library.mark(std::to_string(kept.serial) + " QTagain"), true};
    }
    takeBack(kept);
    kept = {m_library.nextSerial(), width, height, {}, false};
    kept.mark = m_library.mark(std::to_string(kept.serial) + " QTkeep");
    return {kept.mark, false};
}

void PictureUses::takeBack(const Kept &kept)
{
    if (kept.serial != 0 && !kept.again)
        m_library.empty(kept.mark);
}

void PictureUses::finish()
{
    for (const auto &entry : m_kept)
        takeBack(entry.second);
    m_kept.clear();
}

} // namespace Quorlin
