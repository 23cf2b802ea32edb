#include "skin/controls/KelProgressBar.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProgressBar>
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

template <typename Bar, typename Setter>
void measureRound(Bar &bar, Setter set, Times &times)
{
    for (int percent = 0; percent <= FullPercent; ++percent) {
        times.painted.push_back(timed([&] {
            set(percent);
            paintAll();
        }));
        times.grabbed.push_back(timed([&bar] {
            if (bar.grab().isNull())
                qFatal("nothing was grabbed");
        }));
    }
}

void report(QTextStream &out, const char *name, const Times &times)
{
    out << name << "set and paint: median " << nth(times.painted, 0.5) << " us, 95th of 100 "
        << nth(times.painted, 0.95) << " us; grab: median " << nth(times.grabbed, 0.5) << " us\n";
}

/// Paint events for each percentage from 1 to 100, and for the last one again 100 times.
struct Paints
{
    int changed = 0;
    int repeated = 0;
};

Paints countPaints(KelProgressBar &bar)
{
    PaintCounter counter;
    bar.Percent(0);
    paintAll();
    qApp->installEventFilter(&counter);
    Paints paints;
    for (qint16 percent = 1; percent <= FullPercent; ++percent) {
        bar.Percent(percent);
        paintAll();
    }
    paints.changed = counter.take();
    for (int repeat = 0; repeat < FullPercent; ++repeat) {
        bar.Percent(FullPercent);
        paintAll();
    }
    paints.repeated = counter.take();
    return paints;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(440, 100);
    KelProgressBar bar(&window);
    bar.setGeometry(20, 20, 400, 20);
    bar.BorderStyle(1);
    QProgressBar peer(&window);
    peer.setGeometry(20, 60, 400, 20);
    window.show();
    paintAll();

    Times ours;
    Times theirs;
    for (int round = 0; round < Rounds; ++round) {
        measureRound(
            bar, [&bar](int percent) { bar.Percent(qint16(percent)); }, ours);
        measureRound(
            peer, [&peer](int percent) { peer.setValue(percent); }, theirs);
    }
    const auto paints = countPaints(bar);
    QTextStream out(stdout);
    if (paints.changed < FullPercent) {
        out << "not every step was painted\n";
        return 1;
    }
    out << "400 x 20 pixels, 0 to 100 %, " << Rounds << " rounds\n";
    report(out, "KelProgressBar  ", ours);
    report(out, "QProgressBar    ", theirs);
    out << "paint events    " << double(paints.changed) / FullPercent << " a step, "
        << paints.repeated << " for 100 equal values\n";
    return 0;
}
