#include "skin/controls/KelProgressBar.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTextStream>
#include <QWidget>

#include <algorithm>
#include <vector>

using Quorlin::KelProgressBar;

namespace {

constexpr int Rounds = 20;
constexpr int FullPercent = 100;

/// Counts the paint events of all widgets.
class PaintCounter : public QObject
{
public:
    [[nodiscard]] int take() { return std::exchange(m_count, 0); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && watched->isWidgetType())
            ++m_count;
        return QObject::eventFilter(watched, event);
    }

private:
    int m_count = 0;
};

void paintAll()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

double nth(std::vector<double> values, double share)
{
    std::ranges::sort(values);
    return values[std::size_t(double(values.size() - 1) * share)];
}

/// Microseconds from a new percentage until it is painted, and until it is grabbed as a picture.
struct Times
{
    std::vector<double> painted;
    std::vector<double> grabbed;
};

template <typename Action>
double timed(Action &&action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    return double(timer.nsecsElapsed()) / 1000.0;
}

Times measure(KelProgressBar &bar)
{
    Times times;
    for (int round = 0; round < Rounds; ++round) {
        for (qint16 percent = 0; percent <= FullPercent; ++percent) {
            times.painted.push_back(timed([&bar, percent] {
                bar.Percent(percent);
                paintAll();
            }));
            times.grabbed.push_back(timed([&bar] {
                if (bar.grab().isNull())
                    qFatal("nothing was grabbed");
            }));
        }
    }
    return times;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(440, 60);
    KelProgressBar bar(&window);
    bar.setGeometry(20, 20, 400, 20);
    bar.BorderStyle(1);
    window.show();
    paintAll();

    const auto times = measure(bar);
    PaintCounter paints;
    qApp->installEventFilter(&paints);
    bar.Percent(0);
    paintAll();
    const auto atStart = paints.take();
    for (qint16 percent = 1; percent <= FullPercent; ++percent) {
        bar.Percent(percent);
        paintAll();
    }
    const auto changed = paints.take();
    for (int repeat = 0; repeat < FullPercent; ++repeat) {
        bar.Value(FullPercent);
        paintAll();
    }
    const auto repeated = paints.take();
    if (atStart == 0 || changed == 0) {
        QTextStream(stderr) << "nothing was painted\n";
        return 1;
    }
    QTextStream(stdout) << "400 x 20 pixels, 0 to 100 %, " << Rounds << " rounds\n"
                        << "set and paint   median " << nth(times.painted, 0.5)
                        << " us, 95th of 100 " << nth(times.painted, 0.95) << " us\n"
                        << "grab            median " << nth(times.grabbed, 0.5) << " us\n"
                        << "paint events    " << double(changed) / FullPercent << " a step, "
                        << repeated << " for 100 equal values\n";
    return 0;
}
