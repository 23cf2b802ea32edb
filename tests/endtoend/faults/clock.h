#pragma once

namespace Quorlin {

/// The variable that names the file whose being there sets the wall clock back by a day, for every
/// program that is started with the library loaded. Clocks that only go forward stay as they are.
inline constexpr char ClockVariable[] = "QUORLIN_TEST_CLOCK";

} // namespace Quorlin
