#pragma once

#include <QStringList>

namespace Quorlin::AccessKeys {

/// Marks a letter of each caption as its access key ("&x"), so that a window can be used from the
/// keyboard in any language. No two captions get the same letter; beginnings of words come first.
/// A caption that has a mark keeps it, and one without a free letter stays as it is.
[[nodiscard]] QStringList marked(const QStringList &captions);

} // namespace Quorlin::AccessKeys
