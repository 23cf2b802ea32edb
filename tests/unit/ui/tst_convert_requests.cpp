#include "ui/ConvertRequests.h"

#include "i18n/AppTextSource.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"
#include "ui/DocumentList.h"
#include "ui/FileList.h"
#include "ui/RefusedFiles.h"
#include "unit/ui/KeptDocuments.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

/// Longer than a job needs to begin by itself.
constexpr int Longer = int(ConvertRequests::Quiet.count()) * 2;

/// A list, and a window that converts it when it is told to.
struct Scene
{
    explicit Scene(const IntakeWorker::Query &query = PDFLib::refusalOf)
        : requests(list, refused, {[this] { return isFree(); }, [this] { convert(); }}, query)
    {
    }

    TestFolder folder;
    FileList shown;
    DocumentList list{shown};
    KeptMessages messages;
    AppTextSource texts;
    RefusedFiles refused{messages, texts};
    bool isWorking = false;
    QList<QStringList> jobs; ///< the names of the documents of each
    ConvertRequests requests;

    /// Once: a file that is written again is empty for a moment.
    [[nodiscard]] QString write(const char *name) const
    {
        const auto path = folder.path(name);
        return QFileInfo::exists(path) ? path : folder.write(name, "content");
    }

    void ask(const QList<const char *> &names)
    {
        QStringList paths{QStringLiteral("/p")};
        for (const auto *const name : names)
            paths.append(write(name));
        requests.add(paths);
    }

    [[nodiscard]] QStringList names() const
    {
        QStringList all;
        for (const auto &path : list.DocFullNameList())
            all.append(DocumentList::GetNameFromFullPath(path));
        return all;
    }

    [[nodiscard]] bool isFree() const { return !isWorking && !refused.isTelling(); }

    /// As the user presses Convert.
    void convert()
    {
        isWorking = true;
        requests.workingModeChanged(true);
        jobs.append(names());
    }

    void endJob()
    {
        isWorking = false;
        requests.workingModeChanged(false);
    }

    /// Waits for the job of so many, and ends it.
    [[nodiscard]] bool runJob(qsizetype number)
    {
        const auto hasBegun = QTest::qWaitFor([&] { return jobs.size() == number && isWorking; });
        endJob();
        return hasBegun;
    }

    [[nodiscard]] bool isSettled()
    {
        return QTest::qWaitFor([this] { return !requests.isBusy() && !requests.isPending(); });
    }

    /// Whether so many documents come into the list, and no job of them.
    [[nodiscard]] bool onlyAdds(qsizetype count)
    {
        const auto before = jobs.size();
        const auto isThere = QTest::qWaitFor([&] { return list.count() == count && isSettled(); });
        QTest::qWait(Longer);
        return isThere && jobs.size() == before && list.count() == count;
    }
};

QStringList named(const char *names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '));
}

} // namespace

class TestConvertRequests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<Scene>(); }
    void cleanup() { m_scene.reset(); }
    void anEmptyListGetsTheDocumentsAndIsConverted();
    void documentsAreShownBeforeTheirJobBegins();
    void aConvertedListMakesRoom();
    void requestsThatComeTogetherBecomeOneJob();
    void aDocumentThatIsAskedForTwiceIsConvertedOnce();
    void whatComesDuringAJobBecomesTheNextOne();
    void whatComesDuringAJobOfTheUserIsOnlyAdded();
    void documentsOfTheUserStayAndNothingBegins();
    void documentsOfTheUserStayAlsoWhenTheyAreConverted();
    void documentsThatTheUserAddedStayAlsoWhenTheyAreConverted();
    void aListThatTheUserChangedIsTheUsers();
    void aChangedListThatTheUserHadConvertedMakesRoom();
    void aChangeBeforeTheJobBeginsKeepsItFromBeginning();
    void aClearedListIsLikeANewOne();
    void aLaterResultOfAJobDoesNotHideAChange();
    void anEmptyRequestDoesNothing();
    void refusedDocumentsDoNothing();
    void aMessageIsAnsweredBeforeTheJobBegins();
    void cancellingForgetsTheRequest();
    void nothingElseMayComeBeforeTheJobBegins();
    void aJobWaitsForDocumentsThatAreStillLookedAt();
    void aFileSystemThatDoesNotAnswerKeepsNoOthersWaiting();

private:
    std::unique_ptr<Scene> m_scene;
};

void TestConvertRequests::anEmptyListGetsTheDocumentsAndIsConverted()
{
    m_scene->ask({"a.txt", "b.txt"});
    QVERIFY(m_scene->runJob(1));
    QCOMPARE(m_scene->jobs, QList<QStringList>{named("a.txt b.txt")});
    QVERIFY(m_scene->onlyAdds(2));
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestConvertRequests::documentsAreShownBeforeTheirJobBegins()
{
    m_scene->ask({"a.txt"});
    QTRY_COMPARE(m_scene->list.count(), 1);
    QVERIFY(m_scene->jobs.isEmpty());
    QVERIFY(m_scene->runJob(1));
}

void TestConvertRequests::aConvertedListMakesRoom()
{
    m_scene->ask({"a.txt", "b.txt"});
    QVERIFY(m_scene->runJob(1));
    m_scene->ask({"c.txt"});
    QVERIFY(m_scene->runJob(2));
    QCOMPARE(m_scene->jobs.last(), named("c.txt"));
    QCOMPARE(m_scene->shown.count(), 1);
    m_scene->ask({"c.txt"});
    QVERIFY(m_scene->runJob(3));
    QCOMPARE(m_scene->jobs.last(), named("c.txt"));
}

void TestConvertRequests::requestsThatComeTogetherBecomeOneJob()
{
    for (const auto *const name : {"a.txt", "b.txt", "c.txt", "d.txt"}) {
        m_scene->ask({name});
        QTest::qWait(int(ConvertRequests::Quiet.count()) / 2);
    }
    QVERIFY(m_scene->runJob(1));
    QCOMPARE(m_scene->jobs, QList<QStringList>{named("a.txt b.txt c.txt d.txt")});
}

void TestConvertRequests::aDocumentThatIsAskedForTwiceIsConvertedOnce()
{
    m_scene->ask({"a.txt", "b.txt"});
    m_scene->ask({"b.txt", "c.txt"});
    QTRY_VERIFY(m_scene->isWorking);
    m_scene->ask({"b.txt"});
    m_scene->ask({"b.txt"});
    QTest::qWait(Longer);
    m_scene->endJob();
    QVERIFY(m_scene->runJob(2));
    QCOMPARE(m_scene->jobs, (QList<QStringList>{named("a.txt b.txt c.txt"), named("b.txt")}));
}

void TestConvertRequests::whatComesDuringAJobBecomesTheNextOne()
{
    m_scene->ask({"a.txt"});
    QTRY_VERIFY(m_scene->isWorking);
    m_scene->ask({"b.txt"});
    m_scene->ask({"c.txt"});
    QTest::qWait(Longer);
    QCOMPARE(m_scene->names(), named("a.txt"));
    m_scene->endJob();
    QVERIFY(m_scene->runJob(2));
    QCOMPARE(m_scene->jobs, (QList<QStringList>{named("a.txt"), named("b.txt c.txt")}));
}

void TestConvertRequests::whatComesDuringAJobOfTheUserIsOnlyAdded()
{
    m_scene->list.addDocuments({m_scene->write("mine.txt")});
    m_scene->convert();
    m_scene->ask({"a.txt"});
    QTest::qWait(Longer);
    m_scene->endJob();
    QVERIFY(m_scene->onlyAdds(2));
    QCOMPARE(m_scene->names(), named("mine.txt a.txt"));
}

void TestConvertRequests::documentsOfTheUserStayAndNothingBegins()
{
    m_scene->list.addDocuments({m_scene->write("mine.txt")});
    m_scene->ask({"a.txt"});
    QVERIFY(m_scene->onlyAdds(2));
    QCOMPARE(m_scene->names(), named("mine.txt a.txt"));
}

void TestConvertRequests::documentsOfTheUserStayAlsoWhenTheyAreConverted()
{
    m_scene->list.addDocuments({m_scene->write("mine.txt")});
    m_scene->ask({"a.txt"});
    QVERIFY(m_scene->onlyAdds(2));
    m_scene->convert();
    m_scene->endJob();
    m_scene->ask({"b.txt"});
    QVERIFY(m_scene->onlyAdds(3));
}

void TestConvertRequests::documentsThatTheUserAddedStayAlsoWhenTheyAreConverted()
{
    m_scene->ask({"a.txt"});
    QVERIFY(m_scene->runJob(1));
    m_scene->list.addDocuments({m_scene->write("mine.txt")});
    m_scene->convert();
    m_scene->endJob();
    m_scene->ask({"b.txt"});
    QVERIFY(m_scene->onlyAdds(3));
}

void TestConvertRequests::aListThatTheUserChangedIsTheUsers()
{
    m_scene->ask({"a.txt", "b.txt"});
    QVERIFY(m_scene->runJob(1));
    m_scene->shown.setCurrentRow(0);
    m_scene->list.moveDown();
    m_scene->ask({"c.txt"});
    QVERIFY(m_scene->onlyAdds(3));
    QCOMPARE(m_scene->names(), named("b.txt a.txt c.txt"));
}

/// As when the user has removed a document that could not be printed.
void TestConvertRequests::aChangedListThatTheUserHadConvertedMakesRoom()
{
    m_scene->ask({"a.txt", "b.txt"});
    QVERIFY(m_scene->runJob(1));
    m_scene->shown.setCurrentRow(0);
    m_scene->list.removeCurrent();
    m_scene->convert();
    m_scene->endJob();
    m_scene->ask({"c.txt"});
    QVERIFY(m_scene->runJob(3));
    QCOMPARE(m_scene->jobs.last(), named("c.txt"));
}

void TestConvertRequests::aChangeBeforeTheJobBeginsKeepsItFromBeginning()
{
    m_scene->ask({"a.txt"});
    QTRY_COMPARE(m_scene->list.count(), 1);
    m_scene->list.addDocuments({m_scene->write("mine.txt")});
    QVERIFY(m_scene->onlyAdds(2));
}

void TestConvertRequests::aClearedListIsLikeANewOne()
{
    m_scene->list.addDocuments({m_scene->write("mine.txt")});
    m_scene->list.clear();
    m_scene->ask({"a.txt"});
    QVERIFY(m_scene->runJob(1));
    QCOMPARE(m_scene->jobs.last(), named("a.txt"));
}

/// The window is told for each result that it is idle.
void TestConvertRequests::aLaterResultOfAJobDoesNotHideAChange()
{
    m_scene->ask({"a.txt", "b.txt"});
    QVERIFY(m_scene->runJob(1));
    m_scene->shown.setCurrentRow(0);
    m_scene->list.moveDown();
    m_scene->requests.workingModeChanged(false);
    m_scene->ask({"c.txt"});
    QVERIFY(m_scene->onlyAdds(3));
}

void TestConvertRequests::anEmptyRequestDoesNothing()
{
    m_scene->list.addDocuments({m_scene->write("mine.txt")});
    for (const auto &items : {QStringList(), named("/p"), QStringList{QStringLiteral("/p"), {}}})
        m_scene->requests.add(items);
    QVERIFY(m_scene->onlyAdds(1));
    m_scene->list.clear();
    m_scene->requests.add(named("/p"));
    QVERIFY(m_scene->onlyAdds(0));
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestConvertRequests::refusedDocumentsDoNothing()
{
    m_scene->ask({"a.txt"});
    QVERIFY(m_scene->runJob(1));
    m_scene->ask({"no.ps", "tool.exe"});
    QTRY_COMPARE(m_scene->messages.all().size(), 1);
    QVERIFY(m_scene->onlyAdds(1));
    QCOMPARE(m_scene->names(), named("a.txt"));
}

void TestConvertRequests::aMessageIsAnsweredBeforeTheJobBegins()
{
    m_scene->messages.setWhileShown([this] {
        QTest::qWait(Longer);
        QVERIFY(m_scene->jobs.isEmpty());
    });
    m_scene->ask({"a.txt", "no.ps"});
    QVERIFY(m_scene->runJob(1));
    QCOMPARE(m_scene->messages.all().size(), 1);
    QCOMPARE(m_scene->jobs, QList<QStringList>{named("a.txt")});
}

void TestConvertRequests::cancellingForgetsTheRequest()
{
    m_scene->ask({"a.txt"});
    m_scene->requests.cancel();
    QVERIFY(m_scene->onlyAdds(0));
    m_scene->ask({"b.txt"});
    QTRY_COMPARE(m_scene->list.count(), 1);
    m_scene->requests.cancel();
    QVERIFY(m_scene->onlyAdds(1));
}

void TestConvertRequests::nothingElseMayComeBeforeTheJobBegins()
{
    const QSignalSpy settled(&m_scene->requests, &ConvertRequests::settled);
    m_scene->ask({"a.txt"});
    QTRY_VERIFY(m_scene->requests.isPending());
    QTRY_VERIFY(m_scene->isWorking);
    QVERIFY(!m_scene->requests.isPending());
    QCOMPARE(settled.size(), 1);
    m_scene->ask({"b.txt"});
    QTRY_VERIFY(m_scene->requests.isPending());
    m_scene->endJob();
    QVERIFY(m_scene->requests.isPending());
    QVERIFY(m_scene->runJob(2));
    QVERIFY(!m_scene->requests.isPending());
}

void TestConvertRequests::aJobWaitsForDocumentsThatAreStillLookedAt()
{
    const auto silence = std::make_shared<Silence>();
    Scene scene(silentQuery(silence));
    scene.ask({"a.txt", "silent.txt", "b.txt"});
    QTRY_COMPARE(scene.list.count(), 1);
    QTest::qWait(Longer);
    QVERIFY(!scene.isWorking);
    silence->answer.release();
    QVERIFY(scene.runJob(1));
    QCOMPARE(scene.jobs.last(), named("a.txt silent.txt b.txt"));
}

void TestConvertRequests::aFileSystemThatDoesNotAnswerKeepsNoOthersWaiting()
{
    const auto silence = std::make_shared<Silence>();
    Scene scene(silentQuery(silence));
    scene.ask({"a.txt", "silent.txt", "b.txt"});
    QVERIFY(QTest::qWaitFor([&] { return scene.isWorking; }, 20000));
    QVERIFY(scene.requests.isBusy());
    QCOMPARE(scene.jobs, QList<QStringList>{named("a.txt")});
    silence->answer.release();
    QTRY_VERIFY(!scene.requests.isBusy());
    scene.endJob();
    QVERIFY(scene.runJob(2));
    QCOMPARE(scene.jobs.last(), named("silent.txt b.txt"));
}

QTEST_MAIN(TestConvertRequests)
#include "tst_convert_requests.moc"
