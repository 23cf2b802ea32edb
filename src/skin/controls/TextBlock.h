#pragma once

#include "skin/controls/LabelText.h"

#include <QColor>
#include <QFont>
#include <QPoint>
#include <QSize>
#include <QTextLayout>

class QPainter;

namespace Quorlin {

/// How the lines of a text stand to each other.
enum class LineAlignment { Left, Right, Center };

/// A text laid out into lines; measures and draws it. Lengths are device-independent pixels.
class TextBlock
{
public:
    /// No limit to the length of a line.
    static constexpr int Unlimited = -1;

    /// @param width room for a line. Longer lines wrap, or end in an ellipsis.
    TextBlock(const LabelText &text, const QFont &font, int width, bool wrap,
              LineAlignment alignment);

    [[nodiscard]] QSize size() const { return m_size; }
    /// True when an ellipsis stands for the rest of a line.
    [[nodiscard]] bool isElided() const { return m_elided; }

    /// Where the access key stands in the text laid out; -1 when it has none or is cut off.
    [[nodiscard]] qsizetype mark() const { return m_mark; }

    /// Draws it with its upper left corner at a position.
    void draw(QPainter &painter, QPoint position, const QColor &color) const;

private:
    [[nodiscard]] QString shortened(const QString &text, const QFont &font, int width);
    void breakLines(int width, bool wrap);
    void placeLines(LineAlignment alignment);

    qsizetype m_mark;
    bool m_elided = false;
    QSize m_size;
    QTextLayout m_layout;
};

} // namespace Quorlin
