#pragma once

#include "component/protocol/Reason.h"

#include <QString>

namespace Quorlin::BringIn {

/// Copies a document that the user named into a working folder, so that its worker needs no
/// access to the user's folders and sees one unchanging content. Blocks; call it from a
/// background thread.
/// @return Reason::None, or why the document cannot be taken.
[[nodiscard]] Reason document(const QString &from, const QString &to);

/// As document(), for a file of ours whose kind has been looked at before.
[[nodiscard]] Reason file(const QString &from, const QString &to);

/// As file(), by a second name instead of a copy where that is possible.
[[nodiscard]] Reason linkedFile(const QString &from, const QString &to);

/// A name for the document in its working folder: its own where the engine can bear it, so
/// that fields with the file's name stay true; otherwise a plain one with the extension.
[[nodiscard]] QString safeName(const QString &fileName);
[[nodiscard]] QString plainName(const QString &fileName);

} // namespace Quorlin::BringIn
