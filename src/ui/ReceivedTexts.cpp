#include "ui/ReceivedTexts.h"

#include <utility>

namespace Quorlin {

ReceivedTexts::ReceivedTexts()
{
    tFiles.setInterval(0);
    connect(&tFiles, &QTimer::timeout, this, &ReceivedTexts::tFiles_Timer);
}

void ReceivedTexts::receive(const QString &text)
{
    if (!m_hasBeenShown) {
        m_early.append(text);
        return;
    }
    if (!m_pending.isEmpty()) {
        m_pending += QLatin1Char(';') + text;
        return;
    }
    m_pending = text;
    tFiles.start();
}

void ReceivedTexts::tFiles_Timer()
{
    tFiles.stop();
    Q_EMIT due(std::exchange(m_pending, {}));
}

void ReceivedTexts::windowShown()
{
    if (std::exchange(m_hasBeenShown, true))
        return;
    QTimer::singleShot(0, this, [this] {
        for (const auto &text : std::exchange(m_early, {}))
            Q_EMIT due(text);
    });
}

} // namespace Quorlin
