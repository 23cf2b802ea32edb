#pragma once

#include <QLatin1StringView>
#include <QSize>

namespace Quorlin {

class SkinPicture;
class SkinTarget;

/// A window that a skin lays out.
class SkinWindow
{
public:
    virtual ~SkinWindow() = default;

    /// The control of this object name; null when the window has none. It belongs to the
    /// window and lives at least until the next call.
    [[nodiscard]] virtual SkinTarget *find(QLatin1StringView objectName) = 0;

    /// @param pixels outer size, independent of the screen's density; may be 0 or negative.
    /// @return false when the window refuses it.
    [[nodiscard]] virtual bool setSize(const QSize &pixels) = 0;

    /// Shows a picture behind all controls; an empty one takes the picture away.
    /// @return false when the window cannot show pictures.
    [[nodiscard]] virtual bool setPicture(const SkinPicture &picture) = 0;
};

} // namespace Quorlin
