#include "component/backends/office/PasswordRefusal.h"

#include <com/sun/star/document/FilterOptionsRequest.hpp>
#include <com/sun/star/document/XInteractionFilterOptions.hpp>
#include <com/sun/star/task/PasswordRequest.hpp>
#include <com/sun/star/task/XInteractionAbort.hpp>

namespace Quorlin {

namespace {

/// Selects the first answer of this kind.
template <typename Answer>
bool select(const css::uno::Reference<css::task::XInteractionRequest> &request)
{
    const auto answers = request->getContinuations();
    for (const auto &answer : answers) {
        const css::uno::Reference<Answer> wanted(answer, css::uno::UNO_QUERY);
        if (!wanted.is())
            continue;
        wanted->select();
        return true;
    }
    return false;
}

} // namespace

void PasswordRefusal::handle(const css::uno::Reference<css::task::XInteractionRequest> &request)
{
    const auto question = request->getRequest();
    css::task::PasswordRequest password;
    if (question >>= password)
        m_asked = true;
    // How to read a text table is not a matter of trust: the engine's own guess is taken.
    css::document::FilterOptionsRequest options;
    if ((question >>= options) && select<css::document::XInteractionFilterOptions>(request))
        return;
    (void)select<css::task::XInteractionAbort>(request);
}

} // namespace Quorlin
