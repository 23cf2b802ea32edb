#include "component/backends/postscript/ShadingWriter.h"

#include "component/backends/postscript/FunctionWriter.h"
#include "component/backends/postscript/ObjectNumbers.h"

#include <qpdf/QPDFObjectHandle.hh>

namespace Quorlin::ShadingWriter {

namespace {

std::string extend(QPDFObjectHandle array)
{
    std::string text = " /Extend [";
    for (int i = 0; i < 2; ++i) {
        const bool given = array.isArray() && i < array.getArrayNItems() &&
                           array.getArrayItem(i).isBool() && array.getArrayItem(i).getBoolValue();
        text += given ? " true" : " false";
    }
    return text + " ]";
}

} // namespace

std::optional<std::string> fill(QPDFObjectHandle shading)
{
    auto dictionary = shading.isStream() ? shading.getDict() : shading;
    if (!dictionary.isDictionary() || !dictionary.getKey("/ShadingType").isInteger())
        return std::nullopt;
    const auto type = dictionary.getKey("/ShadingType").getIntValue();
    const auto coordinates = numbersOf(dictionary.getKey("/Coords"));
    const std::size_t expected = type == 2 ? 4 : type == 3 ? 6 : 0;
    const auto space = deviceSpaceName(deviceComponents(dictionary.getKey("/ColorSpace")));
    if (expected == 0 || coordinates.size() != expected || space.empty())
        return std::nullopt;
    const auto function = functionText(dictionary.getKey("/Function"));
    if (!function)
        return std::nullopt;
    std::string text = "<< /ShadingType " + std::to_string(type) + " /ColorSpace " + space +
                       " /Coords " + bracketed(coordinates);
    const auto domain = numbersOf(dictionary.getKey("/Domain"));
    if (domain.size() == 2)
        text += " /Domain " + bracketed(domain);
    const auto box = numbersOf(dictionary.getKey("/BBox"));
    if (box.size() == 4)
        text += " /BBox " + bracketed(box);
    return text + extend(dictionary.getKey("/Extend")) + "\n/Function " + *function + " >> QTshade";
}

} // namespace Quorlin::ShadingWriter
