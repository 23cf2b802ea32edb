#include "RegistryScene.h"

#include <QFile>

#include <sqlite3.h>

namespace Quorlin {

namespace {

constexpr auto All = QFile::Permissions(0x7777);

} // namespace

RegistryScene::RegistryScene()
    : m_store(std::make_shared<LayeredRegistry>(userFile(), machineFile()))
{
}

QString RegistryScene::userFile() const
{
    return m_folder.path("user/quorlin/registry.db");
}

QString RegistryScene::machineFile() const
{
    return m_folder.path("machine/quorlin/registry.db");
}

void RegistryScene::admitOrdinaryUser() const
{
    m_folder.makeFolder("user");
    if (!QFile::setPermissions(m_folder.path(), All & ~(QFile::WriteGroup | QFile::WriteOther)) ||
        !QFile::setPermissions(m_folder.path("user"), All))
        qFatal("cannot open the folder of the test");
}

void RegistryScene::write(quint32 root, const char *path, const char *name,
                          const QString &text) const
{
    const auto status = m_store->setValue({root, QString::fromUtf8(path)}, QString::fromUtf8(name),
                                          {RegistryType::Text, text.toUtf8()});
    if (status != RegistryStatus::Done)
        qFatal("cannot write into the registry of the test: %d", static_cast<int>(status));
}

std::optional<QString> RegistryScene::read(quint32 root, const char *path, const char *name) const
{
    const auto found =
        m_store->queryValue({root, QString::fromUtf8(path)}, QString::fromUtf8(name));
    return found.status == RegistryStatus::Done
               ? std::optional(QString::fromUtf8(found.result.data))
               : std::nullopt;
}

void runSql(const QString &file, const char *sql)
{
    sqlite3 *connection = nullptr;
    char *message = nullptr;
    if (sqlite3_open(file.toUtf8().constData(), &connection) != SQLITE_OK ||
        sqlite3_exec(connection, sql, nullptr, nullptr, &message) != SQLITE_OK)
        qFatal("cannot prepare a database: %s", message);
    sqlite3_close(connection);
}

bool isWhole(const QString &file)
{
    SqliteConnection connection(file, SqliteConnection::Access::Read, QDeadlineTimer(60000));
    SqliteStatement statement(connection.handle(), "PRAGMA integrity_check");
    return statement.next() && statement.text(0) == QLatin1String("ok");
}

NumberedError errorFrom(const std::function<void()> &action)
{
    try {
        action();
    } catch (const NumberedError &error) {
        return error;
    }
    qFatal("no error was raised");
}

} // namespace Quorlin
