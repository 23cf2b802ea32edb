#include "skin/controls/AccessibleProgressBar.h"

#include "skin/controls/KelProgressBar.h"

namespace Quorlin {

AccessibleProgressBar::AccessibleProgressBar(KelProgressBar &bar)
    : QAccessibleWidget(&bar, QAccessible::ProgressBar)
{
}

KelProgressBar &AccessibleProgressBar::bar() const
{
    return *qobject_cast<KelProgressBar *>(object());
}

QString AccessibleProgressBar::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value)
        return bar().percentText();
    if (kind == QAccessible::Name && bar().accessibleName().isEmpty())
        return bar().Caption();
    return QAccessibleWidget::text(kind);
}

void *AccessibleProgressBar::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QVariant AccessibleProgressBar::currentValue() const
{
    return int(bar().Percent());
}

} // namespace Quorlin
