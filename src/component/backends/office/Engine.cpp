#include "component/backends/office/Engine.h"

#include "component/backends/office/EngineBoundaries.h"
#include "component/backends/office/EngineEnvironment.h"
#include "component/backends/office/EngineSockets.h"

#include <QCoreApplication>
#include <QFile>
#include <QUrl>
#include <QUuid>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>

namespace Quorlin {

using namespace std::chrono_literals;

namespace {

constexpr auto ConnectLimit = 60s;
constexpr auto EndLimit = 1500ms;

/// With these codes the engine asks to be started again, as after it has set up a profile.
constexpr std::array RestartCodes{79, 81};
constexpr int MaxStarts = 3;

bool wantsRestart(std::optional<int> code)
{
    return code && std::ranges::find(RestartCodes, *code) != RestartCodes.end();
}

} // namespace

Engine::Engine(const EngineInstallation &installation, const QString &workFolder)
    : m_installation(installation), m_workFolder(workFolder), m_profile(workFolder),
      m_pipeName(QStringLiteral("quorlin-%1-%2")
                     .arg(QCoreApplication::applicationPid())
                     .arg(QUuid::createUuid().toString(QUuid::Id128)))
{
}

Engine::~Engine()
{
    end();
}

bool Engine::start()
{
    if (!m_profile.prepare(m_installation.buildId))
        return false;
    // Our end of the line, too, would make folders in the user's home.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_profile.homeFolder()));
    // The same place as the engine's, whose current folder is this one's too.
    qputenv("OSL_SOCKET_PATH", ".");
    for (int attempt = 0; attempt < MaxStarts; ++attempt) {
        if (!m_process.start(command()))
            return false;
        if (connect()) {
            EngineSockets::removeNames(m_process.id());
            return true;
        }
        if (!wantsRestart(m_process.exitCode()))
            break;
    }
    m_process.kill();
    return false;
}

/// What the engine keeps for all users goes into the profile too: left to itself, one that root
/// starts makes a folder of the system that nobody else may read, and no other engine starts then.
EngineCommand Engine::command() const
{
    const auto profile = QString::fromLatin1(
        QUrl::fromLocalFile(m_profile.profileFolder()).toEncoded(QUrl::FullyEncoded));
    return {
        m_installation.program(),
        {QStringLiteral("--headless"), QStringLiteral("--invisible"), QStringLiteral("--norestore"),
         QStringLiteral("--nologo"), QStringLiteral("--nodefault"), QStringLiteral("--nolockcheck"),
         QStringLiteral("--accept=pipe,name=%1;urp;").arg(m_pipeName),
         QStringLiteral("-env:UserInstallation=") + profile,
         QStringLiteral("-env:UNO_SHARED_PACKAGES_CACHE=") + profile + QStringLiteral("/shared")},
        EngineEnvironment::make(m_profile),
        m_workFolder,
        std::make_shared<const Confinement>(
            EngineBoundaries::ofEngine(m_installation, m_workFolder))};
}

/// The system ends what takes too much, and the engine ends itself when it gets no more. In both
/// cases it dies of a signal, with much in hand.
bool Engine::ranOutOfMemory()
{
    constexpr qint64 Much = qint64{1} << 30;
    (void)m_process.waitForEnd(EndLimit);
    return m_process.exitCode().value_or(0) > 128 && m_process.peakMemory() > Much;
}

bool Engine::connect()
{
    const auto end = std::chrono::steady_clock::now() + ConnectLimit;
    while (!m_process.exitCode() && std::chrono::steady_clock::now() < end) {
        if (m_connection.open(m_pipeName, m_installation.bootstrap()))
            return true;
        std::this_thread::sleep_for(5ms);
    }
    return false;
}

void Engine::end()
{
    std::jthread watchdog([this](const std::stop_token &stop) {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any wake;
        if (!wake.wait_for(lock, stop, EndLimit, [&stop] { return stop.stop_requested(); }))
            m_process.kill();
    });
    m_connection.terminate();
    watchdog.request_stop();
    if (!m_process.waitForEnd(EndLimit)) {
        m_process.kill();
        (void)m_process.waitForEnd(EndLimit);
    }
}

} // namespace Quorlin
