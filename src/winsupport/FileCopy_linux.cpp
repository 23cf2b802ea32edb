#include "winsupport/FileCopy.h"

#include "winsupport/ByteCopy.h"
#include "winsupport/Destination.h"
#include "winsupport/SystemFailure.h"
#include "winsupport/TemporaryFile.h"

#include <QFile>

#include <cerrno>
#include <exception>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quorlin {

namespace {

constexpr unsigned int NewFileMode = 0666;
constexpr unsigned int PrivateMode = 0600;
constexpr unsigned int Permissions = 0777;
/// Bytes between two messages to the thread that watches.
constexpr qint64 NewsBytes = 4 * 1024 * 1024;

/// A name that the system would cut off must not reach another file.
QByteArray systemName(const QString &path)
{
    if (path.isEmpty() || path.contains(QChar::Null))
        SystemFailure::raise(path.isEmpty() ? ENOENT : EINVAL, "no file has such a name");
    return QFile::encodeName(path);
}

/// Opens an ordinary file; never waits for a pipe and never wakes a device.
Descriptor openSource(const QByteArray &path, struct stat &status)
{
    if (::stat(path.constData(), &status) != 0)
        SystemFailure::raiseLast("the source cannot be found");
    if (!S_ISREG(status.st_mode))
        SystemFailure::raise(S_ISDIR(status.st_mode) ? EISDIR : EINVAL,
                             "the source is no ordinary file");
    Descriptor file(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0)
        SystemFailure::raiseLast("the source cannot be opened");
    if (!S_ISREG(status.st_mode))
        SystemFailure::raise(EINVAL, "the source is no ordinary file");
    ::posix_fadvise(file.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return file;
}

/// The owner first: a change of owner would take permissions away.
void keepRights(int file, const Destination::Existing &replaced)
{
    // Only the administrator can give files away; everybody else keeps their own.
    if (::fchown(file, replaced.owner, replaced.group) != 0)
        static_cast<void>(::fchown(file, static_cast<uid_t>(-1), replaced.group) != 0);
    if (::fchmod(file, replaced.mode & Permissions) != 0)
        SystemFailure::raiseLast("the permissions cannot be set");
}

/// A time that cannot be kept is no reason to lose the copy.
void keepTime(int file, const struct stat &source)
{
    const timespec times[] = {{0, UTIME_NOW}, source.st_mtim};
    static_cast<void>(::futimens(file, times));
}

} // namespace

FileCopy::FileCopy(const QString &source, const QString &destination)
    : m_source(source), m_destination(destination)
{
}

SystemCopy::Outcome FileCopy::run(const std::function<void()> &news)
{
    try {
        copy(news);
        return {true, 0, {}};
    } catch (const std::system_error &error) {
        return {false, error.code().value(), QString::fromLocal8Bit(error.what())};
    } catch (const std::exception &error) {
        return {false, EIO, QString::fromLocal8Bit(error.what())};
    }
}

/// The first decision stays.
void FileCopy::decide(Decision decision)
{
    auto none = Decision::None;
    if (m_decision.compare_exchange_strong(none, decision))
        m_decision.notify_all();
}

bool FileCopy::mayFinish(const std::function<void()> &news)
{
    m_complete = true;
    news();
    m_decision.wait(Decision::None);
    return m_decision == Decision::Go;
}

void FileCopy::copy(const std::function<void()> &news)
{
    struct stat status = {};
    const auto source = openSource(systemName(m_source), status);
    const Destination destination(systemName(m_destination));
    const auto replaced = destination.existing(source.number());
    TemporaryFile::removeLeftOvers(destination.folder());
    TemporaryFile temporary(destination.folder(), replaced ? PrivateMode : NewFileMode);
    m_total = status.st_size;
    news();
    ByteCopy(source.number(), temporary.descriptor(), m_total).run([&](qint64 copied) {
        return note(copied, news);
    });
    if (replaced)
        keepRights(temporary.descriptor(), *replaced);
    keepTime(temporary.descriptor(), status);
    if (::fsync(temporary.descriptor()) != 0)
        SystemFailure::raiseLast("the copy cannot be written");
    if (!mayFinish(news))
        SystemFailure::raise(ECANCELED, "the copy was stopped");
    temporary.rename(destination.name());
    destination.syncNames(temporary.descriptor());
}

/// @return false when the copy is to stop.
bool FileCopy::note(qint64 copied, const std::function<void()> &news)
{
    const auto before = m_copied.exchange(copied);
    if (copied / NewsBytes != before / NewsBytes)
        news();
    return m_decision != Decision::Stop;
}

} // namespace Quorlin
