#pragma once

#include <QAccessibleWidget>

namespace Quorlin {

class SkinnedWindow;

/// What assistive tools learn of a window: that it is one.
class AccessibleWindow : public QAccessibleWidget
{
public:
    explicit AccessibleWindow(SkinnedWindow &window);

    /// Lets assistive tools see all skinned windows so; the toolkit ignores a second call.
    static void install();
};

} // namespace Quorlin
