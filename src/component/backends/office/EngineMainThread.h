#pragma once

#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/awt/XRequestCallback.hpp>
#include <cppuhelper/implbase1.hxx>

#include <functional>
#include <future>

namespace Quorlin {

/// Work that runs while the engine's main thread waits for it.
///
/// The engine's main loop calls us, and whatever we ask of the engine in that call runs on its
/// main thread too. Between opening a document and closing it the engine thus does nothing on
/// its own: it lays out no windows, starts no idle work and fights with nobody for its lock.
class EngineMainThread
{
public:
    using Requests = css::uno::Reference<css::awt::XRequestCallback>;

    /// @param isAlive tells whether the engine still runs.
    EngineMainThread(Requests requests, std::function<bool()> isAlive);

    /// Runs the work, on another thread of this process, and waits for its end. Passes its
    /// exceptions on. @throws css::lang::DisposedException when the engine ends before.
    void run(const std::function<void()> &work);

private:
    Requests m_requests;
    std::function<bool()> m_isAlive;
};

} // namespace Quorlin
