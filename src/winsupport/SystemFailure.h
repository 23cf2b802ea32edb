#pragma once

#include <string>

namespace Quorlin {

/// Errors of the system on their way through the work of a copy.
namespace SystemFailure {

/// Throws std::system_error. @param error the system's number. @param what what was tried.
[[noreturn]] void raise(int error, const std::string &what);

/// raise() with the number of the last call that failed. A plain text, because making a string
/// could change the number.
[[noreturn]] void raiseLast(const char *what);

} // namespace SystemFailure

} // namespace Quorlin
