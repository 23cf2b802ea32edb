#pragma once

#include "skin/SkinLook.h"

#include <QIcon>
#include <QStyle>

namespace Quorlin::StyleIcons {

/// The icons of dialogs in the colours of a look, from lines, so that they are sharp at every
/// size. Null for an icon that is not among them.
[[nodiscard]] QIcon icon(QStyle::StandardPixmap which, const SkinLook &look);

} // namespace Quorlin::StyleIcons
