#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin::CommandItems {

/// The paths of a command text, from left to right: what stands between the commas. There is no
/// quoting, so that a path with a comma becomes two, as it always did. A comma at the end makes
/// a last, empty one; an empty text has none.
[[nodiscard]] QStringList split(const QString &text);

} // namespace Quorlin::CommandItems
