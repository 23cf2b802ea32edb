#pragma once

#include "skin/SkinPicture.h"
#include "skin/WindowRef.h"

#include <QString>

#include <array>

namespace Quorlin {

class IniFile;
class SkinContext;

/// Size and background picture of one window, in both layouts.
class FormData
{
public:
    /// @param context must outlive this object.
    explicit FormData(const SkinContext &context);

    /// Sets the size of one layout, in pixels; pictures and the other layout stay.
    void SetDefValues(qint16 width, qint16 height, qint32 mode);

    /// Reads the Classic picture and both sizes. The Advanced picture stays as it was.
    /// @return false when there is no usable picture, or when the Classic width or height is 0.
    /// What follows then stays as it was.
    [[nodiscard]] bool SetValues(const IniFile &ini, const QString &name, const QString &section);

    /// Sets the window's size and, unless the current skin is "None", its picture, which may be
    /// empty. Throws NumberedError when the window refuses either.
    void AssignValues(const WindowRef &form, qint32 mode) const;

    /// Forgets the picture of one layout.
    void clearPicture(qint32 mode);

    [[nodiscard]] qint16 width(qint32 mode) const;
    [[nodiscard]] qint16 height(qint32 mode) const;
    [[nodiscard]] SkinPicture picture(qint32 mode) const;

private:
    struct Size
    {
        qint16 width = 0;
        qint16 height = 0;
    };

    const SkinContext &m_context;
    std::array<Size, 2> m_sizes{};
    std::array<SkinPicture, 2> m_pictures{};
};

} // namespace Quorlin
