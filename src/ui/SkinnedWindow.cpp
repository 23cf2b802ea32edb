#include "ui/SkinnedWindow.h"

#include <QBitmap>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

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

/// The outline that a window had before it came to the screen does not always come with it; one
/// that is set again without a change stays away as well.
void SkinnedWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    clearMask();
    takeOutline();
}

void SkinnedWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_grip = event->position().toPoint();
    else
        QWidget::mousePressEvent(event);
}

void SkinnedWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_grip || !event->buttons().testFlag(Qt::LeftButton)) {
        QWidget::mouseMoveEvent(event);
        return;
    }
    // The system keeps the mouse to itself until the button is up.
    if (windowHandle() && windowHandle()->startSystemMove())
        m_grip.reset();
    else
        move(event->globalPosition().toPoint() - *m_grip);
}

void SkinnedWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_grip.reset();
    else
        QWidget::mouseReleaseEvent(event);
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
