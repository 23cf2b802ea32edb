#pragma once

#include "settings/RegistryValue.h"

#include <QString>
#include <QStringList>

namespace Quorlin {

/// The roots of the registry, by the system's own handle values.
namespace RegistryRoot {
inline constexpr quint32 ClassesRoot = 0x80000000;
inline constexpr quint32 CurrentUser = 0x80000001;
inline constexpr quint32 LocalMachine = 0x80000002;
} // namespace RegistryRoot

/// How an operation on the registry ended.
enum class RegistryStatus {
    Done,
    Missing,    ///< there is no such key or value
    HasSubKeys, ///< a key with keys below it is not deleted
    Refused,    ///< no such root, a root itself, or a name that is too long
    Denied,     ///< this user may not write there
    Busy,       ///< somebody else held the store for too long
    Damaged,    ///< the store cannot be read
    Unusable,   ///< the store is somebody else's or of a newer version; it is left alone
    Failed,     ///< the system failed: a full disk, an unreadable medium
};

/// A status, and what was asked for when it is Done.
template <typename T>
struct RegistryResult
{
    RegistryStatus status = RegistryStatus::Missing;
    T result = {};
};

/// A key: a root and the path below it, with "\" between the names. Empty names do not count, so
/// a "\" at either end changes nothing; an empty path is the root itself.
struct RegistryKey
{
    quint32 root = 0;
    QString path;
};

/// The registry of a system. Keys and values are found without regard to case and keep the case
/// in which they were made.
///
/// No operation keeps anything open when it returns, and what was reported as Done is on the disk.
/// One that finds somebody else at work gives up: a write after about two seconds, a read after a
/// quarter of one, and almost at once while the last read of the same store was Busy. A slow
/// disk can hold up any of them for longer. Nothing is thrown.
class RegistryStore
{
public:
    virtual ~RegistryStore() = default;

    /// Done when the key can be opened. A root always can.
    [[nodiscard]] virtual RegistryStatus openKey(const RegistryKey &key) const = 0;

    /// Makes a key and those above it. Done also when it is there already.
    [[nodiscard]] virtual RegistryStatus createKey(const RegistryKey &key) = 0;

    /// Deletes a key with its values. A key with keys below it stays, and so does a root.
    [[nodiscard]] virtual RegistryStatus deleteKey(const RegistryKey &key) = 0;

    /// @param name empty means the key's default value, here and below.
    [[nodiscard]] virtual RegistryStatus deleteValue(const RegistryKey &key,
                                                     const QString &name) = 0;

    [[nodiscard]] virtual RegistryResult<RegistryValue> queryValue(const RegistryKey &key,
                                                                   const QString &name) const = 0;

    /// Sets a value, making its key when that is missing: both or neither.
    [[nodiscard]] virtual RegistryStatus setValue(const RegistryKey &key, const QString &name,
                                                  const RegistryValue &value) = 0;

    /// The names of a key's values, in the order in which they were made.
    [[nodiscard]] virtual RegistryResult<QStringList>
    enumerateValues(const RegistryKey &key) const = 0;

    /// The names of the keys right below a key, sorted.
    [[nodiscard]] virtual RegistryResult<QStringList>
    enumerateKeys(const RegistryKey &key) const = 0;
};

} // namespace Quorlin
