#pragma once

namespace Quorlin {

class SkinLook;

/// What menus, message boxes, file dialogs and tool tips look like: windows of their own, which
/// take it from the whole program.
namespace ApplicationLook {

/// Gives the program a look's style, palette and font.
void wear(const SkinLook &look);

/// Sees to it that there is a look: the built-in one until a skin is worn.
void ensure();

} // namespace ApplicationLook

} // namespace Quorlin
