#pragma once

#include <QPoint>
#include <QSize>

#include <optional>

namespace Quorlin::WindowPlace {

/// Where a window of this size is to be shown: at the place that is remembered of it, as long as
/// enough of its title bar to take hold of is on a screen there, else in the middle of the first
/// screen. @return nothing without a screen.
[[nodiscard]] std::optional<QPoint> choose(const std::optional<QPoint> &remembered,
                                           const QSize &size);

} // namespace Quorlin::WindowPlace
