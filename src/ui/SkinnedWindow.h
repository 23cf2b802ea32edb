#pragma once

#include "skin/SkinPicture.h"

#include <QWidget>

#include <optional>

namespace Quorlin {

/// A borderless window that shows a skin's picture. Where the picture is transparent, so is the
/// window; on a screen that cannot do that, the window takes the picture's outline.
///
/// Pulled at its free surface with the left button, the window moves: by the system where that
/// does it, else by itself.
class SkinnedWindow : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(SkinPicture Picture READ Picture WRITE Picture)

public:
    explicit SkinnedWindow(QWidget *parent = nullptr);

    [[nodiscard]] SkinPicture Picture() const { return m_picture; }
    void Picture(const SkinPicture &picture);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void takeOutline();

    SkinPicture m_picture;
    SkinPicture m_outlined;       ///< the picture that the outline was taken of
    QSize m_outlinedSize;         ///< and how large the window was
    std::optional<QPoint> m_grip; ///< where the button went down, in the window
};

} // namespace Quorlin
