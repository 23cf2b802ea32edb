#pragma once

#include <QString>

#include <array>

namespace Quorlin {

class IniFile;
class SkinKeys;
class SkinTarget;
enum class SkinLayout : std::size_t;

/// Position, size and visibility of one control, in both layouts. All numbers are pixels.
class ControlSize
{
public:
    /// Sets the values of one layout; the other one keeps its own.
    void SetDefValues(qint16 X, qint16 Y, qint16 width, qint16 height, bool visible, qint32 mode);

    /// Reads position and visibility; the size stays.
    /// @return false when the Classic X or Y is 0. The values that follow then stay as they were.
    [[nodiscard]] bool SetPos(const IniFile &ini, const QString &name, const QString &section);

    /// Reads everything.
    /// @return false when the Classic X, Y, width or height is 0. The Classic visibility and the
    /// Advanced values then stay as they were. Advanced values may be 0.
    [[nodiscard]] bool SetValues(const IniFile &ini, const QString &name, const QString &section);

    /// Sets "visible", "Left" and "Top". Throws NumberedError when the control refuses one.
    void AssignPos(SkinTarget &obj, qint32 mode) const;

    /// Sets "visible", "width", "height", "Left" and "Top", each whether or not the control
    /// took the one before.
    void AssignValues(SkinTarget &obj, qint32 mode) const;

    void width(qint16 value, qint32 mode);
    void height(qint16 value, qint32 mode);

    [[nodiscard]] bool visible(qint32 mode) const;
    [[nodiscard]] qint16 X(qint32 mode) const;
    [[nodiscard]] qint16 Y(qint32 mode) const;
    [[nodiscard]] qint16 width(qint32 mode) const;
    [[nodiscard]] qint16 height(qint32 mode) const;

    [[nodiscard]] bool operator==(const ControlSize &other) const = default;

private:
    struct Place
    {
        qint16 x = 0;
        qint16 y = 0;
        qint16 width = 0;
        qint16 height = 0;

        [[nodiscard]] bool operator==(const Place &other) const = default;
    };

    void readPosition(const SkinKeys &keys, SkinLayout layout);
    void readSize(const SkinKeys &keys, SkinLayout layout);
    void readVisible(const SkinKeys &keys, SkinLayout layout);

    std::array<bool, 2> m_visible{};
    std::array<Place, 2> m_places{};
};

} // namespace Quorlin
