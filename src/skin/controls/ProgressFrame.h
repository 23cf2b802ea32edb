#pragma once

#include <QColor>
#include <QWidget>

namespace Quorlin {

/// The frame of a progress bar: all around its place and nothing inside.
class ProgressFrame : public QWidget
{
    Q_OBJECT

public:
    explicit ProgressFrame(QWidget *parent);

    /// @param width in device-independent pixels.
    void setLook(int width, const QColor &topLeft, const QColor &bottomRight);
    [[nodiscard]] int lineWidth() const { return m_width; }
    [[nodiscard]] QColor topLeft() const { return m_topLeft; }
    [[nodiscard]] QColor bottomRight() const { return m_bottomRight; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_width = 1;
    QColor m_topLeft;
    QColor m_bottomRight;
};

} // namespace Quorlin
