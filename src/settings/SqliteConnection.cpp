#include "settings/SqliteConnection.h"

#include <sqlite3.h>

#include <chrono>
#include <thread>

namespace Quorlin {

namespace {

constexpr std::chrono::microseconds Pause{200};
constexpr int StepsBetweenLooks = 100;

} // namespace

SqliteConnection::SqliteConnection(const QString &path, Access access,
                                   const QDeadlineTimer &deadline)
    : m_access(access), m_deadline(deadline)
{
    const auto flags = access == Access::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    const auto code = sqlite3_open_v2(path.toUtf8().constData(), &m_connection,
                                      flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    if (code != SQLITE_OK) {
        sqlite3_close(m_connection);
        throw SqliteError{code};
    }
    harden();
    sqlite3_busy_handler(m_connection, keepWaiting, this);
    sqlite3_progress_handler(m_connection, StepsBetweenLooks, mustStop, this);
}

SqliteConnection::~SqliteConnection()
{
    sqlite3_close(m_connection);
}

/// A database may come from anywhere.
void SqliteConnection::harden()
{
    for (const auto option : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER,
                              SQLITE_DBCONFIG_ENABLE_VIEW, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION,
                              SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER})
        sqlite3_db_config(m_connection, option, 0, nullptr);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // A log beside a damaged file belongs to what is set aside.
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    sqlite3_limit(m_connection, SQLITE_LIMIT_LENGTH, MostValueBytes);
    sqlite3_limit(m_connection, SQLITE_LIMIT_ATTACHED, 0);
}

/// The commit is the removal of the journal, and that removal is safe only once the folder is on
/// the disk: EXTRA.
void SqliteConnection::begin()
{
    run("PRAGMA temp_store = MEMORY");
    run("PRAGMA cell_size_check = ON");
    if (m_access == Access::Write)
        run("PRAGMA synchronous = EXTRA");
    run(m_access == Access::Write ? "BEGIN IMMEDIATE" : "BEGIN");
}

void SqliteConnection::commit()
{
    run("COMMIT");
}

void SqliteConnection::run(const char *sql)
{
    SqliteStatement(m_connection, sql).run();
}

qint64 SqliteConnection::number(const char *sql)
{
    SqliteStatement statement(m_connection, sql);
    return statement.next() ? statement.number(0) : 0;
}

int SqliteConnection::changes() const
{
    return sqlite3_changes(m_connection);
}

int SqliteConnection::keepWaiting(void *self, int /*times*/)
{
    if (mustStop(self) != 0)
        return 0;
    std::this_thread::sleep_for(Pause);
    return 1;
}

int SqliteConnection::mustStop(void *self)
{
    return static_cast<const SqliteConnection *>(self)->m_deadline.hasExpired() ? 1 : 0;
}

} // namespace Quorlin
