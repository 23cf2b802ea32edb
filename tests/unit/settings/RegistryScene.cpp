#include "RegistryScene.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace Quorlin {

namespace {

constexpr auto All = QFile::Permissions(0x7777);

void permit(const QString &path, QFile::Permissions permissions)
{
    if (!QFile::setPermissions(path, permissions))
        qFatal("cannot set the permissions of a test's file");
}

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

RegistryKey RegistryScene::key()
{
    return {RegistryRoot::CurrentUser, QStringLiteral("A")};
}

RegistryStatus RegistryScene::set(const QByteArray &value) const
{
    return m_store->setValue(key(), {}, {RegistryType::Text, value});
}

RegistryStatus RegistryScene::get() const
{
    return m_store->queryValue(key(), {}).status;
}

void RegistryScene::fill() const
{
    for (auto number = 0; number < 30; ++number)
        write(RegistryRoot::CurrentUser, "A", QByteArray::number(number),
              QString(500, QLatin1Char('x')));
}

void RegistryScene::plant(const QByteArray &bytes) const
{
    m_folder.write("user/quorlin/registry.db", bytes);
}

QString RegistryScene::damaged(int number) const
{
    return userFile() + QStringLiteral(".damaged-%1").arg(number);
}

void RegistryScene::admitOrdinaryUser() const
{
    constexpr auto readable = QFile::Permissions(0x5555);
    m_folder.makeFolder("user");
    permit(m_folder.path("user"), All);
    for (const auto &path : {machineFile(), QFileInfo(machineFile()).path(), m_folder.path()})
        if (QFile::exists(path))
            permit(path, readable);
}

void RegistryScene::admitOwner() const
{
    for (const auto &path : {m_folder.path(), QFileInfo(machineFile()).path(), machineFile()})
        permit(path, All);
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
    const QDeadlineTimer deadline(60000);
    RegistryResult<RegistryValue> found;
    do {
        found = m_store->queryValue({root, QString::fromUtf8(path)}, QString::fromUtf8(name));
    } while (found.status == RegistryStatus::Busy && !deadline.hasExpired());
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
