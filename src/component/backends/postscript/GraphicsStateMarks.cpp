#include "component/backends/postscript/GraphicsStateMarks.h"

#include "component/backends/postscript/FormBox.h"
#include "component/backends/postscript/PostScriptText.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Quorlin {

namespace {

using PostScriptText::number;

constexpr std::array<std::string_view, 16> BlendModes{
    "/Normal",     "/Multiply",   "/Screen",    "/Overlay",   "/Darken",     "/Lighten",
    "/ColorDodge", "/ColorBurn",  "/HardLight", "/SoftLight", "/Difference", "/Exclusion",
    "/Hue",        "/Saturation", "/Color",     "/Luminosity"};

std::string blendMode(QPDFObjectHandle mode)
{
    if (mode.isArray() && mode.getArrayNItems() > 0)
        mode = mode.getArrayItem(0);
    const auto name = mode.isName() ? mode.getName() : std::string();
    const bool known = std::find(BlendModes.begin(), BlendModes.end(), name) != BlendModes.end();
    return known ? name : "/Normal";
}

double alpha(QPDFObjectHandle value)
{
    return value.isNumber() ? std::clamp(value.getNumericValue(), 0.0, 1.0) : 1.0;
}

std::string valuesText(QPDFObjectHandle state)
{
    std::string text;
    if (state.hasKey("/ca"))
        text += number(alpha(state.getKey("/ca"))) + " QTca ";
    if (state.hasKey("/CA"))
        text += number(alpha(state.getKey("/CA"))) + " QTCA ";
    if (state.hasKey("/BM"))
        text += blendMode(state.getKey("/BM")) + " QTbm ";
    if (state.getKey("/AIS").isBool())
        text += state.getKey("/AIS").getBoolValue() ? "true QTais " : "false QTais ";
    return text;
}

/// The name of a device colour space with this many components.
std::string deviceSpace(int components)
{
    return components == 4 ? "/DeviceCMYK" : components == 3 ? "/DeviceRGB" : "/DeviceGray";
}

int componentsOf(QPDFObjectHandle space)
{
    if (space.isName())
        return space.getName() == "/DeviceCMYK" ? 4 : space.getName() == "/DeviceRGB" ? 3 : 1;
    if (!space.isArray() || space.getArrayNItems() < 2)
        return 1;
    auto family = space.getArrayItem(0);
    if (family.isName() && family.getName() == "/CalRGB")
        return 3;
    auto profile = space.getArrayItem(1);
    const bool hasCount = profile.isStream() && profile.getDict().getKey("/N").isInteger();
    return hasCount ? profile.getDict().getKey("/N").getIntValueAsInt() : 1;
}

double grayOf(const std::vector<double> &color)
{
    if (color.size() == 3)
        return 0.3 * color[0] + 0.59 * color[1] + 0.11 * color[2];
    if (color.size() == 4)
        return 1 - std::min(1.0, 0.3 * color[0] + 0.59 * color[1] + 0.11 * color[2] + color[3]);
    return color.empty() ? 0 : color[0];
}

std::string backgroundText(QPDFObjectHandle color, int components)
{
    std::vector<double> values;
    for (int i = 0; i < components && i < color.getArrayNItems(); ++i)
        values.push_back(alpha(color.getArrayItem(i)));
    if (static_cast<int>(values.size()) != components)
        return {};
    std::string text = "/Background [";
    for (const double value : values)
        text += number(value) + " ";
    return text + "] def /GrayBackground [" + number(grayOf(values)) + "] def ";
}

/// The transfer functions that are in use turn a mask over; any other is left out.
std::string transferText(QPDFObjectHandle function)
{
    if (!function.isDictionary() || !function.getKey("/FunctionType").isInteger() ||
        function.getKey("/FunctionType").getIntValue() != 2)
        return {};
    auto c0 = function.getKey("/C0");
    auto c1 = function.getKey("/C1");
    const double from = c0.isArray() ? alpha(c0.getArrayItem(0)) : 0;
    const double to = c1.isArray() ? alpha(c1.getArrayItem(0)) : 1;
    auto n = function.getKey("/N");
    const double power = n.isNumber() ? std::clamp(n.getNumericValue(), 0.01, 100.0) : 1;
    return "/TransferFunction { " + number(power) + " exp " + number(to - from) + " mul " +
           number(from) + " add } def ";
}

} // namespace

GraphicsStateReader::GraphicsStateReader(MarkLibrary &library) : m_library(library) {}

bool GraphicsStateReader::blends(QPDFObjectHandle state)
{
    return state.hasKey("/BM") && blendMode(state.getKey("/BM")) != "/Normal";
}

bool GraphicsStateReader::isTransparent(QPDFObjectHandle state)
{
    return alpha(state.getKey("/ca")) < 1 || alpha(state.getKey("/CA")) < 1 || blends(state) ||
           state.getKey("/SMask").isDictionary();
}

std::optional<MaskMarks> GraphicsStateReader::readMask(QPDFObjectHandle mask)
{
    auto form = mask.getKey("/G");
    const auto box = form.isStream() ? formBox(form) : std::nullopt;
    if (!box)
        return std::nullopt;
    auto group = form.getDict().getKey("/Group");
    auto space = group.isDictionary() ? group.getKey("/CS") : QPDFObjectHandle::newNull();
    auto type = mask.getKey("/S");
    const bool luminosity = !type.isName() || type.getName() != "/Alpha";
    const int components = std::clamp(componentsOf(space), 1, 4);
    std::string text = luminosity && !space.isNull() ? deviceSpace(components) : "null";
    text += " 5 dict begin /Subtype ";
    text += luminosity ? "/Luminosity def " : "/Alpha def ";
    if (luminosity && !space.isNull() && mask.getKey("/BC").isArray())
        text += backgroundText(mask.getKey("/BC"), components);
    text += transferText(mask.getKey("/TR")) + "currentdict end ";
    for (const double edge : *box)
        text += number(edge) + " ";
    const auto end = std::to_string(m_library.nextSerial()) + " QTmaskend";
    return MaskMarks{m_library.mark(text + "QTmaskbegin"), m_library.alias(form),
                     m_library.mark(end)};
}

GraphicsStateMarks GraphicsStateReader::take(QPDFObjectHandle state)
{
    GraphicsStateMarks marks;
    const auto values = valuesText(state);
    if (!values.empty())
        marks.values = m_library.mark(values);
    auto mask = state.getKey("/SMask");
    if (mask.isDictionary()) {
        marks.mask = readMask(mask);
        if (marks.mask)
            marks.maskForm = mask.getKey("/G");
    } else if (mask.isName()) {
        marks.clearMask = m_library.mark("QTnomask");
    }
    state.removeKey("/SMask");
    return marks;
}

} // namespace Quorlin
