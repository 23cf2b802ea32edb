#pragma once

#include "settings/SqliteStatement.h"

#include <QDeadlineTimer>
#include <QString>

struct sqlite3;

namespace Quorlin {

/// An open database of whatever origin: its schema runs no code, and no operation goes on after
/// the deadline. Closing rolls back what was not committed.
class SqliteConnection
{
public:
    enum class Access { Read, Write };

    /// Values above this size are neither read nor written.
    static constexpr int MostValueBytes = 16 * 1024 * 1024;

    /// Opens a file that is there already.
    /// @throws SqliteError here and below.
    SqliteConnection(const QString &path, Access access, const QDeadlineTimer &deadline);
    ~SqliteConnection();
    SqliteConnection(const SqliteConnection &) = delete;
    SqliteConnection &operator=(const SqliteConnection &) = delete;

    /// Starts the one transaction; one that writes keeps all other writers out.
    void begin();
    /// What was written is on the disk when this returns.
    void commit();

    void run(const char *sql);
    [[nodiscard]] qint64 number(const char *sql);
    /// Rows that the last statement changed.
    [[nodiscard]] int changes() const;

    [[nodiscard]] sqlite3 *handle() const { return m_connection; }

private:
    void harden();
    static int keepWaiting(void *self, int times);
    static int mustStop(void *self);

    sqlite3 *m_connection = nullptr;
    Access m_access;
    QDeadlineTimer m_deadline;
};

} // namespace Quorlin
