#pragma once

#include <QString>

#include <com/sun/star/awt/XRequestCallback.hpp>
#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace Quorlin {

/// The line to a running office engine. Every call may throw css::lang::DisposedException when
/// the engine is gone.
class EngineConnection
{
public:
    EngineConnection() = default;
    ~EngineConnection();
    EngineConnection(const EngineConnection &) = delete;
    EngineConnection &operator=(const EngineConnection &) = delete;

    /// Calls the engine that listens on this pipe.
    /// @param bootstrap see EngineInstallation; the first call of a process decides.
    /// @return false while nobody listens.
    [[nodiscard]] bool open(const QString &pipeName, const QString &bootstrap);

    [[nodiscard]] const css::uno::Reference<css::frame::XDesktop2> &desktop() const
    {
        return m_desktop;
    }

    /// The way to the engine's main loop.
    [[nodiscard]] css::uno::Reference<css::awt::XRequestCallback> mainLoop() const;

    /// Such as "7.4.7.2".
    [[nodiscard]] QString version() const;

    /// Asks the engine to end. Returns when it has taken note or is gone.
    void terminate();

private:
    css::uno::Reference<css::uno::XComponentContext> m_local;
    css::uno::Reference<css::uno::XComponentContext> m_engine;
    css::uno::Reference<css::frame::XDesktop2> m_desktop;
};

} // namespace Quorlin
