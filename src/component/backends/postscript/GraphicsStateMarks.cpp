#include "component/backends/postscript/GraphicsStateMarks.h"

#include "component/backends/postscript/FormBox.h"
#include "component/backends/postscript/ObjectNumbers.h"
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

bool isBlendMode(QPDFObjectHandle mode)
{
    return mode.isName() &&
           std::find(BlendModes.begin(), BlendModes.end(), mode.getName()) != BlendModes.end();
}

/// The mode, or the first known one of a list.
std::string blendMode(QPDFObjectHandle mode)
{
    if (mode.isArray())
        for (auto item : mode.aitems())
            if (isBlendMode(item))
                return item.getName();
    return isBlendMode(mode) ? mode.getName() : "/Normal";
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

/// True for a transfer function that turns a mask over; other ones are rare and left out.
bool turnsOver(QPDFObjectHandle function)
{
    if (!function.isDictionary())
        return false;
    const auto from = numbersOf(function.getKey("/C0"));
    const auto to = numbersOf(function.getKey("/C1"));
    return from.size() == 1 && to.size() == 1 && from[0] > to[0];
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
    const int components = std::max(1, deviceComponents(space));
    std::string text = luminosity && !space.isNull() ? deviceSpaceName(components) : "null";
    text += " 5 dict begin /Subtype ";
    text += luminosity ? "/Luminosity def " : "/Alpha def ";
    if (luminosity && !space.isNull() && mask.getKey("/BC").isArray())
        text += backgroundText(mask.getKey("/BC"), components);
    std::string edges;
    for (const double edge : *box)
        edges += number(edge) + " ";
    auto end = std::to_string(m_library.nextSerial()) + " QTmaskend";
    if (luminosity && turnsOver(mask.getKey("/TR")))
        end = edges + "QTturnover " + end;
    return MaskMarks{m_library.mark(text + "currentdict end " + edges + "QTmaskbegin"),
                     m_library.alias(form), m_library.mark(end)};
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
