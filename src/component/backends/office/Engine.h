#pragma once

#include "component/backends/office/EngineConnection.h"
#include "component/backends/office/EngineInstallation.h"
#include "component/backends/office/EngineProcess.h"
#include "component/backends/office/EngineProfile.h"

#include <QString>

namespace Quorlin {

/// One warm office engine of our own: started, connected, and ended with this object.
class Engine
{
public:
    /// @param workFolder absolute, existing, private to this process.
    Engine(const EngineInstallation &installation, const QString &workFolder);
    ~Engine();
    Engine(const Engine &) = delete;
    Engine &operator=(const Engine &) = delete;

    /// Starts and connects, which takes a fraction of a second.
    /// @return false when the engine ended or did not answer in time.
    [[nodiscard]] bool start();

    /// The engine's process, its version and its desktop, once started.
    [[nodiscard]] qint64 processId() const { return m_process.id(); }
    [[nodiscard]] QString version() const { return m_connection.version(); }
    [[nodiscard]] const EngineConnection &connection() const { return m_connection; }
    [[nodiscard]] bool isAlive() { return !m_process.exitCode(); }
    /// Whether it ended as it does when it gets no more memory.
    [[nodiscard]] bool ranOutOfMemory();

private:
    [[nodiscard]] EngineCommand command() const;
    [[nodiscard]] bool connect();
    void end();

    EngineInstallation m_installation;
    QString m_workFolder;
    EngineProfile m_profile;
    QString m_pipeName;
    EngineProcess m_process;
    EngineConnection m_connection;
};

} // namespace Quorlin
