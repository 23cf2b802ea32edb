#pragma once

#include "skin/controls/ColorValue.h"
#include "skin/controls/FaceSaver.h"
#include "skin/controls/LabelStates.h"
#include "skin/controls/LabelText.h"

#include <QFont>
#include <QVariantMap>

class QAccessibleEvent;
class QHelpEvent;

namespace Quorlin {

/// A label that draws its text itself, so that it can lie over the pictures of a skin.
///
/// Every property has two accessors of its name; a new value is redrawn, the old one again does
/// nothing. The fourteen properties of this class, in this order, are those that a form keeps.
/// Colours are those of ColorValue, lengths device-independent pixels.
///
/// A new label is enabled, takes mnemonics, is transparent, has no border, and uses the
/// system's colours of buttons.
///
/// A text without room ends in an ellipsis and is told in full as a tool tip. With `BackStyle` 1
/// the label's picture is also saved as "c:\temp\test1.bmp" (see drivePath and FaceSaver).
class KelLabel : public LabelStates
{
    Q_OBJECT
    /// 0 left, 1 right, anything else centre.
    Q_PROPERTY(qint32 Alignment READ Alignment WRITE Alignment)
    /// Of the border: 0 flat, anything else three-dimensional.
    Q_PROPERTY(qint32 Appearance READ Appearance WRITE Appearance)
    /// Takes the size of the text; a text that wraps decides about the height only.
    Q_PROPERTY(bool AutoSize READ AutoSize WRITE AutoSize)
    Q_PROPERTY(quint32 BackColor READ BackColor WRITE BackColor)
    /// 1 opaque, anything else transparent.
    Q_PROPERTY(qint32 BackStyle READ BackStyle WRITE BackStyle)
    Q_PROPERTY(quint32 BorderColor READ BorderColor WRITE BorderColor)
    /// 1 single border, anything else none.
    Q_PROPERTY(qint32 BorderStyle READ BorderStyle WRITE BorderStyle)
    Q_PROPERTY(QString Caption READ Caption WRITE Caption)
    Q_PROPERTY(bool Enabled READ Enabled WRITE Enabled)
    Q_PROPERTY(QFont Font READ Font WRITE Font)
    Q_PROPERTY(quint32 TextColor READ TextColor WRITE TextColor)
    /// "&x" in the caption makes Alt+X the access key; "&&" is an ampersand.
    Q_PROPERTY(bool UseMnemonic READ UseMnemonic WRITE UseMnemonic)
    /// 0 top, 1 bottom, anything else centre.
    Q_PROPERTY(qint32 VerticalAlignment READ VerticalAlignment WRITE VerticalAlignment)
    Q_PROPERTY(bool WordWrap READ WordWrap WRITE WordWrap)

public:
    explicit KelLabel(QWidget *parent = nullptr);

    [[nodiscard]] qint32 Alignment() const { return m_alignment; }
    void Alignment(qint32 value) { store(m_alignment, value); }
    [[nodiscard]] qint32 Appearance() const { return m_appearance; }
    void Appearance(qint32 value) { store(m_appearance, value); }
    [[nodiscard]] bool AutoSize() const { return m_autoSize; }
    void AutoSize(bool value) { store(m_autoSize, value); }
    [[nodiscard]] quint32 BackColor() const { return m_backColor; }
    void BackColor(quint32 value) { store(m_backColor, value); }
    [[nodiscard]] qint32 BackStyle() const { return m_backStyle; }
    void BackStyle(qint32 value) { store(m_backStyle, value); }
    [[nodiscard]] quint32 BorderColor() const { return m_borderColor; }
    void BorderColor(quint32 value) { store(m_borderColor, value); }
    [[nodiscard]] qint32 BorderStyle() const { return m_borderStyle; }
    void BorderStyle(qint32 value) { store(m_borderStyle, value); }
    [[nodiscard]] QString Caption() const { return m_caption; }
    void Caption(const QString &value);
    /// What was asked for, whether or not the window around is enabled.
    [[nodiscard]] bool Enabled() const { return !testAttribute(Qt::WA_ForceDisabled); }
    void Enabled(bool value) { setEnabled(value); }
    [[nodiscard]] QFont Font() const { return font(); }
    void Font(const QFont &value);
    [[nodiscard]] quint32 TextColor() const { return m_textColor; }
    void TextColor(quint32 value) { store(m_textColor, value); }
    [[nodiscard]] bool UseMnemonic() const { return m_useMnemonic; }
    void UseMnemonic(bool value);
    [[nodiscard]] qint32 VerticalAlignment() const { return m_verticalAlignment; }
    void VerticalAlignment(qint32 value) { store(m_verticalAlignment, value); }
    [[nodiscard]] bool WordWrap() const { return m_wordWrap; }
    void WordWrap(bool value) { store(m_wordWrap, value); }

    /// The handle of a window of the label's own, made by the first call.
    [[nodiscard]] WId hWnd() const { return winId(); }
    void Refresh() override;

    /// Takes the properties that a form keeps. One that is missing or of a wrong kind becomes
    /// empty: 0, an empty text, false, the font of the surroundings.
    void readProperties(const QVariantMap &bag);
    /// All properties that a form keeps, by their names.
    [[nodiscard]] QVariantMap writeProperties() const;

    /// The caption without its mnemonics, as it is shown.
    [[nodiscard]] QString shownText() const { return m_text.plain(); }

    [[nodiscard]] QSize sizeHint() const override;
    /// All that it looks like now.
    [[nodiscard]] LabelFace face() const;

protected:
    /// Tells assistive tools.
    virtual void announce(QAccessibleEvent &event);

    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void retext();
    void fitToText();
    [[nodiscard]] bool showToolTip(const QHelpEvent &event);

    qint32 m_alignment = 0;
    qint32 m_appearance = 0;
    bool m_autoSize = false;
    quint32 m_backColor = ColorValue::system(ColorValue::ButtonFace);
    qint32 m_backStyle = 0;
    quint32 m_borderColor = ColorValue::system(ColorValue::WindowFrame);
    qint32 m_borderStyle = 0;
    QString m_caption;
    quint32 m_textColor = ColorValue::system(ColorValue::ButtonText);
    bool m_useMnemonic = true;
    qint32 m_verticalAlignment = 0;
    bool m_wordWrap = false;

    LabelText m_text;
    FaceSaver m_saver;
};

} // namespace Quorlin
