#include "skin/controls/KelProgressBar.h"

#include "skin/controls/ControlsAccessible.h"
#include "skin/controls/LabelText.h"
#include "skin/controls/ProgressFrame.h"
#include "skin/controls/StoredProperties.h"
#include "winsupport/NumberedError.h"

#include <QAccessible>
#include <QEvent>
#include <QLabel>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quorlin {

namespace {

constexpr int StoredCount = 13;
constexpr qint16 FullPercent = 100;
constexpr int UsualWidth = 100;

QLabel *makeLabel(QWidget *parent, const char *name)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}

Qt::Alignment labelAlignment(qint32 alignment)
{
    const auto across = alignment == 0   ? Qt::AlignLeft
                        : alignment == 1 ? Qt::AlignRight
                                         : Qt::AlignHCenter;
    return across | Qt::AlignAbsolute | Qt::AlignVCenter;
}

void setColor(QWidget &widget, QPalette::ColorRole role, const QColor &color)
{
    auto palette = widget.palette();
    palette.setColor(role, color);
    if (palette != widget.palette() || !widget.testAttribute(Qt::WA_SetPalette))
        widget.setPalette(palette);
}

QStringList storedNames()
{
    return StoredProperties::names(KelProgressBar::staticMetaObject, StoredCount);
}

/// What a new bar keeps, without the font, which is that of the surroundings.
QVariantMap defaultProperties()
{
    const KelProgressBar bar;
    auto bag = StoredProperties::write(bar, storedNames());
    bag.remove(QStringLiteral("Font"));
    return bag;
}

/// (value - min) * 100 as 32 bits have room for it.
qint32 hundredfold(qint32 value, qint32 min)
{
    constexpr quint32 Overflow = 6;
    const auto product = (qint64(value) - min) * FullPercent;
    if (product > std::numeric_limits<qint32>::max())
        throw NumberedError(Overflow, QStringLiteral("KelProgressBar"), QStringLiteral("Overflow"));
    return qint32(product);
}

qint16 roundedToEven(double value)
{
    const auto below = std::floor(value);
    const auto rest = value - below;
    const auto isUp = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0.0);
    return qint16(isUp ? below + 1 : below);
}

} // namespace

KelProgressBar::KelProgressBar(QWidget *parent)
    : QWidget(parent), m_frame(new ProgressFrame(this)), m_text(makeLabel(this, "textLabel")),
      m_bar(makeLabel(this, "barLabel")), m_barText(makeLabel(m_bar, "barTextLabel"))
{
    ControlsAccessible::install();
    setAutoFillBackground(true);
    m_bar->setAutoFillBackground(true);
    applyColors();
    showText();
    layOutBar();
}

void KelProgressBar::Style(qint32 value)
{
    if (m_style == value)
        return;
    m_style = value;
    showText();
}

void KelProgressBar::Alignment(qint32 value)
{
    m_alignment = value;
    showText();
}

void KelProgressBar::Appearance(qint32 value)
{
    m_appearance = value;
    applyColors();
    layOutBar();
    layOutText();
}

void KelProgressBar::BackColor(quint32 value)
{
    m_backColor = value;
    applyColors();
}

void KelProgressBar::BorderStyle(qint32 value)
{
    m_borderStyle = value;
    layOutBar();
    layOutText();
}

void KelProgressBar::Caption(const QString &value)
{
    if (m_caption == value)
        return;
    m_caption = value;
    showText();
}

void KelProgressBar::Font(const QFont &value)
{
    if (value == font() && testAttribute(Qt::WA_SetFont))
        return;
    setFont(value);
}

void KelProgressBar::Percent(qint16 value)
{
    const auto percent = std::clamp<qint16>(value, 0, FullPercent);
    if (percent == m_percent)
        return;
    m_percent = percent;
    layOutBar();
    if (m_style == 1)
        showText();
    QAccessibleValueChangeEvent change(this, int(percent));
    announce(change);
}

void KelProgressBar::announce(QAccessibleEvent &event)
{
    QAccessible::updateAccessibility(&event);
}

void KelProgressBar::ScrollColor(quint32 value)
{
    m_scrollColor = value;
    applyColors();
}

void KelProgressBar::Value(qint32 value)
{
    if (value < m_min || value > m_max)
        return;
    const auto product = hundredfold(value, m_min);
    m_value = value;
    if (m_max != m_min)
        Percent(roundedToEven(product / (double(m_max) - m_min)));
}

void KelProgressBar::TextColor(quint32 value)
{
    m_textColor = value;
    applyColors();
}

void KelProgressBar::DoneTextColor(quint32 value)
{
    m_doneTextColor = value;
    applyColors();
}

void KelProgressBar::Refresh()
{
    layOutBar();
    showText();
    update();
}

void KelProgressBar::readProperties(const QVariantMap &bag)
{
    const auto value = QStringLiteral("Value");
    auto names = storedNames();
    names.removeOne(value);
    StoredProperties::read(*this, names, bag, defaultProperties());
    m_value = m_min;
    auto isNumber = false;
    const auto stored = bag.value(value).toInt(&isNumber);
    Value(isNumber ? stored : m_min);
}

QVariantMap KelProgressBar::writeProperties() const
{
    auto bag = StoredProperties::write(*this, storedNames());
    auto defaults = defaultProperties();
    defaults.insert(QStringLiteral("Value"), m_min);
    if (!testAttribute(Qt::WA_SetFont))
        defaults.insert(QStringLiteral("Font"), bag.value(QStringLiteral("Font")));
    bag.removeIf([&defaults](const QVariantMap::iterator &entry) {
        return defaults.value(entry.key()) == entry.value();
    });
    return bag;
}

QString KelProgressBar::percentText() const
{
    return QString::number(m_percent) + QStringLiteral(" %");
}

QSize KelProgressBar::sizeHint() const
{
    const auto frame = size() - innerRect().size();
    const auto text = m_text->sizeHint();
    return frame + QSize(std::max(text.width(), UsualWidth), text.height());
}

void KelProgressBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        layOutText();
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void KelProgressBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layOutBar();
    layOutText();
}

QRect KelProgressBar::innerRect() const
{
    constexpr int Gap = 2;
    const auto inset = hasFrame() ? lineWidth() + Gap : 0;
    return rect().adjusted(inset, inset, -inset, -inset);
}

void KelProgressBar::layOutBar()
{
    const auto inner = innerRect();
    const auto width = int(std::lround(inner.width() * double(m_percent) / FullPercent));
    m_bar->setGeometry(inner.x(), inner.y(), std::max(width, 0), inner.height());
    m_bar->setVisible(m_percent != 0);
    m_frame->setGeometry(rect());
    m_frame->setVisible(hasFrame());
}

void KelProgressBar::showText()
{
    const auto text = m_style == 1 ? percentText() : LabelText(m_caption, false).plain();
    for (auto *label : {m_text, m_barText}) {
        label->setVisible(!text.isEmpty());
        label->setAlignment(labelAlignment(m_alignment));
        label->setText(text);
    }
    layOutText();
}

void KelProgressBar::layOutText()
{
    const auto inner = innerRect();
    const auto textHeight = m_text->sizeHint().height();
    const QRect place(inner.x(), (height() - textHeight) / 2, inner.width(), textHeight);
    m_text->setGeometry(place);
    m_barText->setGeometry(place.translated(-inner.topLeft()));
}

void KelProgressBar::applyColors()
{
    const auto back = ColorValue::resolved(m_backColor);
    const auto scroll = ColorValue::resolved(m_scrollColor);
    const auto buttonText = ColorValue::system(ColorValue::ButtonText);
    const auto isComputed = m_textColor == ColorValue::Computed;
    const auto wanted = ColorValue::resolved(isComputed ? buttonText : m_textColor);
    const auto text = isComputed ? ColorValue::readableOn(back, wanted) : wanted;
    const auto doneText = m_doneTextColor == ColorValue::Computed
                              ? ColorValue::readableOn(scroll, wanted)
                              : ColorValue::resolved(m_doneTextColor);
    const auto line = ColorValue::blended(ColorValue::readableOn(back, Qt::black), back, 0.5);

    setColor(*this, QPalette::Window, back);
    m_frame->setLook(lineWidth(), line,
                     m_appearance == 0 ? line : ColorValue::blended(line, back, 0.4));
    setColor(*m_text, QPalette::WindowText, text);
    setColor(*m_bar, QPalette::Window, scroll);
    setColor(*m_barText, QPalette::WindowText, doneText);
}

} // namespace Quorlin
