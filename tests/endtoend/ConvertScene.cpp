#include "endtoend/ConvertScene.h"

#include "support/SystemActions.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>
#include <QUuid>

#include <algorithm>

namespace Quorlin {

using namespace std::chrono_literals;

namespace {

constexpr char MarkName[] = "QUORLIN_TEST_MARK";

QStringList filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::Files | QDir::Hidden | QDir::System,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    return files;
}

} // namespace

QStringList Outcome::results() const
{
    QStringList results;
    for (const auto &entry : report.value(QLatin1String("documents")).toArray()) {
        const auto reason = entry.toObject().value(QLatin1String("reason"));
        results.append(reason.toString(entry.toObject().value(QLatin1String("status")).toString()));
    }
    return results;
}

QJsonObject Outcome::document(qsizetype position) const
{
    return report.value(QLatin1String("documents")).toArray().at(position).toObject();
}

QString Outcome::pdf(qsizetype position) const
{
    return document(position).value(QLatin1String("output")).toString();
}

ConvertScene::ConvertScene()
    : m_mark(QUuid::createUuid().toByteArray(QUuid::Id128)),
      m_environment(QProcessEnvironment::systemEnvironment())
{
    setVariable("HOME", m_world.makeFolder("home"));
    setVariable("XDG_CACHE_HOME", m_world.makeFolder("cache"));
    setVariable("TMPDIR", m_world.makeFolder("tmp"));
    setVariable(MarkName, QString::fromLatin1(m_mark));
    for (const auto *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        m_environment.remove(QLatin1String(name));
    m_world.makeFolder("documents");
    m_world.makeFolder("reports");
}

ConvertScene::~ConvertScene()
{
    const auto ended = [this] {
        const auto left = processes();
        for (const auto &process : left)
            SystemActions::kill(process.id);
        return left.isEmpty();
    };
    if (!waitFor(ended, 10s))
        qWarning("processes of a test are still there");
    m_tool.waitForFinished(1000);
}

QString ConvertScene::path(const QString &name) const
{
    return documents() + QLatin1Char('/') + name;
}

QString ConvertScene::write(const QString &name, const QByteArray &bytes)
{
    const auto target = path(name);
    QFile file(target);
    if (!QDir().mkpath(QFileInfo(target).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(target));
    file.close();
    m_files.insert(target, {bytes, QFileInfo(target).lastModified()});
    return target;
}

QString ConvertScene::copyExample(const QString &name)
{
    const auto bytes = contentOf(QStringLiteral(QUORLIN_SOURCE_DIR "/examples/") + name);
    if (bytes.isEmpty())
        qFatal("the example %s is missing", qUtf8Printable(name));
    return write(name, bytes);
}

void ConvertScene::mayChange(const QString &name)
{
    m_files.remove(path(name));
    m_known.insert(path(name));
}

void ConvertScene::setVariable(const char *name, const QString &value)
{
    m_environment.insert(QString::fromLatin1(name), value);
}

Outcome ConvertScene::convert(const QStringList &arguments)
{
    start(arguments);
    return finish();
}

void ConvertScene::start(const QStringList &arguments)
{
    m_reportFile = m_world.path("reports/") + QString::number(++m_runs);
    m_tool.setProcessEnvironment(m_environment);
    m_tool.setWorkingDirectory(documents());
    m_tool.setStandardInputFile(QProcess::nullDevice());
    m_clock.start();
    auto command = m_starter +
                   QStringList{QStringLiteral(QUORLIN_BIN_DIR "/quorlin-convert"),
                               QStringLiteral("--json"), m_reportFile} +
                   arguments;
    const auto program = command.takeFirst();
    m_tool.start(program, command);
    m_tool.waitForStarted();
}

Outcome ConvertScene::finish(std::chrono::seconds limit)
{
    Outcome outcome;
    const auto milliseconds = std::chrono::milliseconds(limit).count();
    if (m_tool.state() != QProcess::NotRunning &&
        !m_tool.waitForFinished(static_cast<int>(milliseconds)))
        return outcome;
    outcome.seconds = static_cast<double>(m_clock.elapsed()) / 1000;
    outcome.exitCode = m_tool.exitStatus() == QProcess::NormalExit ? m_tool.exitCode() : -2;
    outcome.output = QString::fromUtf8(m_tool.readAllStandardOutput());
    outcome.errors = QString::fromUtf8(m_tool.readAllStandardError());
    takeReport(outcome);
    return outcome;
}

void ConvertScene::takeReport(Outcome &outcome)
{
    outcome.report = QJsonDocument::fromJson(contentOf(m_reportFile)).object();
    for (const auto &entry : outcome.report.value(QLatin1String("documents")).toArray())
        m_known.insert(entry.toObject().value(QLatin1String("output")).toString());
}

QList<RunningProcess> ConvertScene::processes()
{
    const auto found = ProcessList::withVariable(MarkName, m_mark);
    for (const auto &process : found) {
        const auto at = process.commandLine.indexOf("pipe,name=");
        if (at >= 0)
            m_pipes.insert(process.commandLine.mid(at + 10).split(';').first());
    }
    return found;
}

qint64 ConvertScene::processOf(const QString &program)
{
    qint64 id = 0;
    (void)waitWhileRunning([&] {
        for (const auto &process : processes())
            if (process.name == program)
                id = process.id;
        return id != 0;
    });
    return id;
}

bool ConvertScene::waitWhileRunning(const std::function<bool()> &state)
{
    bool reached = false;
    (void)waitFor([&] {
        reached = state();
        return reached || m_tool.state() == QProcess::NotRunning;
    });
    return reached;
}

bool ConvertScene::waitFor(const std::function<bool()> &state, std::chrono::milliseconds limit)
{
    QElapsedTimer clock;
    clock.start();
    while (!state()) {
        if (clock.hasExpired(limit.count()))
            return false;
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
    return true;
}

bool ConvertScene::allProcessesEnd(std::chrono::milliseconds limit)
{
    return waitFor([this] { return processes().isEmpty(); }, limit);
}

QString ConvertScene::leftovers()
{
    QStringList all;
    if (!allProcessesEnd())
        for (const auto &process : processes())
            all += QStringLiteral("process %1 %2").arg(process.id).arg(process.name);
    all += temporaryFiles() + strangeFiles() + changedFiles() + engineSockets();
    return all.join(QLatin1Char('\n'));
}

QStringList ConvertScene::temporaryFiles() const
{
    QStringList all;
    for (const auto &name : namesIn(temporary()))
        all += temporary() + QLatin1Char('/') + name;
    for (const auto *folder : {"cache", "home"})
        all += filesBelow(m_world.path(folder));
    all.removeIf([this](const QString &file) { return m_known.contains(file); });
    return all;
}

QStringList ConvertScene::strangeFiles() const
{
    auto all = filesBelow(documents());
    all.removeIf(
        [this](const QString &file) { return m_files.contains(file) || m_known.contains(file); });
    return all;
}

QStringList ConvertScene::changedFiles() const
{
    QStringList changed;
    for (auto file = m_files.cbegin(); file != m_files.cend(); ++file)
        if (contentOf(file.key()) != file->content ||
            QFileInfo(file.key()).lastModified() != file->changed)
            changed += QStringLiteral("changed: ") + file.key();
    return changed;
}

/// The engine's line to its worker is a name in the folder that all programs share.
QStringList ConvertScene::engineSockets() const
{
    QStringList found;
    for (const auto &name : namesIn(QStringLiteral("/tmp")))
        for (const auto &pipe : m_pipes)
            if (name.endsWith(QString::fromUtf8(pipe)))
                found += QStringLiteral("/tmp/") + name;
    return found;
}

} // namespace Quorlin
