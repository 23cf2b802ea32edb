#pragma once

#include <QString>

namespace Quorlin {

/// Names for what the component makes beside documents.
namespace OutputNames {

/// The candidates for a file name with a hidden extension, the best first: "x.ps~",
/// "x.ps2~", … @param number from 0.
[[nodiscard]] QString hiddenName(const QString &folder, const QString &base,
                                 const QString &extension, int number);

/// The first of these names under which nothing is, for an output that does not exist.
[[nodiscard]] QString missingName(const QString &folder, const QString &base,
                                  const QString &extension);

} // namespace OutputNames

} // namespace Quorlin
