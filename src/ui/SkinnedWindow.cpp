#include "ui/SkinnedWindow.h"

#include <QBitmap>
#include <QPainter>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr int MostOutlineParts = 10000;

} // namespace

SkinnedWindow::SkinnedWindow(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
}

void SkinnedWindow::Picture(const SkinPicture &picture)
{
    m_picture = picture;
    takeOutline();
    update();
}

void SkinnedWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    takeOutline();
}

/// Every point that the picture touches belongs to the window, so that soft edges stay soft.
void SkinnedWindow::takeOutline()
{
    if (m_picture.isEmpty() || size().isEmpty()) {
        clearMask();
        return;
    }
    QImage outline(size(), QImage::Format_Alpha8);
    outline.fill(0);
    QPainter painter(&outline);
    m_picture.draw(painter, rect());
    painter.end();
    for (int row = 0; row < outline.height(); ++row) {
        auto *const line = outline.scanLine(row);
        std::replace_if(
            line, line + outline.width(), [](uchar alpha) { return alpha > 0; }, 0xFF);
    }
    const QRegion region(QBitmap::fromImage(outline.createAlphaMask(Qt::ThresholdDither)));
    // An outline of noise would keep the display busy; such a window is a rectangle.
    if (region.rectCount() > MostOutlineParts)
        clearMask();
    else
        setMask(region);
}

void SkinnedWindow::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    if (m_picture.isEmpty())
        painter.fillRect(rect(), palette().color(QPalette::Window));
    else
        m_picture.draw(painter, rect());
}

} // namespace Quorlin
