#pragma once

#include <QColor>
#include <QString>

#include <array>
#include <span>

namespace Quorlin {

class IniFile;

/// The colours that a skin may give, in the order of LookColourRow::all().
enum class LookColour {
    Text,
    Title,
    ConvertText,
    InfoText,
    DisabledText,
    ListText,
    List,
    SelectionText,
    Selection,
    FieldText,
    Field,
    FieldBorder,
    Accent,
    AccentText,
    Focus,
    Hover,
    Pressed,
    ProgressBack,
    Progress,
    ProgressText,
    ProgressDoneText,
    Menu,
    MenuText,
    Veil,
};

/// A colour's key in the group "Look" and its value in the built-in layout.
struct LookColourRow
{
    LookColour colour;
    QLatin1StringView key;
    QRgb builtIn;

    [[nodiscard]] static std::span<const LookColourRow> all();
};

/// Colours and fonts of a skin: plain values that the windows read. What a skin does not give,
/// or gives in a form that cannot be read, is as in the built-in layout.
class SkinLook
{
public:
    static constexpr qint16 SmallestFont = 8;
    static constexpr qint16 LargestFont = 48;
    static constexpr qint16 BuiltInFont = 13;
    static constexpr int LargestCorners = 24;

    /// The look of the built-in layout.
    SkinLook();

    /// Reads the group "Look" of a skin's description.
    [[nodiscard]] static SkinLook read(const IniFile &ini);

    [[nodiscard]] QColor colour(LookColour colour) const;

    // Heights of the fonts in pixels, from 8 to 48.
    [[nodiscard]] int fontSize() const { return m_fontSize; }
    [[nodiscard]] int titleFontSize() const { return m_titleFontSize; }
    [[nodiscard]] int convertFontSize() const { return m_convertFontSize; }

    /// Radius of the corners of buttons, fields and entries in pixels, from 0 to 24.
    [[nodiscard]] int corners() const { return m_corners; }

    [[nodiscard]] bool isBold() const { return m_bold; }
    /// Empty for the system's own font.
    [[nodiscard]] QString fontFamily() const { return m_fontFamily; }

    [[nodiscard]] bool operator==(const SkinLook &other) const = default;

private:
    static constexpr std::size_t ColourCount = 24;

    std::array<QRgb, ColourCount> m_colours{};
    int m_fontSize = BuiltInFont;
    int m_titleFontSize = BuiltInFont;
    int m_convertFontSize = BuiltInFont;
    int m_corners = 0;
    bool m_bold = false;
    QString m_fontFamily;
};

} // namespace Quorlin
