#include "winsupport/clsKelCopyFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <algorithm>
#include <cstdio>

using namespace Quorlin;

namespace {

constexpr int BeatMilliseconds = 1;
constexpr double NanosecondsPerSecond = 1e9;

/// What a copy looks like from the thread that it keeps alive.
struct Watch
{
    explicit Watch(clsKelCopyFile &object)
    {
        QObject::connect(&object, &clsKelCopyFile::FileBegin, &beat, [this] {
            clock.start();
            lastBeat = 0;
        });
        QObject::connect(&object, &clsKelCopyFile::FilePercent, &beat, [this] { ++percents; });
        QObject::connect(&beat, &QTimer::timeout, &beat, [this] { noteBeat(); });
        beat.setTimerType(Qt::PreciseTimer);
        beat.start(BeatMilliseconds);
    }

    void noteBeat()
    {
        if (!clock.isValid())
            return;
        const auto now = clock.nsecsElapsed();
        longestGap = std::max(longestGap, now - lastBeat);
        lastBeat = now;
        ++beats;
    }

    QTimer beat;
    QElapsedTimer clock; ///< runs from FileBegin on
    qint64 lastBeat = 0;
    qint64 longestGap = 0;
    int percents = 0;
    int beats = 0;
};

} // namespace

/// bench-copy SOURCE DESTINATION copies as the window does and prints one line of JSON.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return 2;
    clsKelCopyFile object;
    Watch watch(object);
    QElapsedTimer call;
    call.start();
    const bool done = object.CopyFile(arguments[1], arguments[2], true, true);
    const auto callTime = call.nsecsElapsed();
    watch.noteBeat();
    const QJsonObject report{
        {QStringLiteral("done"), done},
        {QStringLiteral("call"), double(callTime) / NanosecondsPerSecond},
        {QStringLiteral("copy"), double(watch.lastBeat) / NanosecondsPerSecond},
        {QStringLiteral("percents"), watch.percents},
        {QStringLiteral("beats"), watch.beats},
        {QStringLiteral("gap"), double(watch.longestGap) / NanosecondsPerSecond}};
    std::puts(QJsonDocument(report).toJson(QJsonDocument::Compact).constData());
    return done ? 0 : 1;
}
