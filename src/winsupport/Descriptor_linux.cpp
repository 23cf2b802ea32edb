#include "winsupport/Descriptor.h"

#include <unistd.h>

namespace Quorlin {

Descriptor::~Descriptor()
{
    if (isOpen())
        ::close(m_number);
}

} // namespace Quorlin
