#pragma once

#include <QWidget>

namespace Quorlin {

/// What a label answers to: raises the events of its mouse, keyboard and focus.
///
/// Codes are those of InputCodes, places are in the label's own device-independent pixels. A
/// disabled label raises nothing. Whoever handles an event may delete the label, except while
/// the focus moves.
class LabelSurface : public QWidget
{
    Q_OBJECT
    /// Somebody waits for `Click`: the label takes the focus, can be pressed with the space bar,
    /// Enter and its access key, and looks and presents itself as a button.
    Q_PROPERTY(bool Clickable READ Clickable WRITE Clickable)

public:
    explicit LabelSurface(QWidget *parent = nullptr);

    [[nodiscard]] bool Clickable() const { return m_clickable; }
    void Clickable(bool value);

    /// In upper case; null when there is none.
    [[nodiscard]] QChar accessKey() const { return m_accessKey; }

    /// Held down by the mouse or the space bar.
    [[nodiscard]] bool isHeld() const { return m_held; }

    /// What Alt and the access key do: raises `AccessKeyPress`; a clickable label is clicked.
    void pressAccessKey();

Q_SIGNALS:
    void AccessKeyPress(int keyAscii);
    void Click();
    /// Comes in place of the second `MouseDown` of a double click.
    void DblClick();
    void EnterFocus();
    void ExitFocus();
    void KeyDown(int keyCode, int shift);
    void KeyPress(int keyAscii);
    void KeyUp(int keyCode, int shift);
    void MouseDown(int button, int shift, qreal x, qreal y);
    /// `button` tells all buttons that are down.
    void MouseMove(int button, int shift, qreal x, qreal y);
    void MouseUp(int button, int shift, qreal x, qreal y);

protected:
    /// @param key a null character takes the key away.
    void setAccessKey(QChar key);

    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void hold(bool down);
    void releaseSpace();

    bool m_clickable = false;
    bool m_armed = false; ///< the left button or the space bar went down here
    bool m_held = false;
    QChar m_accessKey;
    int m_shortcut = 0;
};

} // namespace Quorlin
