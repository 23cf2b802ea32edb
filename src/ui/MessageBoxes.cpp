#include "ui/MessageBoxes.h"

#include "ui/FormLook.h"

#include <QMessageBox>

namespace Quorlin {

namespace {

QMessageBox::Icon iconOf(MessageStyle style)
{
    switch (style) {
    case MessageStyle::Critical:
        return QMessageBox::Critical;
    case MessageStyle::Information:
        return QMessageBox::Information;
    case MessageStyle::Plain:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

void MessageBoxes::show(const QString &text, MessageStyle style, const QString &title)
{
    // A window that is hidden would hide its box as well.
    auto *owner = m_window.data();
    if (owner && !owner->isVisible())
        owner = nullptr;
    QMessageBox box(iconOf(style), title, text, QMessageBox::Ok, owner);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (m_look)
        FormLook::apply(*m_look, box);
    box.exec();
}

} // namespace Quorlin
