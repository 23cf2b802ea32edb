#pragma once

#include <com/sun/star/task/XInteractionHandler.hpp>
#include <cppuhelper/implbase1.hxx>

#include <atomic>

namespace Quorlin {

/// Answers the engine's questions while it loads a document: nobody is there to be asked. How a
/// table of text is to be read, the engine decides itself; to everything else it gets no for an
/// answer, and a question for a password is remembered.
class PasswordRefusal : public cppu::WeakImplHelper1<css::task::XInteractionHandler>
{
public:
    void SAL_CALL
    handle(const css::uno::Reference<css::task::XInteractionRequest> &request) override;

    [[nodiscard]] bool wasAsked() const { return m_asked; }

private:
    std::atomic<bool> m_asked = false;
};

} // namespace Quorlin
