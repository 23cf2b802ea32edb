#pragma once

#include <QString>

namespace Quorlin {

class Console;

/// Shows how far the work is: a bar on a terminal, one line for each stage elsewhere.
class ProgressDisplay
{
public:
    /// @param console must outlive the display. @param quiet shows nothing at all.
    ProgressDisplay(Console &console, bool quiet);

    void setStage(const QString &text);

    /// @param percent of the whole work, 0 to 100; other values are brought into it.
    void setPercent(int percent);

    /// Takes the bar away, so that other lines can be written. It comes back with the next
    /// change.
    void hide();

private:
    void draw();

    Console &m_console;
    int m_width; ///< columns; 0: lines instead of a bar
    bool m_quiet;
    bool m_shown = false;
    int m_percent = 0;
    QString m_stage;
};

} // namespace Quorlin
