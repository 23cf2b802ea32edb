#include "app/SystemServices.h"

#include "app/SWTaskbar.h"
#include "app/mdlMultipleInstanceDialog.h"

namespace Quorlin {

void SystemServices::pHook(QWidget &window)
{
    mdlMultipleInstanceDialog::pHook(&window);
}

void SystemServices::pUnhook()
{
    mdlMultipleInstanceDialog::pUnhook();
}

void SystemServices::CreateTaskbarProxy(QWidget &window, const QString &caption)
{
    SWTaskbar::CreateTaskbarProxy(&window, caption);
}

void SystemServices::DestroyTaskbarProxy(QWidget &window)
{
    SWTaskbar::DestroyTaskbarProxy(&window);
}

} // namespace Quorlin
