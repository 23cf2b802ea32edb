#include "winsupport/EventPump.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace Quorlin {

EventPump::EventPump()
{
    m_beat.start(LongestRest);
}

void EventPump::runPending()
{
    QCoreApplication::processEvents();
}

void EventPump::waitAndRun()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace Quorlin
