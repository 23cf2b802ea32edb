#include "winsupport/CopyThread.h"

#include <QAbstractEventDispatcher>

namespace Quorlin {

CopyThread::CopyThread(FileCopy &work)
    : m_work(work), m_thread([this, waiting = QAbstractEventDispatcher::instance()] {
          const auto wake = [waiting] {
              if (waiting)
                  waiting->wakeUp();
          };
          m_outcome = m_work.run(wake);
          m_finished = true;
          wake();
      })
{
}

CopyThread::~CopyThread()
{
    m_work.stop();
    if (m_thread.joinable())
        m_thread.join();
}

SystemCopy::Outcome CopyThread::outcome()
{
    if (m_thread.joinable())
        m_thread.join();
    return m_outcome;
}

} // namespace Quorlin
