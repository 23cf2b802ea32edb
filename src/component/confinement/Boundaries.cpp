#include "component/confinement/Boundaries.h"

#include "component/confinement/FontPlaces.h"
#include "component/confinement/SystemPlaces.h"

namespace Quorlin {

Boundaries Boundaries::around(const QString &folder)
{
    Boundaries boundaries;
    boundaries.readable = SystemPlaces::readable() + FontPlaces::readable();
    boundaries.writable = {folder};
    return boundaries;
}

} // namespace Quorlin
