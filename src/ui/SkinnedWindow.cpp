#include "ui/SkinnedWindow.h"

#include "ui/AccessibleWindow.h"

#include "ui/Compositing.h"

#include <QBitmap>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace Quorlin {

namespace {

constexpr int MostOutlineParts = 10000;

constexpr uchar LeastAlpha = 1;
constexpr uchar HalfAlpha = 128;

/// Every point of a picture of alpha values that is at least so opaque.
QBitmap touchedPoints(const QImage &alpha, uchar least)
{
    const auto lineBytes = (alpha.width() + 7) / 8;
    QByteArray bits(qsizetype(lineBytes) * alpha.height(), '\0');
    for (int row = 0; row < alpha.height(); ++row) {
        const auto *const line = alpha.constScanLine(row);
        auto *const to = bits.data() + qsizetype(row) * lineBytes;
        for (int column = 0; column < alpha.width(); ++column) {
            if (line[column] >= least)
                to[column / 8] = char(to[column / 8] | 1 << column % 8);
        }
    }
    return QBitmap::fromData(alpha.size(), reinterpret_cast<const uchar *>(bits.constData()),
                             QImage::Format_MonoLSB);
}

} // namespace

SkinnedWindow::SkinnedWindow(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    AccessibleWindow::install();
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

void SkinnedWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
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

/// Every point that the picture touches belongs to the window, so that soft edges stay soft. What
/// nobody sees has no outline yet: a window is laid out in several steps before it is shown.
void SkinnedWindow::takeOutline()
{
    if (!isVisible() || (m_picture == m_outlined && size() == m_outlinedSize))
        return;
    m_outlined = m_picture;
    m_outlinedSize = size();
    if (m_picture.isEmpty() || size().isEmpty()) {
        clearMask();
        return;
    }
    QImage outline(size(), QImage::Format_Alpha8);
    outline.fill(0);
    QPainter painter(&outline);
    m_picture.draw(painter, rect());
    painter.end();
    const QRegion region(touchedPoints(outline, Compositing::isActive() ? LeastAlpha : HalfAlpha));
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
