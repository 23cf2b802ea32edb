#include "ui/DocumentIntake.h"
#include "ui/DocumentList.h"
#include "ui/FileList.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <vector>

using namespace Quorlin;

namespace {

constexpr int Folders = 10;
constexpr int FilesOfAFolder = 1000;
constexpr int Rounds = 7;

/// Milliseconds.
struct Times
{
    double total = 0;
    double first = 0; ///< until the first document is in the list
    double block = 0; ///< longest time without an event of the window being handled
    int count = 0;
};

double since(const QElapsedTimer &clock)
{
    return double(clock.nsecsElapsed()) / 1e6;
}

/// Keeps the longest time between two turns of the event loop.
class Heartbeat
{
public:
    Heartbeat()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { beat(); });
        m_clock.start();
        m_timer.start(0);
    }

    void beat()
    {
        m_longest = std::max(m_longest, since(m_clock));
        m_clock.restart();
    }

    [[nodiscard]] double longest() const { return m_longest; }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    double m_longest = 0;
};

void makeDocuments(const QString &parent)
{
    for (int folder = 0; folder < Folders; ++folder) {
        const auto path = QStringLiteral("%1/folder %2").arg(parent).arg(folder);
        if (!QDir().mkpath(path))
            qFatal("cannot make a folder");
        for (int number = 0; number < FilesOfAFolder; ++number) {
            const auto *const extension = number % 2 == 0 ? "txt" : "docx";
            QFile file(QStringLiteral("%1/report %2.%3")
                           .arg(path)
                           .arg(number)
                           .arg(QLatin1String(extension)));
            if (!file.open(QIODevice::WriteOnly) || file.write("text\n") != 5)
                qFatal("cannot write a file");
        }
    }
}

void paintAll()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

Times addAsTheWindowDoes(const QString &folder)
{
    FileList visible;
    visible.resize(300, 300);
    visible.show();
    paintAll();
    DocumentList documents(visible);
    DocumentIntake intake;
    QEventLoop loop;
    Times times;
    QElapsedTimer clock;
    QObject::connect(&intake, &DocumentIntake::documentsAccepted, [&](const QStringList &batch) {
        documents.addDocuments(batch);
        if (times.first == 0)
            times.first = since(clock);
    });
    QObject::connect(&intake, &DocumentIntake::idle, &loop, &QEventLoop::quit);
    Heartbeat heartbeat;
    clock.start();
    intake.add({folder});
    loop.exec();
    paintAll();
    heartbeat.beat();
    times.total = since(clock);
    times.block = heartbeat.longest();
    times.count = std::min(documents.count(), qint32(visible.count()));
    return times;
}

/// @param asks whether each file is looked at, as the window does.
Times addInALoop(const QString &folder, bool asks)
{
    QListWidget visible;
    visible.resize(300, 300);
    visible.show();
    paintAll();
    Times times;
    QElapsedTimer clock;
    clock.start();
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        if (!asks || PDFLib::refusalOf(files.filePath()).code() == 0)
            visible.addItem(files.fileName());
    }
    paintAll();
    times.total = since(clock);
    times.first = times.total;
    times.block = times.total;
    times.count = visible.count();
    return times;
}

/// All documents known already, as after a conversion.
Times addAtOnce()
{
    FileList visible;
    visible.resize(300, 300);
    visible.show();
    paintAll();
    DocumentList documents(visible);
    QStringList many;
    for (int number = 0; number < Folders * FilesOfAFolder; ++number)
        many.append(QStringLiteral("/folder/report %1.docx").arg(number));
    Times times;
    QElapsedTimer clock;
    clock.start();
    documents.addDocuments(many);
    times.first = since(clock);
    paintAll();
    times.total = since(clock);
    times.block = times.total;
    times.count = visible.count();
    return times;
}

double median(const std::vector<Times> &all, double Times::*which)
{
    std::vector<double> values;
    for (const auto &times : all)
        values.push_back(times.*which);
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

void report(QTextStream &out, const char *name, const std::vector<Times> &all)
{
    double worst = 0;
    for (const auto &times : all)
        worst = std::max(worst, times.block);
    out << name << "  " << median(all, &Times::total) << " ms; first document shown after "
        << median(all, &Times::first) << " ms; longest block " << median(all, &Times::block)
        << " ms, at worst " << worst << " ms\n";
}

bool isComplete(const std::vector<Times> &all)
{
    return std::ranges::all_of(
        all, [](const Times &times) { return times.count == Folders * FilesOfAFolder; });
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    makeDocuments(folder.path());
    std::vector<Times> ours;
    std::vector<Times> atOnce;
    std::vector<Times> plain;
    std::vector<Times> asking;
    for (int round = 0; round < Rounds; ++round) {
        ours.push_back(addAsTheWindowDoes(folder.path()));
        plain.push_back(addInALoop(folder.path(), false));
        asking.push_back(addInALoop(folder.path(), true));
        atOnce.push_back(addAtOnce());
    }
    QTextStream out(stdout);
    out.setRealNumberPrecision(3);
    if (!isComplete(ours) || !isComplete(plain) || !isComplete(asking) || !isComplete(atOnce)) {
        out << "documents are missing\n";
        return 1;
    }
    out << Folders * FilesOfAFolder << " documents in " << Folders << " folders, medians of "
        << Rounds << " rounds\n";
    report(out, "window                        ", ours);
    report(out, "plain loop                    ", plain);
    report(out, "plain loop that looks at files", asking);
    report(out, "window, documents known       ", atOnce);
    out << "window to plain loop           "
        << median(ours, &Times::total) / median(plain, &Times::total) << '\n'
        << "window to loop that looks      "
        << median(ours, &Times::total) / median(asking, &Times::total) << '\n';
    return 0;
}
