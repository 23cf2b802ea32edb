#pragma once

#include "settings/RegistryPath.h"
#include "settings/RegistryStore.h"
#include "settings/SqliteConnection.h"
#include "settings/StoreFiles.h"

#include <QDeadlineTimer>

#include <atomic>
#include <functional>

namespace Quorlin {

class RegistryTables;

/// One layer of the registry: a database file that is made by the first write.
///
/// Reading changes nothing on the disk, save that it undoes what a crashed writer left half
/// done. A file that is no database any more, or a damaged one, is set aside by the next write
/// under "NAME.damaged-N" with all that belongs to it, and a new one is begun. A database of
/// something else and one of a later version are neither read nor touched.
class RegistryFile
{
public:
    /// @param path the file, absolute; its folder is made with it.
    RegistryFile(const QString &path, StoreFiles::Audience audience);

    /// The deadline for a read that somebody waits for: the one that is given, but hardly any time
    /// for some seconds after a read that ended as Busy.
    [[nodiscard]] QDeadlineTimer forRead(const QDeadlineTimer &deadline) const;

    // As in RegistryStore; every operation ends when the deadline has passed.
    [[nodiscard]] RegistryStatus openKey(const RegistryPath &path,
                                         const QDeadlineTimer &deadline) const;
    [[nodiscard]] RegistryStatus createKey(const RegistryPath &path,
                                           const QDeadlineTimer &deadline) const;
    [[nodiscard]] RegistryStatus deleteKey(const RegistryPath &path,
                                           const QDeadlineTimer &deadline) const;
    [[nodiscard]] RegistryStatus deleteValue(const RegistryPath &path, const QString &name,
                                             const QDeadlineTimer &deadline) const;
    [[nodiscard]] RegistryResult<RegistryValue>
    queryValue(const RegistryPath &path, const QString &name, const QDeadlineTimer &deadline) const;
    [[nodiscard]] RegistryStatus setValue(const RegistryPath &path, const QString &name,
                                          const RegistryValue &value,
                                          const QDeadlineTimer &deadline) const;
    [[nodiscard]] RegistryResult<QStringList> enumerateValues(const RegistryPath &path,
                                                              const QDeadlineTimer &deadline) const;
    [[nodiscard]] RegistryResult<QStringList> enumerateKeys(const RegistryPath &path,
                                                            const QDeadlineTimer &deadline) const;

private:
    using Access = SqliteConnection::Access;
    using Work = std::function<RegistryStatus(RegistryTables &)>;

    [[nodiscard]] RegistryStatus read(const QDeadlineTimer &deadline, const Work &work) const;
    [[nodiscard]] RegistryStatus tryRead(const QDeadlineTimer &deadline, const Work &work) const;
    [[nodiscard]] RegistryStatus change(const QDeadlineTimer &deadline, const Work &work) const;
    [[nodiscard]] RegistryStatus write(const QDeadlineTimer &deadline, const Work &work) const;
    [[nodiscard]] RegistryStatus locked(const QDeadlineTimer &deadline,
                                        const std::function<RegistryStatus()> &work) const;
    [[nodiscard]] RegistryStatus transact(Access access, const QDeadlineTimer &deadline,
                                          const Work &work) const;
    [[nodiscard]] RegistryStatus makeFile() const;
    [[nodiscard]] bool setAside(const char *reason) const;
    [[nodiscard]] QString nameForDamaged() const;

    QString m_path;
    StoreFiles::Audience m_audience;
    mutable std::atomic<qint64> m_busyUntil = 0; // by the clock of QDeadlineTimer
};

} // namespace Quorlin
