#include "skin/SkinLook.h"

#include "settings/IniFile.h"
#include "skin/LeadingNumber.h"

#include <algorithm>
#include <cctype>

namespace Quorlin {

namespace {

constexpr QLatin1StringView operator""_l(const char *text, std::size_t size)
{
    return QLatin1StringView(text, qsizetype(size));
}

constexpr qsizetype LongestFamily = 100;

constexpr std::array Rows{
    LookColourRow{LookColour::Text, "TextColor"_l, 0xFF1B1F27},
    LookColourRow{LookColour::Title, "TitleColor"_l, 0xFF1B1F27},
    LookColourRow{LookColour::ConvertText, "ConvertTextColor"_l, 0xFF1B1F27},
    LookColourRow{LookColour::InfoText, "InfoTextColor"_l, 0xFF1B1F27},
    LookColourRow{LookColour::DisabledText, "DisabledTextColor"_l, 0xFF666C75},
    LookColourRow{LookColour::ListText, "ListTextColor"_l, 0xFF1B1F27},
    LookColourRow{LookColour::List, "ListColor"_l, 0xFFFFFFFF},
    LookColourRow{LookColour::SelectionText, "SelectionTextColor"_l, 0xFFFFFFFF},
    LookColourRow{LookColour::Selection, "SelectionColor"_l, 0xFF1F4E8C},
    LookColourRow{LookColour::FieldText, "FieldTextColor"_l, 0xFF1B1F27},
    LookColourRow{LookColour::Field, "FieldColor"_l, 0xFFFFFFFF},
    LookColourRow{LookColour::FieldBorder, "FieldBorderColor"_l, 0xFF7A818C},
    LookColourRow{LookColour::Accent, "AccentColor"_l, 0xFF1F4E8C},
    LookColourRow{LookColour::AccentText, "AccentTextColor"_l, 0xFFFFFFFF},
    LookColourRow{LookColour::Focus, "FocusColor"_l, 0xFF1F4E8C},
    LookColourRow{LookColour::Hover, "HoverColor"_l, 0x181F4E8C},
    LookColourRow{LookColour::Pressed, "PressedColor"_l, 0x301F4E8C},
    LookColourRow{LookColour::ProgressBack, "ProgressBackColor"_l, 0xFFFFFFFF},
    LookColourRow{LookColour::Progress, "ProgressColor"_l, 0xFF1F4E8C},
    LookColourRow{LookColour::ProgressText, "ProgressTextColor"_l, 0xFF1B1F27},
    LookColourRow{LookColour::ProgressDoneText, "ProgressDoneTextColor"_l, 0xFFFFFFFF},
    LookColourRow{LookColour::Menu, "MenuColor"_l, 0xFFFFFFFF},
    LookColourRow{LookColour::MenuText, "MenuTextColor"_l, 0xFF1B1F27},
    LookColourRow{LookColour::Veil, "VeilColor"_l, 0xFFF0F2F5},
};

constexpr bool areInOrder()
{
    for (std::size_t at = 0; at < Rows.size(); ++at) {
        if (std::size_t(Rows[at].colour) != at)
            return false;
    }
    return true;
}
static_assert(areInOrder());

QString valueOf(const IniFile &ini, QLatin1StringView key)
{
    return ini.GetVar(key, QStringLiteral("Look"));
}

/// Only "#RRGGBB" and "#AARRGGBB" are colours.
QRgb readColour(const QString &text, QRgb otherwise)
{
    if (!text.startsWith(QLatin1Char('#')) || (text.size() != 7 && text.size() != 9))
        return otherwise;
    const auto digits = QStringView(text).sliced(1);
    const auto isHex = [](QChar ch) {
        return ch.unicode() < 0x80 && std::isxdigit(ch.toLatin1()) != 0;
    };
    if (!std::ranges::all_of(digits, isHex))
        return otherwise;
    const auto value = digits.toUInt(nullptr, 16);
    return digits.size() == 6 ? 0xFF000000U | value : value;
}

int readSize(const QString &text, int otherwise)
{
    const int size = leadingNumber(text);
    if (size == 0)
        return otherwise;
    return std::clamp<int>(size, SkinLook::SmallestFont, SkinLook::LargestFont);
}

} // namespace

std::span<const LookColourRow> LookColourRow::all()
{
    return Rows;
}

SkinLook::SkinLook()
{
    static_assert(ColourCount == Rows.size());
    std::ranges::transform(Rows, m_colours.begin(), &LookColourRow::builtIn);
}

SkinLook SkinLook::read(const IniFile &ini)
{
    SkinLook look;
    for (const auto &row : Rows) {
        auto &colour = look.m_colours.at(std::size_t(row.colour));
        colour = readColour(valueOf(ini, row.key), colour);
    }
    look.m_fontSize = readSize(valueOf(ini, "FontSize"_l), BuiltInFont);
    look.m_titleFontSize = readSize(valueOf(ini, "TitleFontSize"_l), look.m_fontSize);
    look.m_convertFontSize = readSize(valueOf(ini, "ConvertFontSize"_l), look.m_fontSize);
    look.m_corners =
        std::clamp<int>(leadingNumber(valueOf(ini, "Corners"_l)), 0, SkinLook::LargestCorners);
    look.m_bold = valueOf(ini, "Bold"_l).toLower() == "true"_l;
    look.m_fontFamily = valueOf(ini, "FontFamily"_l).left(LongestFamily);
    return look;
}

QColor SkinLook::colour(LookColour colour) const
{
    return QColor::fromRgba(m_colours.at(std::size_t(colour)));
}

} // namespace Quorlin
