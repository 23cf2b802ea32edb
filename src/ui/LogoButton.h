#pragma once

#include <QPushButton>

namespace Quorlin {

/// A picture that opens something when it is pressed: with the mouse, the space bar or Enter. It
/// shows its icon as large as it has room, nothing else.
class LogoButton : public QPushButton
{
    Q_OBJECT

public:
    explicit LogoButton(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace Quorlin
