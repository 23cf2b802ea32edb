#pragma once

#include <QByteArray>

namespace Quorlin {

/// Standard input and output as a private pipe to the process that started this one.
///
/// Bytes as they are; no encoding is applied. One source per system stands beside this header.
class StandardPipe
{
public:
    /// Claims standard output: whatever a library prints there goes to standard error from
    /// now on, so that it cannot be mistaken for an answer.
    StandardPipe();
    ~StandardPipe();
    StandardPipe(const StandardPipe &) = delete;
    StandardPipe &operator=(const StandardPipe &) = delete;

    /// Waits for bytes on standard input.
    /// @return what has arrived; empty at the end of the input or when reading failed.
    [[nodiscard]] QByteArray read();

    /// Writes all bytes. @return false when the other side is gone.
    [[nodiscard]] bool write(const QByteArray &bytes);

private:
    int m_output;
};

} // namespace Quorlin
