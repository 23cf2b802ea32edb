#pragma once

#include "skin/SkinPicture.h"

#include <QString>

#include <array>

namespace Quorlin {

class IniFile;
class SkinContext;
class SkinTarget;

/// The picture of a picture box, in both layouts.
class PictureData
{
public:
    /// @param context must outlive this object.
    explicit PictureData(const SkinContext &context);

    /// Reads the Classic picture; the Advanced one stays as it was.
    /// @return false when there is no usable picture; the old one stays.
    [[nodiscard]] bool SetValues(const IniFile &ini, const QString &name, const QString &section);

    /// Sets "Picture", which may be empty. Throws NumberedError when the control refuses it.
    void AssignValues(SkinTarget &obj, qint32 mode) const;

    /// Forgets the picture of one layout.
    void clearPicture(qint32 mode);

    [[nodiscard]] SkinPicture picture(qint32 mode) const;

private:
    const SkinContext &m_context;
    std::array<SkinPicture, 2> m_pictures{};
};

} // namespace Quorlin
