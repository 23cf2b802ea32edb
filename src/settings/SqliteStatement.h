#pragma once

#include <QByteArray>
#include <QString>

struct sqlite3;
struct sqlite3_stmt;

namespace Quorlin {

/// A call to SQLite that failed.
struct SqliteError
{
    int code = 0; ///< extended result code
};

/// One prepared statement. Every operation throws SqliteError when it fails.
class SqliteStatement
{
public:
    /// @param connection must outlive the statement.
    SqliteStatement(sqlite3 *connection, const char *sql);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;

    /// Sets the next parameter.
    SqliteStatement &with(const QString &text);
    SqliteStatement &with(const QByteArray &bytes);
    SqliteStatement &with(quint32 number);

    /// @return true when there is a row.
    [[nodiscard]] bool next();
    /// Does what the statement says and looks at no rows.
    void run();

    // The columns of the row, counted from 0.
    [[nodiscard]] QString text(int column) const;
    [[nodiscard]] QByteArray bytes(int column) const;
    [[nodiscard]] qint64 number(int column) const;

private:
    void check(int code) const;

    sqlite3 *m_connection;
    sqlite3_stmt *m_statement = nullptr;
    int m_parameters = 0;
};

} // namespace Quorlin
