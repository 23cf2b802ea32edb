#pragma once

#include <QByteArray>

#include <functional>

namespace Quorlin {

/// Moves the bytes of one open file into another, new one, the fastest way that the system
/// offers, and has them written to the disk on the way: never more than a small part waits, so
/// that neither the end nor a stop takes long.
///
/// Errors are thrown as std::system_error. One source per system stands beside this header.
class ByteCopy
{
public:
    /// Told the bytes copied so far. @return false to stop, which is an error too.
    using Step = std::function<bool(qint64 copied)>;

    /// @param from open for reading, at its beginning. @param to open for writing and empty.
    /// @param total bytes to copy. The source may have more; it is an error when it has less.
    ByteCopy(int from, int to, qint64 total);

    void run(const Step &step);

private:
    [[nodiscard]] bool shareBlocks() const;
    void reserveRoom() const;
    [[nodiscard]] qint64 copyPiece(qint64 count);
    [[nodiscard]] qint64 copyThroughMemory(qint64 count);
    void writePiece(qint64 count) const;
    void startWriteBack(qint64 offset, qint64 count) const;

    int m_from;
    int m_to;
    qint64 m_total;
    bool m_inKernel = true;
    QByteArray m_buffer;
};

} // namespace Quorlin
