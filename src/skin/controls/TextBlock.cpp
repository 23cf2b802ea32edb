#include "skin/controls/TextBlock.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace Quorlin {

namespace {

constexpr qreal Endless = 1 << 22;

int wholePixels(qreal length)
{
    return int(std::ceil(length));
}

int lineOffset(LineAlignment alignment, int room)
{
    switch (alignment) {
    case LineAlignment::Left:
        return 0;
    case LineAlignment::Right:
        return room;
    case LineAlignment::Center:
        break;
    }
    return room / 2;
}

} // namespace

TextBlock::TextBlock(const LabelText &text, const QFont &font, int width, bool wrap,
                     LineAlignment alignment)
    : m_mark(text.mark())
{
    const auto isLimited = width != Unlimited;
    m_layout.setFont(font);
    m_layout.setText(isLimited && !wrap ? shortened(text.shown(), font, width) : text.shown());
    breakLines(width, isLimited && wrap);
    placeLines(alignment);
}

/// Ends every line that has no room in an ellipsis and keeps the access key's place.
QString TextBlock::shortened(const QString &text, const QFont &font, int width)
{
    const QFontMetricsF metrics(font);
    QStringList lines = text.split(QChar::LineSeparator);
    qsizetype begin = 0;
    qsizetype newBegin = 0;
    qsizetype newMark = -1;
    for (auto &line : lines) {
        const auto length = line.size();
        auto kept = length;
        if (wholePixels(metrics.horizontalAdvance(line)) > width) {
            line = metrics.elidedText(line, Qt::ElideRight, std::max(width, 0));
            kept = std::max<qsizetype>(line.size() - 1, 0);
            m_elided = true;
        }
        if (m_mark >= begin && m_mark < begin + kept)
            newMark = newBegin + m_mark - begin;
        begin += length + 1;
        newBegin += line.size() + 1;
    }
    m_mark = newMark;
    return lines.join(QChar::LineSeparator);
}

void TextBlock::breakLines(int width, bool wrap)
{
    // The text's own direction must not move it inside the endless line.
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(wrap ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::ManualWrap);
    m_layout.setTextOption(option);
    if (m_mark >= 0) {
        QTextLayout::FormatRange range{int(m_mark), 1, {}};
        range.format.setFontUnderline(true);
        m_layout.setFormats({range});
    }
    m_layout.beginLayout();
    for (auto line = m_layout.createLine(); line.isValid(); line = m_layout.createLine())
        line.setLineWidth(wrap ? std::max(width, 1) : Endless);
    m_layout.endLayout();
}

void TextBlock::placeLines(LineAlignment alignment)
{
    if (m_layout.text().isEmpty()) {
        m_size = {0, wholePixels(QFontMetricsF(m_layout.font()).height())};
        return;
    }
    int width = 0;
    for (int i = 0; i < m_layout.lineCount(); ++i)
        width = std::max(width, wholePixels(m_layout.lineAt(i).naturalTextWidth()));
    int top = 0;
    for (int i = 0; i < m_layout.lineCount(); ++i) {
        auto line = m_layout.lineAt(i);
        const auto room = width - wholePixels(line.naturalTextWidth());
        line.setPosition(QPointF(lineOffset(alignment, room), top));
        top += wholePixels(line.height());
    }
    m_size = {width, top};
}

void TextBlock::draw(QPainter &painter, QPoint position, const QColor &color) const
{
    painter.setPen(color);
    m_layout.draw(&painter, position);
}

} // namespace Quorlin
