#include "ui/FormLook.h"

#include "skin/SkinLook.h"
#include "skin/controls/ColorValue.h"
#include "skin/controls/KelLabel.h"
#include "ui/SkinStyle.h"

#include <QWidget>

namespace Quorlin::FormLook {

namespace {

/// The style of a window, owned by it and shared by all controls on it.
SkinStyle &styleOf(QWidget &window)
{
    auto *style = window.findChild<SkinStyle *>(QString(), Qt::FindDirectChildrenOnly);
    if (!style) {
        style = new SkinStyle;
        style->setParent(&window);
    }
    return *style;
}

} // namespace

QFont font(const SkinLook &look, int pixels, bool isHeading)
{
    QFont font;
    if (!look.fontFamily().isEmpty())
        font.setFamily(look.fontFamily());
    font.setPixelSize(pixels);
    font.setBold(look.isBold());
    if (isHeading && !look.isBold())
        font.setWeight(QFont::DemiBold);
    return font;
}

void apply(const SkinLook &look, QWidget &window)
{
    auto &style = styleOf(window);
    style.setLook(look);
    window.setPalette(SkinStyle::paletteFor(look));
    window.setFont(font(look, look.fontSize()));
    for (auto *const control : window.findChildren<QWidget *>()) {
        control->setStyle(&style);
        control->update();
    }
    for (auto *const label : window.findChildren<KelLabel *>()) {
        label->TextColor(ColorValue::stored(look.colour(LookColour::Text)));
        label->DisabledTextColor(ColorValue::stored(look.colour(LookColour::DisabledText)));
        label->Font(window.font());
        label->CornerRadius(look.corners());
    }
}

} // namespace Quorlin::FormLook
