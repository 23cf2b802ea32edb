#pragma once

#include "skin/controls/ColorValue.h"

#include <QVariantMap>
#include <QWidget>

class QAccessibleEvent;
class QLabel;

namespace Quorlin {

class ProgressFrame;

/// A progress bar made of children: a label as wide as the percentage, the text in two labels,
/// one of them inside the first, and a ProgressFrame. What it shows itself is its ground.
///
/// Every property has two accessors of its name. The first thirteen properties, in this order,
/// are those that a form keeps. Colours are those of ColorValue, lengths device-independent
/// pixels. A disabled bar looks like an enabled one: it is disabled while it runs.
///
/// The text stays readable where the bar passes under it: there it is shown by the second label,
/// inside the bar, in a colour that stands out from the bar or in one that was given for it.
class KelProgressBar : public QWidget
{
    Q_OBJECT
    /// 1 shows the percentage, anything else `Caption`.
    Q_PROPERTY(qint32 Style READ Style WRITE Style)
    /// Of the text: 0 left, 1 right, anything else centre.
    Q_PROPERTY(qint32 Alignment READ Alignment WRITE Alignment)
    /// Of the frame: 0 flat, anything else three-dimensional.
    Q_PROPERTY(qint32 Appearance READ Appearance WRITE Appearance)
    Q_PROPERTY(quint32 BackColor READ BackColor WRITE BackColor)
    /// 1 single frame, the bar two pixels inside it; anything else none.
    Q_PROPERTY(qint32 BorderStyle READ BorderStyle WRITE BorderStyle)
    Q_PROPERTY(QString Caption READ Caption WRITE Caption)
    Q_PROPERTY(bool Enabled READ Enabled WRITE Enabled)
    Q_PROPERTY(QFont Font READ Font WRITE Font)
    Q_PROPERTY(qint32 Max READ Max WRITE Max)
    Q_PROPERTY(qint32 Min READ Min WRITE Min)
    Q_PROPERTY(qint16 Percent READ Percent WRITE Percent)
    Q_PROPERTY(quint32 ScrollColor READ ScrollColor WRITE ScrollColor)
    Q_PROPERTY(qint32 Value READ Value WRITE Value)
    /// ColorValue::Computed: the system's colour of buttons' text where it can be read.
    Q_PROPERTY(quint32 TextColor READ TextColor WRITE TextColor)
    /// Of the text over the bar; ColorValue::Computed: the text's colour where it can be read.
    Q_PROPERTY(quint32 DoneTextColor READ DoneTextColor WRITE DoneTextColor)

public:
    explicit KelProgressBar(QWidget *parent = nullptr);

    [[nodiscard]] qint32 Style() const { return m_style; }
    void Style(qint32 value);
    [[nodiscard]] qint32 Alignment() const { return m_alignment; }
    void Alignment(qint32 value);
    [[nodiscard]] qint32 Appearance() const { return m_appearance; }
    void Appearance(qint32 value);
    [[nodiscard]] quint32 BackColor() const { return m_backColor; }
    void BackColor(quint32 value);
    [[nodiscard]] qint32 BorderStyle() const { return m_borderStyle; }
    void BorderStyle(qint32 value);
    [[nodiscard]] QString Caption() const { return m_caption; }
    void Caption(const QString &value);
    /// What was asked for, whether or not the window around is enabled.
    [[nodiscard]] bool Enabled() const { return !testAttribute(Qt::WA_ForceDisabled); }
    void Enabled(bool value) { setEnabled(value); }
    [[nodiscard]] QFont Font() const { return font(); }
    void Font(const QFont &value);
    [[nodiscard]] qint32 Max() const { return m_max; }
    void Max(qint32 value) { m_max = value; }
    [[nodiscard]] qint32 Min() const { return m_min; }
    void Min(qint32 value) { m_min = value; }
    [[nodiscard]] qint16 Percent() const { return m_percent; }
    /// Shows a percentage, clamped to 0 to 100.
    void Percent(qint16 value);
    [[nodiscard]] quint32 ScrollColor() const { return m_scrollColor; }
    void ScrollColor(quint32 value);
    [[nodiscard]] qint32 Value() const { return m_value; }
    /// Shows where a value lies between `Min` and `Max`, rounded to whole percents, ties to
    /// even. A value outside is ignored; with nothing between the two the percentage stays.
    /// @throws NumberedError 6 when (value - Min) * 100 has no room in 32 bits; nothing has
    /// changed then.
    void Value(qint32 value);
    [[nodiscard]] quint32 TextColor() const { return m_textColor; }
    void TextColor(quint32 value);
    [[nodiscard]] quint32 DoneTextColor() const { return m_doneTextColor; }
    void DoneTextColor(quint32 value);

    /// The handle of a window of the bar's own, made by the first call.
    [[nodiscard]] WId hWnd() const { return winId(); }
    /// Redraws the bar.
    void Refresh();

    /// Takes the properties that a form keeps; what is missing or of a wrong kind becomes what
    /// it is in a new bar, and `Value` becomes `Min`. So does a `Value` outside; it leaves the
    /// stored percentage as it is.
    /// @throws NumberedError as `Value` does; all other properties are set then.
    void readProperties(const QVariantMap &bag);
    /// The properties that differ from those of a new bar, and `Value` when it is not `Min`.
    [[nodiscard]] QVariantMap writeProperties() const;

    /// "42 %"
    [[nodiscard]] QString percentText() const;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    /// Tells assistive tools.
    virtual void announce(QAccessibleEvent &event);

    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QRect innerRect() const;
    [[nodiscard]] bool hasFrame() const { return m_borderStyle == 1; }
    [[nodiscard]] int lineWidth() const { return m_appearance == 0 ? 1 : 2; }
    void showText();
    void layOutBar();
    void layOutText();
    void applyColors();

    ProgressFrame *m_frame;
    QLabel *m_text;
    QLabel *m_bar;
    QLabel *m_barText;

    qint32 m_style = 1;
    qint32 m_alignment = 2;
    qint32 m_appearance = 0;
    quint32 m_backColor = ColorValue::system(ColorValue::ButtonFace);
    qint32 m_borderStyle = 0;
    QString m_caption;
    qint32 m_max = 100;
    qint32 m_min = 0;
    qint16 m_percent = 0;
    quint32 m_scrollColor = 0xFF8080;
    qint32 m_value = 0;
    quint32 m_textColor = ColorValue::Computed;
    quint32 m_doneTextColor = ColorValue::Computed;
};

} // namespace Quorlin
