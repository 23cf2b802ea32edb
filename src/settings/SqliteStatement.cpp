#include "settings/SqliteStatement.h"

#include <sqlite3.h>

namespace Quorlin {

SqliteStatement::SqliteStatement(sqlite3 *connection, const char *sql) : m_connection(connection)
{
    check(sqlite3_prepare_v2(connection, sql, -1, &m_statement, nullptr));
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_statement);
}

SqliteStatement &SqliteStatement::with(const QString &text)
{
    const auto utf8 = text.toUtf8();
    check(sqlite3_bind_text64(m_statement, ++m_parameters, utf8.constData(),
                              static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
    return *this;
}

/// No bytes are an empty value, not a missing one.
SqliteStatement &SqliteStatement::with(const QByteArray &bytes)
{
    const auto *const data = bytes.isEmpty() ? "" : bytes.constData();
    check(sqlite3_bind_blob64(m_statement, ++m_parameters, data,
                              static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT));
    return *this;
}

SqliteStatement &SqliteStatement::with(quint32 number)
{
    check(sqlite3_bind_int64(m_statement, ++m_parameters, number));
    return *this;
}

bool SqliteStatement::next()
{
    const auto code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        check(code);
    return false;
}

void SqliteStatement::run()
{
    while (next()) {
    }
}

QString SqliteStatement::text(int column) const
{
    const auto *const data = sqlite3_column_text(m_statement, column);
    const auto size = sqlite3_column_bytes(m_statement, column);
    return QString::fromUtf8(reinterpret_cast<const char *>(data), data ? size : 0);
}

QByteArray SqliteStatement::bytes(int column) const
{
    const auto *const data = sqlite3_column_blob(m_statement, column);
    const auto size = sqlite3_column_bytes(m_statement, column);
    return data ? QByteArray(static_cast<const char *>(data), size) : QByteArray("");
}

qint64 SqliteStatement::number(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

void SqliteStatement::check(int code) const
{
    if (code != SQLITE_OK)
        throw SqliteError{sqlite3_extended_errcode(m_connection)};
}

} // namespace Quorlin
