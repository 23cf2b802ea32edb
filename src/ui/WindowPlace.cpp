#include "ui/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace Quorlin::WindowPlace {

namespace {

constexpr QSize LeastVisible(80, 24);

bool isOnAScreen(const QPoint &place)
{
    const auto screens = QGuiApplication::screens();
    return std::ranges::any_of(screens, [&place](const QScreen *screen) {
        return screen->availableGeometry().contains(QRect(place, LeastVisible));
    });
}

} // namespace

std::optional<QPoint> choose(const std::optional<QPoint> &remembered, const QSize &size)
{
    if (remembered && isOnAScreen(*remembered))
        return remembered;
    if (const auto *const screen = QGuiApplication::primaryScreen())
        return screen->availableGeometry().center() - QRect(QPoint(), size).center();
    return std::nullopt;
}

} // namespace Quorlin::WindowPlace
