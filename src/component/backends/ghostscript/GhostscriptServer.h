#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace Quorlin {

/// The conversation with one warm Ghostscript process.
///
/// Starting Ghostscript takes longer than distilling a small document, so one process serves
/// many: each document gets an output file of its own, inside a save that is undone after it.
/// Only PostScript that we wrote ourselves may share a process.
namespace GhostscriptServer {

struct Answer
{
    enum class Kind {
        Page,  ///< a page has been written
        Error, ///< the program failed; End still follows
        End,   ///< the output file is closed
    };
    Kind kind;
    int pages = 0;        ///< Page: pages written so far
    QByteArray errorName; ///< Error: PostScript's name of the error
};

/// The statements that make the process ready; they end with an End answer for the token, after
/// an Error answer when the job options are faulty.
/// The job options stay in force for all files of the process.
[[nodiscard]] QByteArray start(const QByteArray &optionsFile, const QByteArray &token);

/// The statements that distil one file. The token marks the answers of this file.
[[nodiscard]] QByteArray distil(const QByteArray &input, const QByteArray &output,
                                const QByteArray &token);

/// What a line of the process's standard output says; nothing when it is not an answer that
/// carries the token.
[[nodiscard]] std::optional<Answer> parse(QByteArrayView line, const QByteArray &token);

/// Bytes as a PostScript string, safe for any content.
[[nodiscard]] QByteArray hexString(const QByteArray &bytes);

} // namespace GhostscriptServer

} // namespace Quorlin
