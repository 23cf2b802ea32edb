#include "i18n/InstalledFonts.h"

#include <QFont>
#include <QFontInfo>
#include <QStringList>

#include <algorithm>

namespace Quorlin::InstalledFonts {

namespace {

/// Usual families, the best first.
QStringList usual(QFontDatabase::WritingSystem characters)
{
    switch (characters) {
    case QFontDatabase::Japanese:
        return {QStringLiteral("MS PGothic"),    QStringLiteral("Noto Sans CJK JP"),
                QStringLiteral("Noto Sans JP"),  QStringLiteral("Source Han Sans JP"),
                QStringLiteral("Takao PGothic"), QStringLiteral("TakaoPGothic"),
                QStringLiteral("IPAPGothic"),    QStringLiteral("IPAexGothic"),
                QStringLiteral("VL PGothic"),    QStringLiteral("Droid Sans Fallback")};
    case QFontDatabase::SimplifiedChinese:
        return {QStringLiteral("SimSun"),
                QStringLiteral("Noto Sans CJK SC"),
                QStringLiteral("Noto Sans SC"),
                QStringLiteral("Source Han Sans CN"),
                QStringLiteral("WenQuanYi Micro Hei"),
                QStringLiteral("WenQuanYi Zen Hei"),
                QStringLiteral("AR PL UMing CN"),
                QStringLiteral("Droid Sans Fallback")};
    case QFontDatabase::TraditionalChinese:
        return {QStringLiteral("PMingLiU"),
                QStringLiteral("Noto Sans CJK TC"),
                QStringLiteral("Noto Sans TC"),
                QStringLiteral("Source Han Sans TW"),
                QStringLiteral("WenQuanYi Micro Hei"),
                QStringLiteral("AR PL UMing TW"),
                QStringLiteral("Droid Sans Fallback")};
    case QFontDatabase::Korean:
        return {QStringLiteral("Gulim"),        QStringLiteral("Noto Sans CJK KR"),
                QStringLiteral("Noto Sans KR"), QStringLiteral("Source Han Sans KR"),
                QStringLiteral("NanumGothic"),  QStringLiteral("Baekmuk Gulim"),
                QStringLiteral("UnDotum"),      QStringLiteral("Droid Sans Fallback")};
    default:
        return {QStringLiteral("DejaVu Sans"), QStringLiteral("Noto Sans"),
                QStringLiteral("Noto Sans Hebrew"), QStringLiteral("Noto Sans Arabic"),
                QStringLiteral("Liberation Sans")};
    }
}

/// A family may be made by several; then the maker stands behind it in brackets.
QString familyOf(const QString &name)
{
    return name.left(name.indexOf(QLatin1String(" [")));
}

} // namespace

bool cover(const QFont &font, QFontDatabase::WritingSystem characters)
{
    const auto family = QFontInfo(font).family();
    return QFontDatabase::writingSystems(family).contains(characters);
}

QString nearest(QFontDatabase::WritingSystem characters)
{
    const auto installed = QFontDatabase::families(characters);
    for (const auto &name : usual(characters)) {
        if (installed.contains(name))
            return name;
    }
    const auto readable = std::ranges::find_if_not(
        installed, [](const QString &name) { return QFontDatabase::isFixedPitch(name); });
    if (readable != installed.end())
        return familyOf(*readable);
    return familyOf(installed.value(0));
}

} // namespace Quorlin::InstalledFonts
