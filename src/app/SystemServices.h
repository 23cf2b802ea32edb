#pragma once

#include "ui/WindowServices.h"

namespace Quorlin {

/// The hand-off between instances and the taskbar, as the main window asks for them.
class SystemServices : public WindowServices
{
public:
    void pHook(QWidget &window) override;
    void pUnhook() override;
    void CreateTaskbarProxy(QWidget &window, const QString &caption) override;
    void DestroyTaskbarProxy(QWidget &window) override;
};

} // namespace Quorlin
