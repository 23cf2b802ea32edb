#include "winsupport/SystemCopy.h"

#include "winsupport/ThreadedCopy.h"

namespace Quorlin {

SystemCopy &SystemCopy::native()
{
    static ThreadedCopy copy;
    return copy;
}

} // namespace Quorlin
