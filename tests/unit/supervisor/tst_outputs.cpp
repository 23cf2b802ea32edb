#include "component/supervisor/Outputs.h"

#include "component/supervisor/Journal.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QThreadPool>

#include <memory>

using namespace Quorlin;
using Result = ExclusiveFile::Result;
using Step = Outputs::Step;

class TestOutputs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void placesUnderAHiddenName();
    void neverOverwritesWhatIsThere_data();
    void neverOverwritesWhatIsThere();
    void threadsPlaceFilesOfOneNameSideBySide();
    void remembersWhatIsKnownOfAFile();
    void doesNotKnowAFileThatWasNotMadeHere();
    void doesNotKnowAFileThatWasChanged();
    void doesNotKnowAFileThatIsGone();
    void removesTheFileAndTheKeptCopy();
    void removesTheFolderThatGoesWithAFile();
    void keepsWhatCannotBeRemovedForLater();
    void neverRemovesAFileThatItDidNotMake();
    void keepsAFileThatTheUserPutInItsPlace();
    void keepsALinkThatTheUserPutInItsPlace();
    void keepsAFileThatTheUserRenamed();
    void clearsOneStepOnly();
    void clearsAll();
    void tellsThatNothingCanBeWritten();
    void tellsThatThereIsNoRoom();

private:
    Outputs::Placed place(const char *base, const Outputs::Output &properties = {});

    std::unique_ptr<TestFolder> m_folder; ///< the user's
    std::unique_ptr<TestFolder> m_work;
    std::unique_ptr<Journal> m_journal;
    std::unique_ptr<Outputs> m_outputs;
};

void TestOutputs::init()
{
    m_folder = std::make_unique<TestFolder>();
    m_work = std::make_unique<TestFolder>();
    m_journal = std::make_unique<Journal>(m_work->path("journals"));
    QVERIFY(m_journal->open());
    m_outputs = std::make_unique<Outputs>(*m_journal);
}

void TestOutputs::cleanup()
{
    m_outputs.reset();
    m_journal.reset();
    m_work.reset();
    m_folder.reset();
}

Outputs::Placed TestOutputs::place(const char *base, const Outputs::Output &properties)
{
    return m_outputs->place(m_work->write(base, QByteArray("content of ") + base), m_folder->path(),
                            QString::fromUtf8(base), QStringLiteral("ps"), properties);
}

void TestOutputs::placesUnderAHiddenName()
{
    const auto placed = place("report");
    QCOMPARE(placed.result, Result::Done);
    QCOMPARE(placed.path, m_folder->path("report.ps~"));
    QCOMPARE(contentOf(placed.path), QByteArray("content of report"));
    QCOMPARE(contentOf(m_work->path("report")), QByteArray("content of report"));
}

void TestOutputs::neverOverwritesWhatIsThere_data()
{
    QTest::addColumn<QString>("what");
    for (const char *what : {"file", "empty", "folder", "link", "dangling link", "pipe"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void TestOutputs::neverOverwritesWhatIsThere()
{
    QFETCH(const QString, what);
    const auto path = m_folder->path("report.ps~");
    const auto users = m_work->write("users", "the user's");
    if (what == QLatin1String("file"))
        m_folder->write("report.ps~", "the user's");
    if (what == QLatin1String("empty"))
        m_folder->write("report.ps~", "");
    if (what == QLatin1String("folder"))
        m_folder->makeFolder("report.ps~");
    if (what == QLatin1String("link"))
        QVERIFY(QFile::link(users, path));
    if (what == QLatin1String("dangling link"))
        QVERIFY(QFile::link(m_work->path("nowhere"), path));
    if (what == QLatin1String("pipe"))
        QVERIFY(SystemActions::makeFifo(path));
    const auto before = ExclusiveFile::versionOf(path);
    const auto placed = place("report");
    QCOMPARE(placed.result, Result::Done);
    QCOMPARE(placed.path, m_folder->path("report.ps2~"));
    m_outputs->clearAll();
    QCOMPARE(ExclusiveFile::versionOf(path), before);
    QCOMPARE(contentOf(users), QByteArray("the user's"));
    QCOMPARE(m_folder->names(), QStringList{QStringLiteral("report.ps~")});
}

void TestOutputs::threadsPlaceFilesOfOneNameSideBySide()
{
    constexpr int Count = 40;
    const auto from = m_work->write("report", "content");
    QThreadPool threads;
    threads.setMaxThreadCount(8);
    for (int i = 0; i < Count; ++i)
        threads.start([&] {
            (void)m_outputs->place(from, m_folder->path(), QStringLiteral("report"),
                                   QStringLiteral("ps"), {});
        });
    threads.waitForDone();
    QCOMPARE(m_folder->names().size(), Count);
    for (const auto &name : m_folder->names())
        QVERIFY(m_outputs->find(m_folder->path(qUtf8Printable(name))));
}

void TestOutputs::remembersWhatIsKnownOfAFile()
{
    const auto placed =
        place("report", {.step = Step::Distil, .origin = PostScriptOrigin::Ours, .pages = 12});
    const auto known = m_outputs->find(placed.path);
    QVERIFY(known);
    QCOMPARE(known->step, Step::Distil);
    QCOMPARE(known->origin, PostScriptOrigin::Ours);
    QCOMPARE(known->pages, 12);
    QCOMPARE(known->kept, m_work->path("report"));
}

void TestOutputs::doesNotKnowAFileThatWasNotMadeHere()
{
    QVERIFY(!m_outputs->find(m_folder->write("foreign.ps", "%!")));
    QVERIFY(!m_outputs->find(m_folder->path("gone.ps~")));
}

void TestOutputs::doesNotKnowAFileThatWasChanged()
{
    const auto placed = place("report");
    m_folder->write("report.ps~", "%! something else");
    QVERIFY(!m_outputs->find(placed.path));
}

void TestOutputs::doesNotKnowAFileThatIsGone()
{
    const auto placed = place("report");
    QVERIFY(QFile::remove(placed.path));
    QVERIFY(!m_outputs->find(placed.path));
}

void TestOutputs::removesTheFileAndTheKeptCopy()
{
    const auto placed = place("report");
    m_outputs->remove(placed.path);
    QCOMPARE(m_folder->names(), QStringList());
    QVERIFY(!QFileInfo::exists(m_work->path("report")));
    QVERIFY(!m_outputs->find(placed.path));
}

void TestOutputs::removesTheFolderThatGoesWithAFile()
{
    const auto folder = m_work->makeFolder("document");
    m_work->write("document/report.odt", "the document");
    const auto placed = place("report", {.folder = folder});
    m_outputs->remove(placed.path);
    QVERIFY(!QFileInfo::exists(folder));
}

void TestOutputs::keepsWhatCannotBeRemovedForLater()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto readOnly = QFile::ReadOwner | QFile::ExeOwner;
    const auto placed =
        m_outputs->place(folder.write("from", "content"), folder.makeFolder("locked"),
                         QStringLiteral("report"), QStringLiteral("ps"), {});
    QCOMPARE(placed.result, Result::Done);
    QVERIFY(QFile::setPermissions(folder.path("locked"), readOnly));
    m_outputs->remove(placed.path);
    QVERIFY(QFileInfo::exists(placed.path));
    QVERIFY(QFile::setPermissions(folder.path("locked"), readOnly | QFile::WriteOwner));
    m_outputs->clearAll();
    QVERIFY(!QFileInfo::exists(placed.path));
}

void TestOutputs::neverRemovesAFileThatItDidNotMake()
{
    const auto users = m_folder->write("report.ps", "the user's");
    m_outputs->remove(users);
    m_outputs->remove(m_folder->path());
    m_outputs->clearAll();
    QCOMPARE(contentOf(users), QByteArray("the user's"));
}

void TestOutputs::keepsAFileThatTheUserPutInItsPlace()
{
    const auto placed = place("report");
    m_work->write("users", "the user's");
    QVERIFY(QFile::remove(placed.path));
    QVERIFY(QFile::rename(m_work->path("users"), placed.path));
    QVERIFY(!m_outputs->find(placed.path));
    m_outputs->remove(placed.path);
    m_outputs->clearAll();
    QCOMPARE(contentOf(placed.path), QByteArray("the user's"));
}

void TestOutputs::keepsALinkThatTheUserPutInItsPlace()
{
    const auto placed = place("report");
    const auto users = m_folder->write("users", "the user's");
    QVERIFY(QFile::remove(placed.path));
    QVERIFY(QFile::link(users, placed.path));
    m_outputs->clearAll();
    QVERIFY(QFileInfo(placed.path).isSymLink());
    QCOMPARE(contentOf(users), QByteArray("the user's"));
}

void TestOutputs::keepsAFileThatTheUserRenamed()
{
    const auto placed = place("report");
    QVERIFY(QFile::rename(placed.path, m_folder->path("mine.ps")));
    m_outputs->clearAll();
    QCOMPARE(contentOf(m_folder->path("mine.ps")), QByteArray("content of report"));
}

void TestOutputs::clearsOneStepOnly()
{
    QCOMPARE(place("print", {.step = Step::Print}).result, Result::Done);
    QCOMPARE(place("distil", {.step = Step::Distil}).result, Result::Done);
    QCOMPARE(place("merge", {.step = Step::Merge}).result, Result::Done);
    m_outputs->clear(Step::Distil);
    QCOMPARE(m_folder->names(),
             QStringList({QStringLiteral("merge.ps~"), QStringLiteral("print.ps~")}));
    m_outputs->clear(Step::Print);
    QCOMPARE(m_folder->names(), QStringList{QStringLiteral("merge.ps~")});
}

void TestOutputs::clearsAll()
{
    for (const auto step : {Step::Print, Step::Distil, Step::Merge})
        QCOMPARE(place("report", {.step = step}).result, Result::Done);
    QCOMPARE(m_folder->names().size(), 3);
    m_outputs->clearAll();
    QCOMPARE(m_folder->names(), QStringList());
}

void TestOutputs::tellsThatNothingCanBeWritten()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto from = folder.write("from", "content");
    const auto locked = folder.makeFolder("locked");
    QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner));
    const auto placed =
        m_outputs->place(from, locked, QStringLiteral("report"), QStringLiteral("ps"), {});
    QCOMPARE(placed.result, Result::NotAllowed);
    QVERIFY(!m_outputs->find(placed.path));
}

void TestOutputs::tellsThatThereIsNoRoom()
{
    const auto folder = m_folder->makeFolder("disk");
    const SmallDisk disk(folder, 64);
    if (!disk.isMounted())
        QSKIP("this user may not mount a small disk to fill");
    const auto placed = m_outputs->place(m_work->write("from", QByteArray(1'000'000, 'x')), folder,
                                         QStringLiteral("report"), QStringLiteral("ps"), {});
    QCOMPARE(placed.result, Result::NoRoom);
    QVERIFY(!m_outputs->find(placed.path));
    QCOMPARE(namesIn(folder), QStringList());
}

QTEST_GUILESS_MAIN(TestOutputs)
#include "tst_outputs.moc"
