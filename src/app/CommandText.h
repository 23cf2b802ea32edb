#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// The text by which the documents of a start are named, in the form that frmMain's
/// AddCommandLineFiles takes: paths separated by ",". Nothing in it is quoted; an existing path
/// with a comma in it is named by its "file:" address.
namespace CommandText {

/// The items of a text, not joined yet.
/// @param arguments of the program, without its own name. What names an existing file or folder
/// by a relative path becomes absolute, a local "file:" address becomes a path; all else, an
/// empty argument included, stays as it is. What exists and has a comma in its path becomes an
/// address without one.
/// @param folder that relative paths count from.
[[nodiscard]] QStringList items(const QStringList &arguments,
                                const QString &folder = QDir::currentPath());

/// The text of a start with these arguments.
[[nodiscard]] QString make(const QStringList &arguments,
                           const QString &folder = QDir::currentPath());

/// The same items in as many texts as it takes for none to be longer than this; each begins with
/// the verb that the items begin with, if any. An item that has no room even alone makes a text
/// that is too long.
/// @param most UTF-16 units.
[[nodiscard]] QStringList parts(const QStringList &items, qsizetype most);

} // namespace CommandText

} // namespace Quorlin
