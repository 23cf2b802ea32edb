#pragma once

#include <QString>

class QWidget;

namespace Quorlin {

/// What the main window asks of the program around it.
class WindowServices
{
public:
    virtual ~WindowServices() = default;

    /// Makes a window the one that other starts hand their documents to, unless another one is.
    /// They arrive through its member "ReceiveMessage".
    virtual void pHook(QWidget &window) = 0;
    virtual void pUnhook() = 0;

    /// Gives a borderless window its entry in the taskbar.
    virtual void CreateTaskbarProxy(QWidget &window, const QString &caption) = 0;
    virtual void DestroyTaskbarProxy(QWidget &window) = 0;
};

} // namespace Quorlin
