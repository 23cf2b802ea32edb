#pragma once

#include "skin/SkinLook.h"
#include "ui/ControlStyle.h"
#include "ui/DialogStyle.h"
#include "ui/MenuStyle.h"

#include <QProxyStyle>

class QStyleOptionButton;
class QStyleOptionComboBox;

namespace Quorlin {

/// Draws the toolkit's own controls (lists, check boxes, choices, menus, dialogs) in the colours of
/// a skin, from lines and areas, so that they are sharp at every scale.
class SkinStyle : public QProxyStyle
{
    Q_OBJECT

public:
    /// What of a choice's width is not for its text, in pixels.
    static constexpr int ChoiceFrame = ControlStyle::ChoiceFrame;

    SkinStyle();

    /// The colours from now on. Whoever uses the style must repaint.
    void setLook(const SkinLook &look) { m_look = look; }

    /// The palette that goes with a look: for whatever this style leaves to its base.
    [[nodiscard]] static QPalette paletteFor(const SkinLook &look);

    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption *option,
                                       const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                       SubControl part, const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &contents,
                                         const QWidget *widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *data) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap which, const QStyleOption *option,
                                     const QWidget *widget) const override;

private:
    [[nodiscard]] bool drawTypedPrimitive(PrimitiveElement element, const QStyleOption &option,
                                          QPainter &painter) const;
    [[nodiscard]] bool drawTypedControl(ControlElement element, const QStyleOption &option,
                                        QPainter &painter, const QWidget *widget) const;
    void drawFrame(const QStyleOption &option, QPainter &painter, const QWidget *widget) const;
    void drawFocusRing(const QStyleOption &option, QPainter &painter, const QWidget *widget) const;
    void drawButtonText(const QStyleOptionButton &option, QPainter &painter,
                        const QWidget *widget) const;
    void drawChoiceText(const QStyleOptionComboBox &option, QPainter &painter,
                        const QWidget *widget) const;

    SkinLook m_look;
    ControlStyle m_controls{m_look};
    MenuStyle m_menus{m_look};
    DialogStyle m_dialogs{m_look};
};

} // namespace Quorlin
