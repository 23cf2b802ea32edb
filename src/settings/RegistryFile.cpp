#include "settings/RegistryFile.h"

#include "settings/RegistryTables.h"
#include "settings/WriterLock.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <chrono>

#include <sqlite3.h>

namespace Quorlin {

namespace {

using Status = RegistryStatus;
using Deadline = QDeadlineTimer;

constexpr int MostDamagedFiles = 10000;

/// How long a file counts as busy that could not be read.
constexpr std::chrono::seconds BusyTime{5};
/// What a read of such a file may take: enough where nobody is in the way any more.
constexpr std::chrono::milliseconds Glance{25};

qint64 timeOf(const Deadline &deadline)
{
    return deadline.deadline();
}

/// The database, and what stands beside it while it is written.
constexpr std::array<QLatin1String, 4> Parts{QLatin1String(""), QLatin1String("-journal"),
                                             QLatin1String("-wal"), QLatin1String("-shm")};

Status statusOf(const SqliteError &error)
{
    switch (error.code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_INTERRUPT:
    case SQLITE_PROTOCOL:
        return Status::Busy;
    case SQLITE_PERM:
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_AUTH:
        return Status::Denied;
    case SQLITE_ERROR: // tables or columns are not there
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return Status::Damaged;
    default:
        return Status::Failed;
    }
}

/// Only a reader with the right to write may undo what a crashed writer began.
bool needsRecovery(const SqliteError &error)
{
    return error.code == SQLITE_READONLY_ROLLBACK || error.code == SQLITE_READONLY_RECOVERY;
}

Status statusOf(RegistryTables::State state)
{
    switch (state) {
    case RegistryTables::State::Usable:
        return Status::Done;
    case RegistryTables::State::Empty:
        return Status::Missing;
    default:
        return Status::Unusable;
    }
}

bool exists(const QString &path)
{
    return StoreFiles::kindOf(path) != StoreFiles::Kind::Missing;
}

} // namespace

RegistryFile::RegistryFile(const QString &path, StoreFiles::Audience audience)
    : m_path(path), m_audience(audience)
{
}

Deadline RegistryFile::forRead(const Deadline &deadline) const
{
    const bool isBusy = timeOf(Deadline::current()) < m_busyUntil;
    return isBusy ? std::min(deadline, Deadline(Glance)) : deadline;
}

Status RegistryFile::openKey(const RegistryPath &path, const Deadline &deadline) const
{
    return read(deadline, [&path](auto &tables) {
        return tables.hasKey(path) ? Status::Done : Status::Missing;
    });
}

Status RegistryFile::createKey(const RegistryPath &path, const Deadline &deadline) const
{
    return write(deadline, [&path](auto &tables) {
        tables.addKey(path);
        return Status::Done;
    });
}

Status RegistryFile::deleteKey(const RegistryPath &path, const Deadline &deadline) const
{
    return change(deadline, [&path](auto &tables) { return tables.removeKey(path); });
}

Status RegistryFile::deleteValue(const RegistryPath &path, const QString &name,
                                 const Deadline &deadline) const
{
    return change(deadline,
                  [&path, &name](auto &tables) { return tables.removeValue(path, name); });
}

RegistryResult<RegistryValue> RegistryFile::queryValue(const RegistryPath &path,
                                                       const QString &name,
                                                       const Deadline &deadline) const
{
    RegistryResult<RegistryValue> found;
    found.status = read(deadline, [&](auto &tables) {
        found = tables.value(path, name);
        return found.status;
    });
    return found;
}

Status RegistryFile::setValue(const RegistryPath &path, const QString &name,
                              const RegistryValue &value, const Deadline &deadline) const
{
    return write(deadline, [&](auto &tables) {
        tables.setValue(path, name, value);
        return Status::Done;
    });
}

RegistryResult<QStringList> RegistryFile::enumerateValues(const RegistryPath &path,
                                                          const Deadline &deadline) const
{
    RegistryResult<QStringList> found;
    found.status = read(deadline, [&](auto &tables) {
        found = tables.valueNames(path);
        return found.status;
    });
    return found;
}

RegistryResult<QStringList> RegistryFile::enumerateKeys(const RegistryPath &path,
                                                        const Deadline &deadline) const
{
    RegistryResult<QStringList> found;
    found.status = read(deadline, [&](auto &tables) {
        found = tables.keyNames(path);
        return found.status;
    });
    return found;
}

Status RegistryFile::read(const Deadline &deadline, const Work &work) const
{
    const auto status = tryRead(deadline, work);
    m_busyUntil = status == Status::Busy ? timeOf(Deadline(BusyTime)) : 0;
    return status;
}

Status RegistryFile::tryRead(const Deadline &deadline, const Work &work) const
{
    try {
        return transact(Access::Read, deadline, work);
    } catch (const SqliteError &error) {
        if (!needsRecovery(error))
            return statusOf(error);
    }
    return locked(deadline, [&] { return transact(Access::Write, deadline, work); });
}

/// A change to what is there already: nothing is made for it.
Status RegistryFile::change(const Deadline &deadline, const Work &work) const
{
    if (!exists(m_path))
        return Status::Missing;
    return locked(deadline, [&] { return transact(Access::Write, deadline, work); });
}

Status RegistryFile::write(const Deadline &deadline, const Work &work) const
{
    if (!StoreFiles::makeFolder(QFileInfo(m_path).path(), m_audience))
        return Status::Denied;
    const auto attempt = [&] {
        const auto made = makeFile();
        return made == Status::Done ? transact(Access::Write, deadline, work) : made;
    };
    return locked(deadline, [&] {
        const char *damage = nullptr;
        try {
            return attempt();
        } catch (const SqliteError &error) {
            if (statusOf(error) != Status::Damaged)
                throw;
            damage = sqlite3_errstr(error.code);
        }
        // Nobody else writes now, so this is the same damaged file still.
        return setAside(damage) ? attempt() : Status::Failed;
    });
}

Status RegistryFile::locked(const Deadline &deadline, const std::function<Status()> &work) const
{
    const WriterLock lock(m_path + QLatin1String("-lock"), deadline);
    if (lock.state() != WriterLock::State::Held)
        return lock.state() == WriterLock::State::Busy ? Status::Busy : Status::Denied;
    try {
        return work();
    } catch (const SqliteError &error) {
        return statusOf(error);
    }
}

/// An open of anything but a file could wait for ever.
Status RegistryFile::transact(Access access, const Deadline &deadline, const Work &work) const
{
    const auto kind = StoreFiles::kindOf(m_path);
    if (kind != StoreFiles::Kind::File)
        return kind == StoreFiles::Kind::Missing ? Status::Missing : Status::Unusable;
    SqliteConnection connection(m_path, access, deadline);
    connection.begin();
    RegistryTables tables(connection);
    auto state = tables.state();
    if (state == RegistryTables::State::Empty && access == Access::Write) {
        tables.create();
        state = RegistryTables::State::Usable;
    }
    if (state != RegistryTables::State::Usable)
        return statusOf(state);
    const auto status = work(tables);
    if (status == Status::Done)
        connection.commit();
    return status;
}

/// What a lost file left beside it does not belong to a new one.
Status RegistryFile::makeFile() const
{
    if (exists(m_path))
        return Status::Done;
    if (std::ranges::any_of(Parts, [this](auto part) { return exists(m_path + part); }) &&
        !setAside("the database itself is gone"))
        return Status::Failed;
    return StoreFiles::makeFile(m_path, m_audience) ? Status::Done : Status::Denied;
}

/// The file goes first: beside a new and empty one, what is left of it counts for nothing.
bool RegistryFile::setAside(const char *reason) const
{
    const auto name = nameForDamaged();
    const bool done = !name.isEmpty() && std::ranges::all_of(Parts, [&](auto part) {
        return !exists(m_path + part) || StoreFiles::rename(m_path + part, name + part);
    });
    qWarning("The settings in %s %s \"%s\": %s", qUtf8Printable(m_path),
             done ? "were set aside as" : "could not be set aside as", qUtf8Printable(name),
             reason);
    return done;
}

/// @return empty when every name is taken.
QString RegistryFile::nameForDamaged() const
{
    for (auto number = 1; number <= MostDamagedFiles; ++number) {
        const auto name = m_path + QStringLiteral(".damaged-%1").arg(number);
        if (std::ranges::none_of(Parts, [&name](auto part) { return exists(name + part); }))
            return name;
    }
    return {};
}

} // namespace Quorlin
