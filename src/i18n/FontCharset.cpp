#include "i18n/FontCharset.h"

#include "i18n/InstalledFonts.h"

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

/// The least size of an East Asian font, in points and in pixels at 96 to the inch.
constexpr int LeastPoints = 9;
constexpr int LeastPixels = 12;

QFont raised(QFont font)
{
    if (font.pixelSize() > 0 && font.pixelSize() < LeastPixels)
        font.setPixelSize(LeastPixels);
    else if (font.pixelSize() <= 0 && font.pointSizeF() < LeastPoints)
        font.setPointSize(LeastPoints);
    return font;
}

} // namespace

struct FontCharset::Row
{
    int codePage;
    int number;
    QFontDatabase::WritingSystem characters;
    QStringView faceName;
};

const FontCharset::Row &FontCharset::rowOf(int codePage)
{
    // Any stands for a set that asks nothing of a font.
    static constexpr std::array Rows{
        Row{1250, 238, QFontDatabase::Latin, {}},
        Row{1251, 204, QFontDatabase::Cyrillic, {}},
        Row{1252, Ansi, QFontDatabase::Any, {}},
        Row{1253, 161, QFontDatabase::Greek, {}},
        Row{1254, 162, QFontDatabase::Latin, {}},
        Row{1255, 177, QFontDatabase::Hebrew, {}},
        Row{1256, 178, QFontDatabase::Arabic, {}},
        Row{1257, 186, QFontDatabase::Latin, {}},
        Row{932, 128, QFontDatabase::Japanese, u"ＭＳ Ｐゴシック"},
        Row{936, 134, QFontDatabase::SimplifiedChinese, u"宋体"},
        Row{949, 129, QFontDatabase::Korean, u"굴림"},
        Row{950, 136, QFontDatabase::TraditionalChinese, u"新細明體"},
    };
    static constexpr Row Other{0, Default, QFontDatabase::Any, {}};
    const auto *const row = std::ranges::find(Rows, codePage, &Row::codePage);
    return row == Rows.end() ? Other : *row;
}

FontCharset FontCharset::ofCodePage(int codePage)
{
    return FontCharset(rowOf(codePage));
}

int FontCharset::number() const
{
    return m_row->number;
}

QString FontCharset::faceName() const
{
    return m_row->faceName.toString();
}

QFont FontCharset::applied(const QFont &font) const
{
    if (m_row->characters == QFontDatabase::Any)
        return font;
    auto suited = m_row->faceName.isEmpty() ? font : raised(font);
    const auto wanted = families(font);
    if (wanted != font.families())
        suited.setFamilies(wanted);
    return suited;
}

QStringList FontCharset::families(const QFont &font) const
{
    auto names = font.families();
    if (m_row->faceName.isEmpty()) {
        if (!InstalledFonts::cover(font, m_row->characters))
            names.append(InstalledFonts::nearest(m_row->characters));
    } else {
        names = QStringList{faceName(), InstalledFonts::nearest(m_row->characters)} + names;
    }
    names.removeAll(QString());
    names.removeDuplicates();
    return names;
}

} // namespace Quorlin
