#include "tool/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace Quorlin::Terminal {

int width(std::FILE *stream)
{
    const int descriptor = ::fileno(stream);
    if (descriptor < 0 || ::isatty(descriptor) != 1)
        return 0;
    winsize size{};
    const bool known = ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

} // namespace Quorlin::Terminal
