#include "tool/ProgressDisplay.h"

#include "tool/Console.h"

#include <algorithm>

namespace Quorlin {

namespace {

constexpr int LongestBar = 40;
constexpr int ShortestBar = 8;

} // namespace

ProgressDisplay::ProgressDisplay(Console &console, bool quiet)
    : m_console(console), m_width(console.errorWidth()), m_quiet(quiet)
{
}

void ProgressDisplay::setStage(const QString &text)
{
    m_stage = text;
    if (m_quiet)
        return;
    if (m_width == 0)
        m_console.note(text);
    else
        draw();
}

void ProgressDisplay::setPercent(int percent)
{
    const auto bounded = std::clamp(percent, 0, 100);
    if (bounded == m_percent)
        return;
    m_percent = bounded;
    if (!m_quiet && m_width > 0)
        draw();
}

void ProgressDisplay::hide()
{
    if (!m_shown)
        return;
    m_shown = false;
    m_console.writeError("\r\x1b[K");
}

void ProgressDisplay::draw()
{
    const int room = m_width - static_cast<int>(m_stage.size()) - 10;
    const int length = std::min(room, LongestBar);
    auto line = QStringLiteral("%1% %2").arg(m_percent, 3).arg(Console::harmless(m_stage));
    if (length >= ShortestBar) {
        const int done = length * m_percent / 100;
        line.prepend(QStringLiteral("[%1%2] ").arg(QString(done, QLatin1Char('#')),
                                                   QString(length - done, QLatin1Char('.'))));
    }
    m_console.writeError("\r" + line.left(m_width - 1).toUtf8() + "\x1b[K");
    m_shown = true;
}

} // namespace Quorlin
