#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace Quorlin::CommandItems {

/// The paths of a command text, from left to right: what stands between the commas. There is no
/// quoting, so that a path with a comma becomes two, as it always did. A comma at the end makes
/// a last, empty one; an empty text has none. A local "file:" address stands for its path.
[[nodiscard]] QStringList split(const QString &text);

/// The "file:" address of an absolute path, without a comma in it.
[[nodiscard]] QString addressOf(const QString &path);

/// The path of a "file:" address on this machine; empty for everything else.
[[nodiscard]] QString pathOfAddress(const QString &text);

/// What the program is to do with the documents, as a file type's commands say it in front of
/// them. It is a path of the text like every other, and names no document.
enum class Verb {
    None,  ///< there is no such word, or a folder has its name and is meant
    Print, ///< "/p": convert them at once
    Add,   ///< "/a": put them into the list
    New    ///< "/n": show the window
};

/// @param isFolder tells whether there is a folder of this name; empty asks the file system.
[[nodiscard]] Verb verbOf(const QStringList &items,
                          const std::function<bool(const QString &)> &isFolder = {});

} // namespace Quorlin::CommandItems
