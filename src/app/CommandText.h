#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// The text by which the documents of a start are named, in the form that frmMain's
/// AddCommandLineFiles takes: paths separated by ",". Nothing in it is quoted or escaped.
namespace CommandText {

/// @param arguments of the program, without its own name. What names an existing file or folder
/// by a relative path becomes absolute, a local "file:" address becomes a path; all else, an
/// empty argument included, stays as it is.
/// @param folder that relative paths count from.
[[nodiscard]] QString make(const QStringList &arguments,
                           const QString &folder = QDir::currentPath());

} // namespace CommandText

} // namespace Quorlin
