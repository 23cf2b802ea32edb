#pragma once

#include "skin/PictureFormat.h"

#include <QImage>

namespace Quorlin {

/// Reads pictures made of points, within limits that no file can get around.
namespace PointReader {

constexpr qint64 MostBytes = 32 * 1024 * 1024;
constexpr qint64 MostPoints = 64 * 1024 * 1024;
constexpr int LongestSide = 16384;

/// True for a size that may be decoded.
[[nodiscard]] bool isSane(const QSize &size);

/// The size that the header tells; invalid when there is none or when it is too large.
[[nodiscard]] QSize sizeOf(const QByteArray &content, PictureFormat format);

/// Decodes the first picture of a file.
/// @param format what is in it; for a drawing made of lines the result is null.
/// @return null when it is damaged or too large.
[[nodiscard]] QImage read(const QByteArray &content, PictureFormat format);

} // namespace PointReader

} // namespace Quorlin
