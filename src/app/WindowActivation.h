#pragma once

#include <QByteArray>

class QWidget;

namespace Quorlin {

/// Brings windows back that another instance asks for.
namespace WindowActivation {

/// Restores the window when it is minimised, and brings it to the front.
/// @param token what the desktop gave the one who asks; empty when nothing. Desktops that let
/// nobody come to the front by themselves want it.
void restoreAndRaise(QWidget &window, const QByteArray &token);

/// The token that the desktop gave this process for its first window; empty when none. The
/// toolkit takes it away when the application object is made.
[[nodiscard]] QByteArray ownToken();

} // namespace WindowActivation

} // namespace Quorlin
