#pragma once

#include "skin/SkinLook.h"

#include <QSize>

class QPainter;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionHeader;

namespace Quorlin {

/// Draws what dialogs are made of in the colours of a look: buttons, fields, headings of columns,
/// tool tips.
class DialogStyle
{
public:
    /// The look must outlive the object.
    explicit DialogStyle(const SkinLook &look) : m_look(look) {}

    /// A push button without its text. The default one has the accent's colour.
    void drawButton(const QStyleOptionButton &option, QPainter &painter) const;
    /// What a push button's text is written with.
    [[nodiscard]] QColor buttonText(const QStyleOptionButton &option) const;
    /// A button that is its icon.
    void drawToolButton(const QStyleOption &option, QPainter &painter) const;
    /// A field for text.
    void drawField(const QStyleOption &option, QPainter &painter) const;
    /// The frame of a list in a dialog.
    void drawListFrame(const QStyleOption &option, QPainter &painter) const;
    void drawHeader(const QStyleOptionHeader &option, QPainter &painter) const;
    void drawTip(const QStyleOption &option, QPainter &painter) const;
    /// Between two parts whose sizes the user can change.
    void drawSplitter(const QStyleOption &option, QPainter &painter) const;
    /// The panel of a choice's entries.
    void drawChoicePanel(const QStyleOption &option, QPainter &painter) const;

    [[nodiscard]] static QSize buttonSize(const QStyleOption &option, const QSize &contents);
    [[nodiscard]] static QSize fieldSize(const QStyleOption &option, const QSize &contents);

private:
    [[nodiscard]] QColor touched(const QStyleOption &option, const QColor &ground) const;
    [[nodiscard]] qreal weight() const { return m_look.isBold() ? 2 : 1; }

    const SkinLook &m_look;
};

} // namespace Quorlin
