#pragma once

namespace Quorlin::Compositing {

/// Whether windows can be half transparent: some program puts the screen together from their
/// pictures. Asked once; where the system cannot be asked, they can.
[[nodiscard]] bool isActive();

} // namespace Quorlin::Compositing
