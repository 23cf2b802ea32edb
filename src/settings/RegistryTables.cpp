#include "settings/RegistryTables.h"

namespace Quorlin {

namespace {

constexpr qint64 Application = 0x514C5247; // "QLRG"
constexpr qint64 Version = 1;

} // namespace

RegistryTables::State RegistryTables::state()
{
    const auto application = m_connection.number("PRAGMA application_id");
    const auto version = m_connection.number("PRAGMA user_version");
    if (application == Application && version >= Version)
        return version == Version ? State::Usable : State::Newer;
    const auto isEmpty = application == 0 && version == 0 &&
                         m_connection.number("SELECT count(*) FROM sqlite_schema") == 0;
    return isEmpty ? State::Empty : State::Foreign;
}

/// Paths and folded names are without case; `name` is what the program wrote. Values keep the
/// order in which they were made by their numbers.
void RegistryTables::create()
{
    m_connection.run("CREATE TABLE registry_key ("
                     "path TEXT PRIMARY KEY, parent TEXT NOT NULL, name TEXT NOT NULL"
                     ") WITHOUT ROWID");
    m_connection.run("CREATE INDEX registry_key_parent ON registry_key (parent)");
    m_connection.run("CREATE TABLE registry_value ("
                     "id INTEGER PRIMARY KEY, path TEXT NOT NULL, folded TEXT NOT NULL, "
                     "name TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL, "
                     "UNIQUE (path, folded))");
    m_connection.run("PRAGMA application_id = 0x514C5247");
    m_connection.run("PRAGMA user_version = 1");
}

bool RegistryTables::hasKey(const RegistryPath &path)
{
    if (path.isEmpty())
        return true;
    return SqliteStatement(m_connection.handle(), "SELECT 1 FROM registry_key WHERE path = ?")
        .with(path.folded())
        .next();
}

void RegistryTables::addKey(const RegistryPath &path)
{
    for (auto at = path; !hasKey(at); at = at.parent())
        SqliteStatement(m_connection.handle(),
                        "INSERT INTO registry_key (path, parent, name) VALUES (?, ?, ?)")
            .with(at.folded())
            .with(at.parent().folded())
            .with(at.name())
            .run();
}

RegistryStatus RegistryTables::removeKey(const RegistryPath &path)
{
    if (path.isEmpty())
        return RegistryStatus::Refused;
    if (!hasKey(path))
        return RegistryStatus::Missing;
    const auto folded = path.folded();
    auto *const db = m_connection.handle();
    if (SqliteStatement(db, "SELECT 1 FROM registry_key WHERE parent = ?").with(folded).next())
        return RegistryStatus::HasSubKeys;
    SqliteStatement(db, "DELETE FROM registry_value WHERE path = ?").with(folded).run();
    SqliteStatement(db, "DELETE FROM registry_key WHERE path = ?").with(folded).run();
    return RegistryStatus::Done;
}

RegistryStatus RegistryTables::removeValue(const RegistryPath &path, const QString &name)
{
    SqliteStatement(m_connection.handle(),
                    "DELETE FROM registry_value WHERE path = ? AND folded = ?")
        .with(path.folded())
        .with(name.toCaseFolded())
        .run();
    return m_connection.changes() > 0 ? RegistryStatus::Done : RegistryStatus::Missing;
}

RegistryResult<RegistryValue> RegistryTables::value(const RegistryPath &path, const QString &name)
{
    SqliteStatement statement(
        m_connection.handle(),
        "SELECT type, data FROM registry_value WHERE path = ? AND folded = ?");
    statement.with(path.folded()).with(name.toCaseFolded());
    if (!statement.next())
        return {RegistryStatus::Missing};
    return {RegistryStatus::Done, {static_cast<quint32>(statement.number(0)), statement.bytes(1)}};
}

/// A value that is there already as it shall be costs no writing.
void RegistryTables::setValue(const RegistryPath &path, const QString &name,
                              const RegistryValue &value)
{
    addKey(path);
    SqliteStatement(m_connection.handle(),
                    "INSERT INTO registry_value (path, folded, name, type, data) "
                    "VALUES (?, ?, ?, ?, ?) ON CONFLICT (path, folded) DO UPDATE "
                    "SET type = excluded.type, data = excluded.data "
                    "WHERE type <> excluded.type OR data <> excluded.data")
        .with(path.folded())
        .with(name.toCaseFolded())
        .with(name)
        .with(value.type)
        .with(value.data)
        .run();
}

RegistryResult<QStringList> RegistryTables::valueNames(const RegistryPath &path)
{
    return names(path, "SELECT name FROM registry_value WHERE path = ? ORDER BY id");
}

RegistryResult<QStringList> RegistryTables::keyNames(const RegistryPath &path)
{
    return names(path, "SELECT name FROM registry_key WHERE parent = ? ORDER BY path");
}

RegistryResult<QStringList> RegistryTables::names(const RegistryPath &path, const char *sql)
{
    if (!hasKey(path))
        return {RegistryStatus::Missing};
    SqliteStatement statement(m_connection.handle(), sql);
    statement.with(path.folded());
    QStringList names;
    while (statement.next())
        if (const auto name = statement.text(0); name.size() <= RegistryPath::LongestValueName)
            names.append(name);
    return {RegistryStatus::Done, names};
}

} // namespace Quorlin
