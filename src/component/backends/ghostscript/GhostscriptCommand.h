#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin {

/// What Ghostscript may do with a PostScript file.
enum class PostScriptOrigin {
    Ours,    ///< written by the print worker from a document that the office engine opened
    Printed, ///< written by the print worker from somebody's PDF
    Foreign, ///< given to us as PostScript
};

/// The command lines with which Ghostscript distils.
///
/// SAFER holds in all of them: a PostScript program reads and writes nothing outside the
/// folder, which also has to be the process's TMPDIR, since SAFER allows the folder for
/// temporary files too.
namespace GhostscriptCommand {

/// How the line ends with which a process for one file tells that its job options are read.
inline constexpr char OptionsMark[] = "%quorlin options";

/// How the line begins with which a process for one file tells the number of pages at its end.
inline constexpr char PagesMark[] = "%quorlin pages ";

/// One file, one process. The process ends with 0 when the file was distilled.
/// @param folder absolute path that holds the three files.
[[nodiscard]] QStringList oneFile(const QString &folder, const QString &optionsFile,
                                  const QString &input, const QString &output,
                                  PostScriptOrigin origin);

/// A process that reads statements from its standard input and distils file after file;
/// GhostscriptServer writes the statements.
[[nodiscard]] QStringList server(const QString &folder);

} // namespace GhostscriptCommand

} // namespace Quorlin
