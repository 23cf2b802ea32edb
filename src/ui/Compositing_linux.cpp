#include "ui/Compositing.h"

#include <QGuiApplication>
#include <QLibrary>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace Quorlin::Compositing {

namespace {

/// The part of the display's protocol that is needed here. The toolkit has loaded the library
/// already when it speaks to such a display.
struct Cookie
{
    unsigned int sequence;
};
struct Reply
{
    std::uint8_t type;
    std::uint8_t padding;
    std::uint16_t sequence;
    std::uint32_t length;
    std::uint32_t value; ///< an atom or a window
};
struct Freed
{
    void operator()(Reply *reply) const { std::free(reply); }
};
using Answer = std::unique_ptr<Reply, Freed>;
using Connection = xcb_connection_t;
using AskAtom = Cookie (*)(Connection *, std::uint8_t, std::uint16_t, const char *);
using AskOwner = Cookie (*)(Connection *, std::uint32_t);
using Wait = Reply *(*)(Connection *, Cookie, void **);

template <typename Function>
Function resolved(QLibrary &library, const char *name)
{
    return reinterpret_cast<Function>(library.resolve(name));
}

/// Whoever composes the first screen holds its selection.
bool hasCompositor(Connection *display)
{
    QLibrary library(QStringLiteral("xcb"), 1);
    const auto askAtom = resolved<AskAtom>(library, "xcb_intern_atom");
    const auto waitForAtom = resolved<Wait>(library, "xcb_intern_atom_reply");
    const auto askOwner = resolved<AskOwner>(library, "xcb_get_selection_owner");
    const auto waitForOwner = resolved<Wait>(library, "xcb_get_selection_owner_reply");
    if (!askAtom || !waitForAtom || !askOwner || !waitForOwner)
        return true;
    constexpr auto Name = "_NET_WM_CM_S0";
    const Answer atom(
        waitForAtom(display, askAtom(display, 0, std::uint16_t(std::strlen(Name)), Name), nullptr));
    if (!atom)
        return true;
    const Answer owner(waitForOwner(display, askOwner(display, atom->value), nullptr));
    return !owner || owner->value != 0;
}

bool ask()
{
    const auto *const display =
        qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return !display || !display->connection() || hasCompositor(display->connection());
}

} // namespace

bool isActive()
{
    static const auto answer = ask();
    return answer;
}

} // namespace Quorlin::Compositing
