#include "component/confinement/Confinement.h"

#include "component/confinement/SystemPlaces.h"

#include <QtGlobal>

#include <algorithm>
#include <cstdlib>

namespace Quorlin {

namespace {

constexpr int CannotEnter = 126;

/// Both or none: without the filter, sockets would be made where the file rules forbid them.
bool isActive()
{
    return !Confinement::isSwitchedOff() && CallFilter::isSupported();
}

/// A script starts the programs that it consists of.
Boundaries withScripts(Boundaries boundaries)
{
    boundaries.startsPrograms = boundaries.startsPrograms ||
                                std::ranges::any_of(boundaries.runnable, SystemPlaces::isScript);
    return boundaries;
}

} // namespace

Confinement::Confinement(const Boundaries &boundaries)
    : m_active(isActive()), m_places(boundaries),
      m_calls(withScripts(boundaries), PlaceRules::scopesSignals())
{
}

bool Confinement::enter() const noexcept
{
    return !m_active || (m_places.apply() && m_calls.apply());
}

void Confinement::abandon() noexcept
{
    std::_Exit(CannotEnter);
}

bool Confinement::connectNoMore()
{
    if (!isActive())
        return true;
    Boundaries boundaries;
    boundaries.startsPrograms = true;
    return CallFilter(boundaries, true).apply();
}

QString Confinement::missing()
{
    if (isSwitchedOff())
        return QStringLiteral("the sandbox around the programs that open documents is switched "
                              "off (QUORLIN_SANDBOX)");
    if (!CallFilter::isSupported())
        return QStringLiteral("this system has no filters for system calls: the programs that "
                              "open documents run without a sandbox");
    if (PlaceRules::version() < 1)
        return QStringLiteral("this system has no Landlock: the programs that open documents can "
                              "reach all files of the user");
    return {};
}

bool Confinement::isSwitchedOff()
{
    return qEnvironmentVariable("QUORLIN_SANDBOX") == QLatin1String("off");
}

} // namespace Quorlin
