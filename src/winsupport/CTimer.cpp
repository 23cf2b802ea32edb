#include "winsupport/CTimer.h"

#include "winsupport/MTimer.h"

namespace Quorlin {

CTimer::CTimer(QObject *parent) : QObject(parent) {}

CTimer::~CTimer()
{
    Interval(0);
}

void CTimer::Interval(const qint32 &value)
{
    if (value >= 1 && value != m_interval) {
        if (m_interval != 0)
            MTimer::unregisterTimer(*this);
        m_interval = value;
        if (!MTimer::registerTimer(*this))
            MTimer::raiseError(MTimer::NoSystemTimer);
    } else if (value < 1 && m_interval > 0) {
        m_interval = 0;
        MTimer::unregisterTimer(*this);
    }
}

void CTimer::PulseTimer()
{
    Q_EMIT ThatTime();
}

} // namespace Quorlin
