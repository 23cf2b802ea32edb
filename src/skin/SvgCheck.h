#pragma once

#include <QByteArray>

namespace Quorlin {

/// Tells whether a drawing may be given to the renderer, which opens whatever file a drawing
/// names.
namespace SvgCheck {

constexpr qsizetype MostBytes = 4 * 1024 * 1024;
constexpr int MostElements = 20000;
constexpr int DeepestElement = 100;

/// True for a whole XML document of bounded size without declarations of entities, processing
/// instructions and references to anything but its own parts.
[[nodiscard]] bool isHarmless(const QByteArray &svg);

} // namespace SvgCheck

} // namespace Quorlin
