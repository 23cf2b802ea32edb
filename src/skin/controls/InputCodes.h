#pragma once

#include <Qt>

class QKeyEvent;

namespace Quorlin {

/// The numbers by which the controls' events tell keys and buttons.
namespace InputCodes {

/// 1 Shift, 2 Ctrl, 4 Alt, added up.
[[nodiscard]] int shift(Qt::KeyboardModifiers modifiers);

/// 1 left, 2 right, 4 middle, added up; other buttons do not count.
[[nodiscard]] int buttons(Qt::MouseButtons pressed);

/// The virtual code of a key: 65 for A, 13 for Enter, 112 for F1; 0 when the key has none.
[[nodiscard]] int key(const QKeyEvent &event);

} // namespace InputCodes

} // namespace Quorlin
