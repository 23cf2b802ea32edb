#include "ui/PictureBox.h"

#include <QPainter>

namespace Quorlin {

PictureBox::PictureBox(QWidget *parent) : QWidget(parent) {}

void PictureBox::Picture(const SkinPicture &picture)
{
    m_picture = picture;
    update();
}

void PictureBox::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    m_picture.draw(painter, rect());
}

} // namespace Quorlin
