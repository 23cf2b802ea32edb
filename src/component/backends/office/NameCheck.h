#pragma once

#include <QString>

namespace Quorlin {

/// A look at the first bytes of a document. The engine takes whatever it does not know for
/// text, and would turn a damaged picture into pages of noise.
///
/// @return true when the file cannot be what its name says, nor anything else that the engine
/// reads under that name. Files of plain text are never judged.
[[nodiscard]] bool contradictsItsName(const QString &path);

} // namespace Quorlin
