#include "i18n/mdli18n.h"

#include "i18n/FontCharset.h"

#include <QMetaProperty>
#include <QObject>

#include <algorithm>
#include <array>

namespace Quorlin::mdli18n {

namespace {

constexpr std::array<quint32, 13> EnglishLocales{1033, 2057, 3081,  4105,  5129,  6153, 7177,
                                                 8201, 9225, 10249, 11273, 12297, 13321};
constexpr char FontProperty[] = "font";

bool isEnglish(quint32 locale)
{
    return std::ranges::find(EnglishLocales, locale) != EnglishLocales.end();
}

void adaptControl(QObject &control, int codePage)
{
    const auto *const meta = control.metaObject();
    const auto property = meta->property(meta->indexOfProperty(FontProperty));
    const auto value = property.read(&control);
    if (!property.isWritable() || value.typeId() != QMetaType::QFont)
        return;
    FormFont font{value.value<QFont>()};
    SetFontCharset(font, codePage);
    // A font that is set no longer follows that of the window, so only a changed one is.
    if (font.font != value.value<QFont>() && !property.write(&control, font.font))
        return;
    control.setProperty(CharsetProperty, font.charset);
}

} // namespace

void AdaptFormFonts(QObject &form, const SystemLocale &system)
{
    const auto locale = system.threadLocale();
    if (isEnglish(locale))
        return;
    const auto codePage = GetAnsiCodePage(locale, system);
    adaptControl(form, codePage);
    const auto controls = form.findChildren<QObject *>();
    for (auto *const control : controls) {
        if (control->isWidgetType())
            adaptControl(*control, codePage);
    }
}

int GetAnsiCodePage(quint32 locale, const SystemLocale &system)
{
    const auto text = system.defaultAnsiCodePage(locale);
    return text.split('\0').constFirst().toInt();
}

void SetFontCharset(FormFont &font, int codePage)
{
    const auto charset = FontCharset::ofCodePage(codePage);
    font.font = charset.applied(font.font);
    font.charset = charset.number();
}

QFont adapted(const QFont &font, const SystemLocale &system)
{
    const auto locale = system.threadLocale();
    if (isEnglish(locale))
        return font;
    FormFont suited{font};
    SetFontCharset(suited, GetAnsiCodePage(locale, system));
    return suited.font;
}

} // namespace Quorlin::mdli18n
