#pragma once

#include <QByteArray>

namespace Quorlin {

/// The kinds of picture that skins may use.
enum class PictureFormat { Unknown, Bmp, Ico, Gif, Jpeg, Png, Svg, Wmf, Emf };

/// Tells the kind from the content, whatever the file is called. Compressed
/// SVG is not known, nor is a WMF that does not tell its size.
[[nodiscard]] PictureFormat pictureFormatOf(const QByteArray &content);

/// The name of the toolkit's reader of a kind, also the end of such a file's name.
[[nodiscard]] const char *readerName(PictureFormat format);

} // namespace Quorlin
