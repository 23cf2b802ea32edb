#pragma once

#include <QLatin1StringView>
#include <QVariant>

namespace Quorlin {

/// A control that a skin lays out. Its properties are "visible" (bool), "width", "height",
/// "Left", "Top" (pixels, in the control's parent) and, for some, "Picture" (SkinPicture).
class SkinTarget
{
public:
    virtual ~SkinTarget() = default;

    /// @return false when the control has no such property or refuses the value.
    [[nodiscard]] virtual bool set(QLatin1StringView property, const QVariant &value) = 0;
};

} // namespace Quorlin
