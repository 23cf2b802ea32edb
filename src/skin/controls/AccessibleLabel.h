#pragma once

#include <QAccessibleWidget>

namespace Quorlin {

class KelLabel;

/// A label as assistive tools see it: a text, or a button when it can be clicked.
class AccessibleLabel : public QAccessibleWidget
{
public:
    explicit AccessibleLabel(KelLabel &label);

    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString &actionName) const override;

private:
    [[nodiscard]] KelLabel &label() const;
    [[nodiscard]] QString accessKey() const;
};

} // namespace Quorlin
