#include "app/WindowActivation.h"

#include <QWidget>

namespace Quorlin {

namespace {

constexpr auto TokenVariable = "XDG_ACTIVATION_TOKEN";

} // namespace

/// The toolkit looks for the token in the environment at the moment of the request.
void WindowActivation::restoreAndRaise(QWidget &window, const QByteArray &token)
{
    if (!token.isEmpty())
        qputenv(TokenVariable, token);
    if (window.isMinimized())
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
    if (!token.isEmpty())
        qunsetenv(TokenVariable);
}

QByteArray WindowActivation::ownToken()
{
    const auto token = qgetenv(TokenVariable);
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

} // namespace Quorlin
