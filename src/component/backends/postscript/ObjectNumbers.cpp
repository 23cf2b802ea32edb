#include "component/backends/postscript/ObjectNumbers.h"

#include "component/backends/postscript/PostScriptText.h"

#include <qpdf/QPDFObjectHandle.hh>

namespace Quorlin {

namespace {

int componentsOfName(const std::string &name)
{
    if (name == "/DeviceGray" || name == "/CalGray" || name == "/G")
        return 1;
    if (name == "/DeviceRGB" || name == "/CalRGB" || name == "/RGB")
        return 3;
    return name == "/DeviceCMYK" || name == "/CMYK" ? 4 : 0;
}

} // namespace

std::vector<double> numbersOf(QPDFObjectHandle array, std::size_t most)
{
    std::vector<double> numbers;
    if (!array.isArray())
        return numbers;
    for (auto value : array.aitems())
        if (value.isNumber() && numbers.size() < most)
            numbers.push_back(value.getNumericValue());
    return numbers;
}

std::string bracketed(const std::vector<double> &numbers)
{
    std::string text = "[";
    for (const double value : numbers)
        text += (text.size() > 1 ? " " : "") + PostScriptText::number(value);
    return text + "]";
}

int deviceComponents(QPDFObjectHandle space)
{
    if (space.isName())
        return componentsOfName(space.getName());
    if (!space.isArray() || space.getArrayNItems() < 2 || !space.getArrayItem(0).isName())
        return 0;
    const auto family = space.getArrayItem(0).getName();
    auto profile = space.getArrayItem(1);
    if (family != "/ICCBased" || !profile.isStream())
        return componentsOfName(family);
    auto count = profile.getDict().getKey("/N");
    const auto components = count.isInteger() ? count.getIntValue() : 0;
    return components == 1 || components == 3 || components == 4 ? static_cast<int>(components) : 0;
}

std::string deviceSpaceName(int components)
{
    if (components == 1)
        return "/DeviceGray";
    if (components == 3)
        return "/DeviceRGB";
    return components == 4 ? "/DeviceCMYK" : "";
}

} // namespace Quorlin
