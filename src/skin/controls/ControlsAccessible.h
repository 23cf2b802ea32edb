#pragma once

namespace Quorlin {

/// What assistive tools are told about the controls of this folder.
namespace ControlsAccessible {

/// Makes the controls known; the controls do it themselves. More than once does no harm.
void install();

} // namespace ControlsAccessible

} // namespace Quorlin
