#pragma once

#include <QAccessibleWidget>

namespace Quorlin {

class KelProgressBar;

/// A progress bar as assistive tools see it: one thing whose value is the percentage shown.
class AccessibleProgressBar : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessibleProgressBar(KelProgressBar &bar);

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] void *interface_cast(QAccessible::InterfaceType type) override;

    /// The labels inside are how the bar is drawn, nothing of their own.
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    [[nodiscard]] QVariant currentValue() const override;
    [[nodiscard]] QVariant minimumValue() const override { return 0; }
    [[nodiscard]] QVariant maximumValue() const override { return 100; }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }
    /// The progress is only told, never set.
    void setCurrentValue(const QVariant &) override {}

private:
    [[nodiscard]] KelProgressBar &bar() const;
};

} // namespace Quorlin
