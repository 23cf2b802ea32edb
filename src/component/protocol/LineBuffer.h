#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace Quorlin {

/// Joins the pieces in which a pipe delivers its bytes into whole lines.
///
/// A line that grows beyond the limit is dropped up to its end, and takeOverflow() tells so
/// once; the lines after it are read as usual.
class LineBuffer
{
public:
    /// @param maxLineBytes longest line that is kept, without its line end.
    explicit LineBuffer(qsizetype maxLineBytes);

    void append(QByteArrayView bytes);

    /// The next whole line without its line end ("\n" or "\r\n"), or nothing when more bytes
    /// are needed.
    [[nodiscard]] std::optional<QByteArray> takeLine();

    /// True when a line was dropped since the last call.
    [[nodiscard]] bool takeOverflow();

private:
    qsizetype m_maxLineBytes;
    QByteArray m_pending;
    qsizetype m_scanned = 0;
    bool m_dropping = false;
    bool m_overflowed = false;
};

} // namespace Quorlin
