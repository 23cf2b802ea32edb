#include "ui/FormLook.h"

#include "i18n/mdli18n.h"
#include "skin/SkinLook.h"
#include "skin/controls/ColorValue.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/LabelFace.h"
#include "ui/SkinStyle.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QWidget>

#include <algorithm>

namespace Quorlin::FormLook {

namespace {

constexpr double LeastContrast = 3;

/// The style of a window, owned by it and shared by all controls on it; the program's where that
/// is one.
SkinStyle &styleOf(QWidget &window)
{
    if (auto *const common = qobject_cast<SkinStyle *>(QApplication::style()))
        return *common;
    auto *style = window.findChild<SkinStyle *>(QString(), Qt::FindDirectChildrenOnly);
    if (!style) {
        style = new SkinStyle;
        style->setParent(&window);
    }
    return *style;
}

bool fits(const KelLabel &label)
{
    const auto face = label.face();
    const auto block = face.textBlock();
    const auto room = face.inside().size();
    return !block.isElided() && block.size().boundedTo(room) == block.size();
}

} // namespace

SkinPicture design(const QString &name)
{
    const auto path = QStringLiteral(":/quorlin/%1%2.png");
    QFile dense(path.arg(name, QStringLiteral("@2x")));
    const auto bytes = dense.open(QIODevice::ReadOnly) ? dense.readAll() : QByteArray();
    return SkinPicture::ofPoints(QImage(path.arg(name, QString())), bytes);
}

void fitText(KelLabel &label)
{
    const auto line = label.fontMetrics().height();
    if (label.face().inside().height() < 2 * line &&
        label.Caption().contains(QLatin1String("\r\n")))
        label.Caption(label.Caption().replace(QLatin1String("\r\n"), QLatin1String("  ")));
    auto font = label.Font();
    while (!fits(label) && font.pixelSize() > LeastFont) {
        font.setPixelSize(font.pixelSize() - 1);
        label.Font(font);
    }
}

void fitChoice(QComboBox &choice)
{
    const auto widest = [&choice] {
        auto width = 0;
        for (int entry = 0; entry < choice.count(); ++entry) {
            const auto text = choice.itemText(entry);
            width = std::max(width, choice.fontMetrics().horizontalAdvance(text));
        }
        return width;
    };
    auto font = choice.font();
    while (widest() > choice.width() - SkinStyle::ChoiceFrame && font.pixelSize() > LeastFont) {
        font.setPixelSize(font.pixelSize() - 1);
        choice.setFont(font);
    }
}

QFont font(const SkinLook &look, int pixels, bool isHeading)
{
    QFont font;
    if (!look.fontFamily().isEmpty())
        font.setFamily(look.fontFamily());
    font.setPixelSize(pixels);
    font.setBold(look.isBold());
    if (isHeading && !look.isBold())
        font.setWeight(QFont::DemiBold);
    return mdli18n::adapted(font);
}

void apply(const SkinLook &look, QWidget &window)
{
    auto &style = styleOf(window);
    style.setLook(look);
    window.setPalette(SkinStyle::paletteFor(look));
    window.setFont(font(look, look.fontSize()));
    for (auto *const control : window.findChildren<QWidget *>()) {
        if (control->style() != &style)
            control->setStyle(&style);
        control->setFont({});
        control->update();
    }
    for (auto *const label : window.findChildren<KelLabel *>()) {
        label->TextColor(ColorValue::stored(look.colour(LookColour::Text)));
        label->DisabledTextColor(ColorValue::stored(look.colour(LookColour::DisabledText)));
        label->Font(window.font());
        label->CornerRadius(look.corners());
        label->FocusColor(ColorValue::stored(look.colour(LookColour::Focus)));
        label->VeilColor(ColorValue::stored(look.colour(LookColour::Veil)));
    }
}

void applyTitle(const SkinLook &look, KelLabel &label)
{
    const auto text = look.colour(LookColour::Title);
    auto veil = look.colour(LookColour::Veil);
    // A title bar may be dark in a light window.
    if (ColorValue::contrast(text, veil) < LeastContrast)
        veil = ColorValue::readableOn(text, veil);
    label.TextColor(ColorValue::stored(text));
    label.FocusColor(ColorValue::Computed);
    label.VeilColor(ColorValue::stored(veil));
    label.DisabledTextColor(ColorValue::Computed);
}

} // namespace Quorlin::FormLook
