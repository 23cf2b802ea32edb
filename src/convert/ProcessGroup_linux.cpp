#include "convert/ProcessGroup.h"

#include <QProcess>

#include <unistd.h>

namespace Quorlin {

void leadOwnProcessGroup(QProcess &process)
{
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
}

} // namespace Quorlin
