#include "winsupport/ByteCopy.h"

#include "winsupport/SystemFailure.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin {

namespace {

constexpr qint64 PieceBytes = 4 * 1024 * 1024;
/// A piece that fits into the processor's cache is twice as fast.
constexpr qint64 BufferBytes = 256 * 1024;
/// Most bytes on their way to the disk.
constexpr qint64 WaitingBytes = 64 * 1024 * 1024;

bool isNoRoom(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

/// A call that has reported such an error takes it away from those that follow.
void checkWriteBack(int result)
{
    if (result != 0 && (errno == EIO || isNoRoom(errno)))
        SystemFailure::raiseLast("the copy cannot be written");
}

} // namespace

ByteCopy::ByteCopy(int from, int to, qint64 total) : m_from(from), m_to(to), m_total(total) {}

void ByteCopy::run(const Step &step)
{
    if (m_total > 0 && shareBlocks())
        return static_cast<void>(step(m_total));
    reserveRoom();
    for (qint64 done = 0; done < m_total;) {
        const auto count = copyPiece(std::min(PieceBytes, m_total - done));
        startWriteBack(done, count);
        done += count;
        if (!step(done))
            SystemFailure::raise(ECANCELED, "the copy was stopped");
    }
}

/// Some file systems give one file's blocks to another. The copy then has the size that the
/// source has by now.
bool ByteCopy::shareBlocks() const
{
    struct stat status = {};
    if (::ioctl(m_to, FICLONE, m_from) != 0)
        return false;
    if (::fstat(m_to, &status) != 0 || status.st_size < m_total)
        SystemFailure::raise(EIO, "the source became shorter");
    if (status.st_size > m_total && ::ftruncate(m_to, m_total) != 0)
        SystemFailure::raiseLast("the copy cannot be written");
    return true;
}

/// A full disk is known before the first byte. Not every file system can tell.
void ByteCopy::reserveRoom() const
{
    if (m_total > 0 && ::fallocate(m_to, 0, 0, m_total) != 0 && isNoRoom(errno))
        SystemFailure::raiseLast("no room for the copy");
}

/// @return the bytes copied, at least one.
qint64 ByteCopy::copyPiece(qint64 count)
{
    while (m_inKernel) {
        const auto copied =
            ::copy_file_range(m_from, nullptr, m_to, nullptr, static_cast<size_t>(count), 0);
        if (copied > 0)
            return copied;
        // Whatever the reason is, the way through memory finds it too or does without.
        m_inKernel = copied < 0 && errno == EINTR;
    }
    return copyThroughMemory(std::min(count, BufferBytes));
}

qint64 ByteCopy::copyThroughMemory(qint64 count)
{
    m_buffer.resize(BufferBytes);
    ssize_t got = 0;
    do {
        got = ::read(m_from, m_buffer.data(), static_cast<size_t>(count));
    } while (got < 0 && errno == EINTR);
    if (got < 0)
        SystemFailure::raiseLast("the source cannot be read");
    if (got == 0)
        SystemFailure::raise(EIO, "the source became shorter");
    writePiece(got);
    return got;
}

void ByteCopy::writePiece(qint64 count) const
{
    for (qint64 done = 0; done < count;) {
        const auto put =
            ::write(m_to, m_buffer.constData() + done, static_cast<size_t>(count - done));
        if (put < 0 && errno != EINTR)
            SystemFailure::raiseLast("the copy cannot be written");
        done += std::max<qint64>(put, 0);
    }
}

void ByteCopy::startWriteBack(qint64 offset, qint64 count) const
{
    checkWriteBack(::sync_file_range(m_to, offset, count, SYNC_FILE_RANGE_WRITE));
    if (offset >= WaitingBytes)
        checkWriteBack(
            ::sync_file_range(m_to, offset - WaitingBytes, count, SYNC_FILE_RANGE_WAIT_BEFORE));
}

} // namespace Quorlin
