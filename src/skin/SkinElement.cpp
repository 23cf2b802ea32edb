#include "skin/SkinElement.h"

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

constexpr QLatin1StringView operator""_l(const char *text, std::size_t size)
{
    return QLatin1StringView(text, qsizetype(size));
}

using enum SkinKind;
using enum SkinForm;

constexpr bool InBoth = false;
constexpr bool NotInTextMode = true;
constexpr bool Shown = true;
constexpr bool Hidden = false;

// clang-format off
constexpr std::array Elements{
    SkinElement{"FormMain"_l, "Icon"_l, Position, NotInTextMode, {8, 8, 1, 1, Hidden}, Main, "imgIcon"_l, 1},
    SkinElement{"FormMain"_l, "Title"_l, Geometry, NotInTextMode, {30, 8, 150, 15, Hidden}, Main, "lblTitle"_l, 2},
    SkinElement{"FormMain"_l, "Main"_l, Window, InBoth, {0, 0, 421, 311, Shown}, Main, ""_l, 0},
    SkinElement{"FormMain"_l, "Close"_l, Geometry, InBoth, {400, 5, 18, 18, Shown}, Main, "lblClose"_l, 3},
    SkinElement{"FormMain"_l, "Help"_l, Geometry, InBoth, {380, 5, 18, 18, Shown}, Main, "LblHelp"_l, 4},
    SkinElement{"Info"_l, "Info"_l, Picture, InBoth, {0, 0, 0, 0, Shown}, Main, "PctInfo"_l, 5},
    SkinElement{"Info"_l, "ZoneInfo"_l, Geometry, InBoth, {51, 80, 321, 65, Shown}, Main, "PctInfo"_l, 6},
    SkinElement{"Info"_l, "LabelInfo"_l, Geometry, InBoth, {64, 32, 249, 25, Shown}, Main, "LblInfo"_l, 7},
    SkinElement{"Liste"_l, "List"_l, Geometry, InBoth, {47, 39, 329, 173, Shown}, Main, "LstFile"_l, 8},
    SkinElement{"Liste"_l, "BtnFirst"_l, Geometry, InBoth, {379, 67, 22, 22, Shown}, Main, "LblFirst"_l, 9},
    SkinElement{"Liste"_l, "BtnPrevious"_l, Geometry, InBoth, {21, 67, 22, 22, Shown}, Main, "LblPrevious"_l, 10},
    SkinElement{"Liste"_l, "BtnNext"_l, Geometry, InBoth, {21, 161, 22, 22, Shown}, Main, "LblNext"_l, 11},
    SkinElement{"Liste"_l, "BtnLast"_l, Geometry, InBoth, {379, 161, 22, 22, Shown}, Main, "LblLast"_l, 12},
    SkinElement{"ProgressBar"_l, "ProgressBar"_l, Geometry, InBoth, {36, 289, 350, 14, Shown}, Main, "BarProgress"_l, 13},
    SkinElement{"Options"_l, "ChkMail"_l, Geometry, InBoth, {39, 200, 13, 13, Shown}, Main, "OptMail"_l, 14},
    SkinElement{"Options"_l, "ChkShow"_l, Geometry, InBoth, {39, 220, 13, 13, Shown}, Main, "OptShow"_l, 16},
    SkinElement{"Options"_l, "ChkLink"_l, Geometry, InBoth, {39, 239, 13, 13, Shown}, Main, "OptLink"_l, 18},
    SkinElement{"Options"_l, "OptMail"_l, Geometry, InBoth, {61, 200, 250, 17, Shown}, Main, "LblMail"_l, 15},
    SkinElement{"Options"_l, "OptShow"_l, Geometry, InBoth, {61, 219, 137, 15, Shown}, Main, "LblShow"_l, 17},
    SkinElement{"Options"_l, "OptLink"_l, Geometry, InBoth, {61, 238, 112, 15, Shown}, Main, "LblLink"_l, 19},
    SkinElement{"Compress"_l, "LibCompress"_l, Geometry, NotInTextMode, {141, 260, 142, 15, Shown}, Main, "LblCompress"_l, 21},
    SkinElement{"Compress"_l, "CmbCompress"_l, Geometry, InBoth, {38, 257, 100, 21, Shown}, Main, "cmbCompression"_l, 20},
    SkinElement{"Convert"_l, "LibConvert"_l, Geometry, NotInTextMode, {312, 257, 64, 15, Shown}, Main, "LblLibConvert"_l, 23},
    SkinElement{"Convert"_l, "BtnConvert"_l, Geometry, InBoth, {288, 254, 100, 22, Shown}, Main, "LblConvert"_l, 22},
    SkinElement{"FormAbout"_l, "AboutIcon"_l, Position, InBoth, {8, 8, 1, 1, Hidden}, About, "imgAboutIcon"_l, 25},
    SkinElement{"FormAbout"_l, "AboutTitle"_l, Geometry, InBoth, {130, 8, 235, 17, Shown}, About, "lblAboutTitle"_l, 26},
    SkinElement{"FormAbout"_l, "About"_l, Window, InBoth, {0, 0, 421, 200, Shown}, About, ""_l, 24},
    SkinElement{"FormAbout"_l, "AboutClose"_l, Geometry, InBoth, {397, 5, 18, 18, Shown}, About, "lblAboutClose"_l, 27},
    SkinElement{"FormAbout"_l, "AboutProductName"_l, Geometry, InBoth, {16, 32, 201, 25, Shown}, About, "lblProductName"_l, 28},
    SkinElement{"FormAbout"_l, "AboutCopyright"_l, Geometry, InBoth, {200, 32, 209, 17, Shown}, About, "lblCopyright"_l, 29},
    SkinElement{"FormAbout"_l, "AboutAdobeLogo"_l, Geometry, InBoth, {16, 110, 41, 53, Shown}, About, "immAdobeLogo"_l, 30},
    SkinElement{"FormAbout"_l, "AboutAdobeTitle"_l, Geometry, InBoth, {64, 110, 329, 25, Shown}, About, "lblAdobeTitle"_l, 31},
    SkinElement{"FormAbout"_l, "AboutAdobeInfo"_l, Geometry, InBoth, {64, 128, 353, 33, Shown}, About, "lblAdobeInfo"_l, 32},
    SkinElement{"FormAbout"_l, "AboutAdobeCopyright"_l, Geometry, InBoth, {16, 176, 393, 17, Shown}, About, "lblAdobeCopyright"_l, 33},
};
// clang-format on

constexpr auto inOrder()
{
    std::array<const SkinElement *, Elements.size()> order{};
    for (const auto &element : Elements)
        order.at(std::size_t(element.applied)) = &element;
    return order;
}

constexpr auto OrderOfApplication = inOrder();
static_assert(std::ranges::none_of(OrderOfApplication, [](const auto *row) { return !row; }),
              "every place in the order of application is taken once");

} // namespace

std::span<const SkinElement> SkinElement::all()
{
    return Elements;
}

std::span<const SkinElement *const> SkinElement::inOrderOfApplication()
{
    return OrderOfApplication;
}

std::optional<std::size_t> SkinElement::indexOf(QLatin1StringView name)
{
    const auto *const found = std::ranges::find(Elements, name, &SkinElement::name);
    if (found == Elements.end())
        return {};
    return std::size_t(found - Elements.begin());
}

} // namespace Quorlin
