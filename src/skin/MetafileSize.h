#pragma once

#include "skin/PictureFormat.h"

#include <QSizeF>

namespace Quorlin {

/// The size of a metafile as its header tells it, in inches; empty when it tells none, or one
/// beyond 100 inches.
[[nodiscard]] QSizeF metafileInches(const QByteArray &content, PictureFormat format);

} // namespace Quorlin
