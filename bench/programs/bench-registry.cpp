// Measures registry writes by two processes at once, beside plain SQLite calls.
//
// Usage: bench-registry FOLDER WRITES
// FOLDER is made and must not be there yet. Ends with 1 when a written value is lost.
// `bench-registry write FILE NAME FROM WRITES` is one of the two processes.

#include "settings/LayeredRegistry.h"
#include "settings/Registry.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include <sqlite3.h>

using namespace Quorlin;

namespace {

const auto Key = QStringLiteral("Software\\Bench\\Registry");
constexpr auto Reads = 2000;
constexpr auto Rounds = 10;

std::shared_ptr<RegistryStore> storeOf(const QString &file)
{
    return std::make_shared<LayeredRegistry>(file, file + QStringLiteral("-machine"));
}

Registry bound(const QString &file)
{
    Registry registry(storeOf(file));
    registry.SetAppParam(RegistryRoot::CurrentUser, Key);
    return registry;
}

QString nameOf(const QString &writer, int number)
{
    return QStringLiteral("%1 %2").arg(writer).arg(number);
}

double seconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// Prints the longest time that one write took, in milliseconds.
int writeValues(const QString &file, const QString &writer, int from, int count)
{
    auto registry = bound(file);
    double longest = 0;
    for (auto number = from; number < from + count; ++number) {
        QElapsedTimer timer;
        timer.start();
        registry.SetAppData(nameOf(writer, number), QString::number(number));
        longest = std::max(longest, seconds(timer) * 1000);
    }
    std::printf("%.1f\n", longest);
    return 0;
}

/// What both sides took.
struct Times
{
    double ours = 0;    ///< seconds
    double plain = 0;   ///< seconds
    double slowest = 0; ///< milliseconds of the slowest registry write
};

bool runWriters(const QString &file, const QStringList &writers, int from, int count, Times &times)
{
    std::vector<std::unique_ptr<QProcess>> processes;
    QElapsedTimer timer;
    timer.start();
    for (const auto &writer : writers) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(
            QCoreApplication::applicationFilePath(),
            {QStringLiteral("write"), file, writer, QString::number(from), QString::number(count)});
    }
    auto done = true;
    for (const auto &process : processes) {
        done = process->waitForFinished(-1) && process->exitCode() == 0 && done;
        times.slowest =
            std::max(times.slowest, process->readAllStandardOutput().trimmed().toDouble());
    }
    times.ours += seconds(timer);
    return done;
}

int countLost(const QString &file, const QStringList &writers, int count)
{
    auto registry = bound(file);
    auto lost = 0;
    for (const auto &writer : writers)
        for (auto number = 0; number < count; ++number)
            lost += registry.GetAppData(nameOf(writer, number)) == QString::number(number) ? 0 : 1;
    return lost;
}

double timeOfRead(const QString &file, const QString &writer, int count)
{
    auto registry = bound(file);
    QElapsedTimer timer;
    timer.start();
    for (auto number = 0; number < Reads; ++number)
        static_cast<void>(registry.GetAppData(nameOf(writer, number % count)));
    return seconds(timer) / Reads;
}

bool execute(sqlite3 *connection, const char *sql)
{
    return sqlite3_exec(connection, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool writePlainly(sqlite3 *connection, int from, int count)
{
    sqlite3_stmt *statement = nullptr;
    auto done = sqlite3_prepare_v2(connection, "INSERT INTO value (name, data) VALUES (?, ?)", -1,
                                   &statement, nullptr) == SQLITE_OK;
    for (auto number = from; done && number < from + count; ++number) {
        const auto name = nameOf(QStringLiteral("plain"), number).toUtf8();
        const auto data = QByteArray::number(number);
        sqlite3_bind_text(statement, 1, name.constData(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(statement, 2, data.constData(), -1, SQLITE_TRANSIENT);
        done = sqlite3_step(statement) == SQLITE_DONE && sqlite3_reset(statement) == SQLITE_OK;
    }
    sqlite3_finalize(statement);
    return done;
}

/// One process, one connection that stays open, one transaction for each value, written to the
/// disk as the registry does it.
bool runPeer(const QString &file, int from, int count, Times &times)
{
    sqlite3 *connection = nullptr;
    auto done =
        sqlite3_open(file.toUtf8().constData(), &connection) == SQLITE_OK &&
        execute(connection, "PRAGMA synchronous = EXTRA") &&
        execute(connection, "CREATE TABLE IF NOT EXISTS value (name TEXT PRIMARY KEY, data TEXT)");
    QElapsedTimer timer;
    timer.start();
    done = done && writePlainly(connection, from, count);
    times.plain += seconds(timer);
    sqlite3_close(connection);
    return done;
}

/// Both sides in turn, so that whatever else the disk does falls on both.
bool runRounds(const QString &folder, const QStringList &writers, int each, Times &times)
{
    const auto processes = static_cast<int>(writers.size());
    for (auto round = 0; round < Rounds; ++round) {
        const auto from = each * round / Rounds;
        const auto count = each * (round + 1) / Rounds - from;
        if (!runWriters(folder + QStringLiteral("/registry.db"), writers, from, count, times) ||
            !runPeer(folder + QStringLiteral("/plain.db"), from * processes, count * processes,
                     times))
            return false;
    }
    return true;
}

int measure(const QString &folder, int writes)
{
    const QStringList writers{QStringLiteral("first"), QStringLiteral("second")};
    const auto each = static_cast<int>(writes / writers.size());
    const auto total = each * static_cast<int>(writers.size());
    Times times;
    if (!runRounds(folder, writers, each, times)) {
        std::fprintf(stderr, "bench-registry: a writer failed\n");
        return 1;
    }
    const auto file = folder + QStringLiteral("/registry.db");
    const auto lost = countLost(file, writers, each);
    std::printf("%d values by two processes at once: %.2f s, %.0f writes/s, slowest %.1f ms, "
                "%d lost\n",
                total, times.ours, total / times.ours, times.slowest, lost);
    std::printf("%d values by plain SQLite in one process: %.2f s, %.0f writes/s\n", total,
                times.plain, total / times.plain);
    std::printf("ratio: %.3f\n", times.ours / times.plain);
    std::printf("one read: %.3f ms\n", timeOfRead(file, writers.first(), each) * 1000);
    return lost == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() == 6 && arguments.at(1) == QLatin1String("write"))
        return writeValues(arguments.at(2), arguments.at(3), arguments.at(4).toInt(),
                           arguments.at(5).toInt());
    if (arguments.size() != 3 || arguments.at(2).toInt() < 2 * Rounds ||
        !QDir().mkdir(arguments.at(1))) {
        std::fprintf(stderr, "usage: bench-registry NEW-FOLDER WRITES\n");
        return 2;
    }
    return measure(QFileInfo(arguments.at(1)).absoluteFilePath(), arguments.at(2).toInt());
}
