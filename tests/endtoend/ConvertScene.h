#pragma once

#include "support/ProcessList.h"
#include "support/TestFolder.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QHash>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSet>

#include <chrono>
#include <functional>
#include <memory>

namespace Quorlin {

/// How a run of the tool ended, and what it said.
struct Outcome
{
    int exitCode = -1; ///< -1: it was still running at the deadline; -2: it was killed
    QString output;
    QString errors;
    QJsonObject report;
    double seconds = 0;

    /// "converted" or the reason, for each document in order.
    [[nodiscard]] QStringList results() const;
    /// The report's part about the document at this position, from 0.
    [[nodiscard]] QJsonObject document(qsizetype position) const;
    /// The path of the result of the document at this position, from 0.
    [[nodiscard]] QString pdf(qsizetype position = 0) const;
};

/// A user's world for one test: a home, a cache and a folder for temporary files that are
/// empty at first, and a folder of documents, which is the programs' current folder. All
/// processes that are started in it are known by a variable in their environment.
class ConvertScene
{
public:
    ConvertScene();
    /// Ends what still runs.
    ~ConvertScene();
    ConvertScene(const ConvertScene &) = delete;
    ConvertScene &operator=(const ConvertScene &) = delete;

    /// Writes a file into the documents' folder and returns its path. It is the user's: it must
    /// stay as it is.
    QString write(const QString &name, const QByteArray &bytes);
    /// Copies one of the examples into the documents' folder.
    QString copyExample(const QString &name);
    /// What lies at this path of the documents' folder may change or be there in the end.
    void mayChange(const QString &name);

    [[nodiscard]] QString path(const QString &name) const;
    [[nodiscard]] const TestFolder &world() const { return m_world; }
    [[nodiscard]] QString documents() const { return m_world.path("documents"); }
    [[nodiscard]] QString temporary() const { return m_world.path("tmp"); }
    [[nodiscard]] QString home() const { return m_world.path("home"); }

    void setVariable(const char *name, const QString &value);
    [[nodiscard]] const QProcessEnvironment &environment() const { return m_environment; }

    /// Runs the tool to its end; --json is added.
    Outcome convert(const QStringList &arguments);
    /// Lets another program start the tool from now on, which gets the tool's command line.
    void runThrough(const QStringList &program) { m_starter = program; }
    /// Starts the tool, which finish() waits for.
    void start(const QStringList &arguments);
    [[nodiscard]] Outcome finish(std::chrono::seconds limit = std::chrono::seconds(90));
    [[nodiscard]] QProcess &tool() { return m_tool; }

    [[nodiscard]] QList<RunningProcess> processes();
    /// The first process of this program, waiting for it to appear; 0 at the deadline or when
    /// the tool ends before.
    [[nodiscard]] qint64 processOf(const QString &program);
    /// Waits for something to become true. @return false at the deadline.
    static bool waitFor(const std::function<bool()> &state,
                        std::chrono::milliseconds limit = std::chrono::seconds(30));
    /// The same, but gives up as soon as the tool has ended.
    [[nodiscard]] bool waitWhileRunning(const std::function<bool()> &state);
    /// True once no process is left, which is waited for.
    [[nodiscard]] bool allProcessesEnd(std::chrono::milliseconds limit = std::chrono::seconds(8));

    /// Everything that should not be there any more or is not as the user left it; empty when
    /// all is well. Waits for processes that are about to end.
    [[nodiscard]] QString leftovers();
    /// The temporary files alone, while a run is under way or after it was killed.
    [[nodiscard]] QStringList temporaryFiles() const;

private:
    [[nodiscard]] QStringList strangeFiles() const;
    [[nodiscard]] QStringList changedFiles() const;
    [[nodiscard]] QStringList engineSockets() const;
    void takeReport(Outcome &outcome);

    struct UserFile
    {
        QByteArray content;
        QDateTime changed;
    };

    TestFolder m_world;
    QByteArray m_mark;
    QProcessEnvironment m_environment;
    QProcess m_tool;
    QStringList m_starter;
    QElapsedTimer m_clock;
    QHash<QString, UserFile> m_files;
    QSet<QString> m_known;
    QSet<QByteArray> m_pipes;
    int m_runs = 0;
    QString m_reportFile;
};

} // namespace Quorlin
