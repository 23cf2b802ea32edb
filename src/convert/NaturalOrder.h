#pragma once

#include <QString>

namespace Quorlin::NaturalOrder {

/// Whether one name comes before another as people sort them: numbers by their value, letters
/// without regard to case. A total order: only equal names are in neither order.
[[nodiscard]] bool less(const QString &left, const QString &right);

} // namespace Quorlin::NaturalOrder
