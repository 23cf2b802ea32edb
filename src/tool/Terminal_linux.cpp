#include "tool/Terminal.h"

#include <algorithm>
#include <cwchar>

#include <fcntl.h>
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

int columnsOf(char32_t character)
{
    return std::max(0, ::wcwidth(static_cast<wchar_t>(character)));
}

void fillClosedStreams()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The first free number is this one: those below it are open.
        if (::fcntl(descriptor, F_GETFD) < 0)
            (void)::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

} // namespace Quorlin::Terminal
