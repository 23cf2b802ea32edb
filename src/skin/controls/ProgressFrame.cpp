#include "skin/controls/ProgressFrame.h"

#include "skin/controls/DevicePixels.h"

#include <QPainter>

namespace Quorlin {

ProgressFrame::ProgressFrame(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void ProgressFrame::setLook(int width, const QColor &topLeft, const QColor &bottomRight)
{
    if (width == m_width && topLeft == m_topLeft && bottomRight == m_bottomRight)
        return;
    m_width = width;
    m_topLeft = topLeft;
    m_bottomRight = bottomRight;
    update();
}

void ProgressFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    DevicePixels::frame(painter, rect(), m_width, m_topLeft, m_bottomRight);
}

} // namespace Quorlin
