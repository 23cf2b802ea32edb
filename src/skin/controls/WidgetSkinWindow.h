#pragma once

#include "skin/SkinTarget.h"
#include "skin/SkinWindow.h"

#include <QPointer>
#include <QWidget>

namespace Quorlin {

/// A window of widgets that a skin lays out. Controls are found by their object names; the
/// window and a control take pictures when they declare a property "Picture" that holds a
/// SkinPicture. When the window is gone, nothing is found and everything refused.
class WidgetSkinWindow : public SkinWindow
{
public:
    /// @param window not owned.
    explicit WidgetSkinWindow(QWidget &window);

    [[nodiscard]] SkinTarget *find(QLatin1StringView objectName) override;
    /// The window keeps this size; what is not positive counts as 1, what is above 4096 as that.
    [[nodiscard]] bool setSize(const QSize &pixels) override;
    [[nodiscard]] bool setPicture(const SkinPicture &picture) override;

private:
    class Target : public SkinTarget
    {
    public:
        void setControl(QWidget *control) { m_control = control; }
        [[nodiscard]] bool set(QLatin1StringView property, const QVariant &value) override;

    private:
        QPointer<QWidget> m_control;
    };

    QPointer<QWidget> m_window;
    Target m_target;
};

} // namespace Quorlin
