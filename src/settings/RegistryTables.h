#pragma once

#include "settings/RegistryPath.h"
#include "settings/RegistryStore.h"
#include "settings/SqliteConnection.h"

namespace Quorlin {

/// The keys and values of one registry database, in the transaction of an open connection.
/// Every operation throws SqliteError when the database fails.
class RegistryTables
{
public:
    enum class State {
        Usable,
        Empty,   ///< a database that holds nothing at all
        Foreign, ///< a database of something else
        Newer,   ///< made by a later version of this program
    };

    /// @param connection must outlive the object; its transaction has begun.
    explicit RegistryTables(SqliteConnection &connection) : m_connection(connection) {}

    [[nodiscard]] State state();
    /// Makes the tables in an empty database.
    void create();

    [[nodiscard]] bool hasKey(const RegistryPath &path);
    void addKey(const RegistryPath &path);
    [[nodiscard]] RegistryStatus removeKey(const RegistryPath &path);
    [[nodiscard]] RegistryStatus removeValue(const RegistryPath &path, const QString &name);
    [[nodiscard]] RegistryResult<RegistryValue> value(const RegistryPath &path,
                                                      const QString &name);
    /// Makes the key too.
    void setValue(const RegistryPath &path, const QString &name, const RegistryValue &value);
    [[nodiscard]] RegistryResult<QStringList> valueNames(const RegistryPath &path);
    [[nodiscard]] RegistryResult<QStringList> keyNames(const RegistryPath &path);

private:
    [[nodiscard]] RegistryResult<QStringList> names(const RegistryPath &path, const char *sql);

    SqliteConnection &m_connection;
};

} // namespace Quorlin
