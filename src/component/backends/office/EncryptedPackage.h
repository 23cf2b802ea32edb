#pragma once

#include <QString>

namespace Quorlin {

/// An Office Open XML document under a password is no zip but a container in the older
/// compound format with the encrypted zip as one stream.
///
/// @return true when the file is such a container; false when not or not readable.
[[nodiscard]] bool isEncryptedPackage(const QString &path);

} // namespace Quorlin
