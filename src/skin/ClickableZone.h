#pragma once

#include <QString>

#include <array>

namespace Quorlin {

class IniFile;
class SkinKeys;
enum class SkinLayout : std::size_t;

/// A rectangle of a window that reacts to the mouse, in both layouts. It keeps its corners, in
/// pixels of the window.
class ClickableZone
{
public:
    /// Sets the corners of one layout. Throws NumberedError when one of them lies outside of the
    /// 16-bit range; nothing has changed then.
    void SetDefValues(qint16 X, qint16 Y, qint16 width, qint16 height, bool visible, qint32 mode);

    /// Reads both layouts.
    /// @return false when the Classic left or right is 0, when left equals right or top equals
    /// bottom, and when a corner of either layout lies outside of the 16-bit range.
    [[nodiscard]] bool SetValues(const IniFile &ini, const QString &name, const QString &section);

    /// True within the corners; the edges themselves are outside, and visibility does not count.
    [[nodiscard]] bool IsInside(qint16 X, qint16 Y, qint32 mode) const;

    [[nodiscard]] qint16 left(qint32 mode) const;
    [[nodiscard]] qint16 top(qint32 mode) const;
    [[nodiscard]] qint16 right(qint32 mode) const;
    [[nodiscard]] qint16 bottom(qint32 mode) const;
    [[nodiscard]] bool visible(qint32 mode) const;

    [[nodiscard]] bool operator==(const ClickableZone &other) const = default;

private:
    struct Zone
    {
        qint16 left = 0;
        qint16 top = 0;
        qint16 right = 0;
        qint16 bottom = 0;
        bool visible = false;

        [[nodiscard]] bool operator==(const Zone &other) const = default;
    };

    [[nodiscard]] static bool setCorners(Zone &zone, qint16 X, qint16 Y, qint16 width,
                                         qint16 height);
    [[nodiscard]] bool readCorners(const SkinKeys &keys, SkinLayout layout);

    std::array<Zone, 2> m_zones{};
};

} // namespace Quorlin
