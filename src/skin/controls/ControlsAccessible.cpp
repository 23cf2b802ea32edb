#include "skin/controls/ControlsAccessible.h"

#include "skin/controls/AccessibleLabel.h"
#include "skin/controls/AccessibleProgressBar.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"

#include <QAccessible>

namespace Quorlin::ControlsAccessible {

namespace {

QAccessibleInterface *make(const QString &, QObject *object)
{
    if (auto *label = qobject_cast<KelLabel *>(object))
        return new AccessibleLabel(*label);
    if (auto *bar = qobject_cast<KelProgressBar *>(object))
        return new AccessibleProgressBar(*bar);
    return nullptr;
}

} // namespace

void install()
{
    QAccessible::installFactory(make);
}

} // namespace Quorlin::ControlsAccessible
