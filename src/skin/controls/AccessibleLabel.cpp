#include "skin/controls/AccessibleLabel.h"

#include "skin/controls/KelLabel.h"

#include <QKeySequence>

namespace Quorlin {

AccessibleLabel::AccessibleLabel(KelLabel &label) : QAccessibleWidget(&label) {}

KelLabel &AccessibleLabel::label() const
{
    return *qobject_cast<KelLabel *>(object());
}

QAccessible::Role AccessibleLabel::role() const
{
    return label().Clickable() ? QAccessible::Button : QAccessible::StaticText;
}

QString AccessibleLabel::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Name && label().accessibleName().isEmpty())
        return label().shownText();
    if (kind == QAccessible::Accelerator)
        return accessKey();
    return QAccessibleWidget::text(kind);
}

QStringList AccessibleLabel::actionNames() const
{
    if (!label().Clickable() || !label().isEnabled())
        return QAccessibleWidget::actionNames();
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
}

void AccessibleLabel::doAction(const QString &actionName)
{
    if (actionName != pressAction())
        QAccessibleWidget::doAction(actionName);
    else if (label().Clickable() && label().isEnabled())
        Q_EMIT label().Click();
}

QStringList AccessibleLabel::keyBindingsForAction(const QString &actionName) const
{
    const auto key = accessKey();
    if (actionName != pressAction() || key.isEmpty() || !label().Clickable())
        return QAccessibleWidget::keyBindingsForAction(actionName);
    return {key};
}

QString AccessibleLabel::accessKey() const
{
    const auto key = label().accessKey();
    if (key.isNull())
        return {};
    return QKeySequence(Qt::ALT | Qt::Key(key.unicode())).toString(QKeySequence::NativeText);
}

} // namespace Quorlin
