#include "component/backends/office/EngineMainThread.h"

#include <com/sun/star/lang/DisposedException.hpp>

#include <chrono>
#include <utility>

namespace Quorlin {

using namespace std::chrono_literals;

namespace {

/// Runs the work once, when the engine's main loop gets to it.
class Call : public cppu::WeakImplHelper1<css::awt::XCallback>
{
public:
    explicit Call(const std::function<void()> &work) : m_task(work) {}

    [[nodiscard]] std::future<void> done() { return m_task.get_future(); }

    void SAL_CALL notify(const css::uno::Any &) override { m_task(); }

private:
    std::packaged_task<void()> m_task;
};

} // namespace

EngineMainThread::EngineMainThread(Requests requests, std::function<bool()> isAlive)
    : m_requests(std::move(requests)), m_isAlive(std::move(isAlive))
{
}

void EngineMainThread::run(const std::function<void()> &work)
{
    auto *const call = new Call(work);
    const css::uno::Reference<css::awt::XCallback> callback(call);
    auto done = call->done();
    m_requests->addCallback(callback, {});
    while (done.wait_for(100ms) != std::future_status::ready) {
        // A dead engine fails every call to it, so that work that has begun ends by itself.
        if (!m_isAlive() && done.wait_for(2s) != std::future_status::ready)
            throw css::lang::DisposedException();
    }
    done.get();
}

} // namespace Quorlin
