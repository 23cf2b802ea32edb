// A process with a journal, made to be killed by a test.
//
// Usage: journal-keeper JOURNALS DOCUMENTS WHAT…
//   placed     puts a finished file beside the documents
//   planned    notes a file and never makes it
//   begun      notes a file and makes it, but copies nothing
//   folder     makes its working folder, with things in it
//   close      closes the journal at last
// Prints the working folder's path or an empty line, and waits.

#include "component/supervisor/Journal.h"
#include "component/supervisor/Outputs.h"
#include "component/supervisor/WorkFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QThread>

#include <cstdio>

using namespace Quorlin;

namespace {

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

bool fill(const QString &folder, const QString &documents)
{
    return QDir().mkpath(folder + QStringLiteral("/a/b/c")) &&
           write(folder + QStringLiteral("/a/b/c/file"), "content") &&
           write(folder + QStringLiteral("/.hidden"), "content") &&
           QFile::link(documents, folder + QStringLiteral("/a/link"));
}

bool place(Journal &journal, const QString &documents)
{
    Outputs outputs(journal);
    const auto from = documents + QStringLiteral("/source");
    return write(from, "printed") &&
           outputs.place(from, documents, QStringLiteral("report"), QStringLiteral("ps"), {})
                   .result == ExclusiveFile::Result::Done &&
           QFile::remove(from);
}

bool begin(Journal &journal, const QString &documents)
{
    const auto path = documents + QStringLiteral("/begun.ps~");
    journal.planFile(path, documents + QStringLiteral("/gone"));
    return write(path, {});
}

bool act(const QString &what, const QString &documents, Journal &journal, WorkFolder &folder)
{
    if (what == QLatin1String("folder"))
        return folder.create() && fill(folder.path(), documents);
    if (what == QLatin1String("placed"))
        return place(journal, documents);
    if (what == QLatin1String("begun"))
        return begin(journal, documents);
    if (what == QLatin1String("planned"))
        journal.planFile(documents + QStringLiteral("/planned.ps~"), QString());
    if (what == QLatin1String("close"))
        journal.close();
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    Journal journal(arguments.value(1));
    WorkFolder folder(journal);
    if (!journal.open())
        return 1;
    for (const auto &what : arguments.mid(3))
        if (!act(what, arguments.value(2), journal, folder))
            return 1;
    std::puts(qUtf8Printable(folder.path()));
    std::fflush(stdout);
    for (;;)
        QThread::sleep(1000);
}
