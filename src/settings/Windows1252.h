#pragma once

#include <QByteArray>
#include <QString>

namespace Quorlin {

/// Text of Windows-1252 bytes. The five bytes without a character become the control characters
/// of their number, so that every byte survives the way there and back.
[[nodiscard]] QString fromWindows1252(const QByteArray &bytes);

/// Windows-1252 bytes of a text; "?" for each character that it does not have.
[[nodiscard]] QByteArray toWindows1252(const QString &text);

} // namespace Quorlin
