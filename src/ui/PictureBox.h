#pragma once

#include "skin/SkinPicture.h"

#include <QWidget>

namespace Quorlin {

/// A surface that shows a picture, stretched over it. Controls may lie on it.
class PictureBox : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(SkinPicture Picture READ Picture WRITE Picture)

public:
    explicit PictureBox(QWidget *parent = nullptr);

    [[nodiscard]] SkinPicture Picture() const { return m_picture; }
    void Picture(const SkinPicture &picture);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SkinPicture m_picture;
};

} // namespace Quorlin
