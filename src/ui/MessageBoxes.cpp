#include "ui/MessageBoxes.h"

#include "ui/ApplicationLook.h"
#include "ui/MessageBox.h"

namespace Quorlin {

void MessageBoxes::show(const QString &text, MessageStyle style, const QString &title)
{
    showWithDetail(text, style, title, {});
}

void MessageBoxes::showWithDetail(const QString &text, MessageStyle style, const QString &title,
                                  const QString &detail)
{
    // A window that is hidden would hide its box as well.
    auto *owner = m_window.data();
    if (owner && !owner->isVisible())
        owner = nullptr;
    // Before a skin is worn there may be a message already.
    ApplicationLook::ensure();
    MessageBox(text, style, title, owner, detail).exec();
}

} // namespace Quorlin
