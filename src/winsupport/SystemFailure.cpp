#include "winsupport/SystemFailure.h"

#include <cerrno>
#include <system_error>

namespace Quorlin {

void SystemFailure::raise(int error, const std::string &what)
{
    throw std::system_error(error, std::generic_category(), what);
}

void SystemFailure::raiseLast(const char *what)
{
    const auto error = errno;
    raise(error, what);
}

} // namespace Quorlin
