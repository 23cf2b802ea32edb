#pragma once

#include "skin/SkinPicture.h"

#include <QString>

#include <optional>

namespace Quorlin {

/// What the objects of a skin ask of the skin that they belong to.
class SkinContext
{
public:
    virtual ~SkinContext() = default;

    /// "None" for the built-in layout.
    [[nodiscard]] virtual QString GetSkinName() const = 0;

    /// Loads a picture of the current skin.
    /// @param value as a "Picture" key gives it, relative to the skin's folder.
    /// @return nothing when there is no such file in the folder, or when it is no usable picture.
    [[nodiscard]] virtual std::optional<SkinPicture> loadPicture(const QString &value) const = 0;
};

} // namespace Quorlin
