#include "ui/DocumentIntake.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"
#include "ui/CommandItems.h"
#include "ui/DocumentList.h"
#include "ui/FileList.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>

using namespace Quorlin;

namespace {

constexpr int LongWait = 60'000; // milliseconds

/// Keeps what an intake reports.
class Kept : public QObject
{
public:
    explicit Kept(DocumentIntake &intake) : m_intake(intake)
    {
        connect(&intake, &DocumentIntake::documentsAccepted, this, [this](const QStringList &all) {
            m_batches.append(all.size());
            m_documents += all;
        });
        connect(&intake, &DocumentIntake::refusedPostScript, this, [this](const QString &path) {
            m_refused.append(path);
            m_documents.append(QStringLiteral("refused"));
        });
        connect(&intake, &DocumentIntake::idle, this, [this] { ++m_idle; });
    }

    /// @return all documents, once nothing more comes.
    [[nodiscard]] QStringList documents()
    {
        if (!QTest::qWaitFor([this] { return !m_intake.isBusy(); }, LongWait))
            QTest::qFail("the intake does not end", __FILE__, __LINE__);
        return m_documents;
    }

    [[nodiscard]] const QStringList &refused() const { return m_refused; }
    [[nodiscard]] const QList<qsizetype> &batches() const { return m_batches; }
    [[nodiscard]] int idle() const { return m_idle; }

private:
    DocumentIntake &m_intake;
    QStringList m_documents;
    QStringList m_refused;
    QList<qsizetype> m_batches;
    int m_idle = 0;
};

/// A file system that does not answer until it is let go.
struct Silence
{
    QSemaphore asked;
    QSemaphore answer;
};

IntakeWorker::Query silentQuery(const std::shared_ptr<Silence> &silence)
{
    return [silence](const QString &path) {
        if (path.endsWith(QLatin1String("silent.txt"))) {
            silence->asked.release();
            silence->answer.acquire();
        }
        return PDFLib::refusalOf(path);
    };
}

} // namespace

class TestDocumentIntake : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCommandTextIsTakenFromLeftToRight();
    void aCommaAtTheEndYieldsALastEmptyItem();
    void aPathWithSpacesIsOneItem();
    void aPathWithACommaIsSplit();
    void quotesAreNotUnderstood();
    void anEmptyTextHasNoItems();
    void filesOfAFolderComeBeforeThoseOfSubFolders();
    void onlyAcceptableFilesOfAFolderAreTaken();
    void lockFilesAreNotTaken();
    void theSameFileDroppedTwiceIsInTheListTwice();
    void whatIsAskedFirstComesFirst();
    void aLoopOfLinksEnds();
    void aFolderThatMayNotBeReadIsSkipped();
    void aFileThatIsNotThereIsRefusedSilently();
    void otherRefusalsAreSilent();
    void aPostScriptFileThatIsNoneIsTold();
    void refusalsComeInTheirPlace();
    void nothingIsReportedWhileAMessageIsShown();
    void pipesAndDevicesAreRefusedAtOnce();
    void aResourceOfTheProgramIsNoDocument();
    void aRelativePathBecomesFull();
    void nothingIsReportedWithinTheCall();
    void theEndIsToldOncePerQueue();
    void addingNothingIsNoWork();
    void documentsCanBeAddedFromAnAnswer();
    void aBatchIsNeverLarge();
    void theFirstDocumentDoesNotWaitForTheLast();
    void theEndDoesNotWaitForAWalk();
    void theEndDoesNotWaitForAFileSystemThatDoesNotAnswer();
    void cancellingForgetsWhatIsLeft();
    void cancellingFreesTheWayFromAFileSystemThatDoesNotAnswer();
    void theIntakeMayGoWhileItReports();
};

void TestDocumentIntake::aCommandTextIsTakenFromLeftToRight()
{
    const TestFolder folder;
    const auto b = folder.write("b.doc", "text");
    const auto a = folder.write("a.xls", "text");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add(CommandItems::split(b + QLatin1Char(',') + a));
    QCOMPARE(kept.documents(), QStringList({b, a}));
    QCOMPARE(CommandItems::split(QStringLiteral("a.doc,b.xls")),
             QStringList({QStringLiteral("a.doc"), QStringLiteral("b.xls")}));
}

void TestDocumentIntake::aCommaAtTheEndYieldsALastEmptyItem()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    const auto items = CommandItems::split(a + QLatin1Char(','));
    QCOMPARE(items, QStringList({a, QString()}));
    DocumentIntake intake;
    Kept kept(intake);
    intake.add(items);
    QCOMPARE(kept.documents(), QStringList(a));
}

void TestDocumentIntake::aPathWithSpacesIsOneItem()
{
    const TestFolder folder;
    const auto path = folder.write("my folder/the annual report.doc", "text");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add(CommandItems::split(path));
    QCOMPARE(kept.documents(), QStringList(path));
}

/// There is no quoting: the file exists and is not found nevertheless.
void TestDocumentIntake::aPathWithACommaIsSplit()
{
    const TestFolder folder;
    const auto path = folder.write("one,two.doc", "text");
    QCOMPARE(CommandItems::split(path),
             QStringList({folder.path("one"), QStringLiteral("two.doc")}));
    DocumentIntake intake;
    Kept kept(intake);
    intake.add(CommandItems::split(path));
    QVERIFY(kept.documents().isEmpty());
}

void TestDocumentIntake::quotesAreNotUnderstood()
{
    QCOMPARE(CommandItems::split(QStringLiteral("\"a,b\"")),
             QStringList({QStringLiteral("\"a"), QStringLiteral("b\"")}));
    QCOMPARE(CommandItems::split(QStringLiteral(" a , b ")),
             QStringList({QStringLiteral(" a "), QStringLiteral(" b ")}));
}

void TestDocumentIntake::anEmptyTextHasNoItems()
{
    QVERIFY(CommandItems::split(QString()).isEmpty());
    QCOMPARE(CommandItems::split(QStringLiteral(",")), QStringList({QString(), QString()}));
}

void TestDocumentIntake::filesOfAFolderComeBeforeThoseOfSubFolders()
{
    const TestFolder folder;
    const auto inner = folder.write("a/inner.doc", "text");
    const auto deep = folder.write("a/sub/deep.doc", "text");
    const auto outer = folder.write("z.doc", "text");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.path()});
    QCOMPARE(kept.documents(), QStringList({outer, inner, deep}));
}

void TestDocumentIntake::onlyAcceptableFilesOfAFolderAreTaken()
{
    const TestFolder folder;
    const auto good = folder.write("sub/a.docx", "text");
    folder.write("sub/empty.docx", "");
    folder.write("sub/program.exe", "text");
    folder.write("sub/.hidden.docx", "text");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.path()});
    QCOMPARE(kept.documents(), QStringList(good));
}

void TestDocumentIntake::lockFilesAreNotTaken()
{
    const TestFolder folder;
    const auto document = folder.write("report.docx", "text");
    const auto lock = folder.write("~$report.docx", "user");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.path(), lock});
    QCOMPARE(kept.documents(), QStringList(document));
}

void TestDocumentIntake::theSameFileDroppedTwiceIsInTheListTwice()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    FileList visible;
    DocumentList documents(visible);
    DocumentIntake intake;
    connect(&visible, &FileList::filesDropped, &intake, &DocumentIntake::add);
    connect(&intake, &DocumentIntake::documentsAccepted, &documents, &DocumentList::addDocuments);
    Q_EMIT visible.filesDropped({a});
    Q_EMIT visible.filesDropped({a});
    QTRY_VERIFY(!intake.isBusy());
    QCOMPARE(documents.DocFullNameList(), QStringList({a, a}));
    QCOMPARE(visible.count(), 2);
}

void TestDocumentIntake::whatIsAskedFirstComesFirst()
{
    const TestFolder folder;
    QStringList expected;
    for (int number = 1; number <= 700; ++number)
        expected.append(
            folder.write(qUtf8Printable(QStringLiteral("f/%1.txt").arg(number)), "text"));
    expected.append(folder.write("single.txt", "text"));
    expected.append(expected.first());
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.path("f")});
    intake.add({folder.path("single.txt"), expected.first()});
    QCOMPARE(kept.documents(), expected);
}

void TestDocumentIntake::aLoopOfLinksEnds()
{
    const TestFolder folder;
    const auto a = folder.write("sub/a.doc", "text");
    QVERIFY(QFile::link(folder.path(), folder.path("sub/loop")));
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.path()});
    QCOMPARE(kept.documents(), QStringList(a));
}

void TestDocumentIntake::aFolderThatMayNotBeReadIsSkipped()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    folder.write("locked/b.doc", "text");
    QVERIFY(QFile::setPermissions(folder.path("locked"), QFile::WriteOwner));
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.path(), folder.path("locked"), folder.path("locked/b.doc")});
    QCOMPARE(kept.documents(), QStringList(a));
}

void TestDocumentIntake::aFileThatIsNotThereIsRefusedSilently()
{
    const TestFolder folder;
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.path("none.doc"), folder.path("none.ps"), folder.path("no/folder")});
    QVERIFY(kept.documents().isEmpty());
    QCOMPARE(kept.idle(), 1);
}

void TestDocumentIntake::otherRefusalsAreSilent()
{
    const TestFolder folder;
    DocumentIntake intake;
    Kept kept(intake);
    intake.add(
        {folder.write("a.exe", "text"), folder.write("empty.ps", ""), folder.makeFolder("empty")});
    QVERIFY(kept.documents().isEmpty());
    QVERIFY(kept.refused().isEmpty());
}

void TestDocumentIntake::aPostScriptFileThatIsNoneIsTold()
{
    const TestFolder folder;
    const auto named = folder.write("named.prn", "no PostScript");
    const auto found = folder.write("folder/found.ps", "no PostScript");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({named, folder.path("folder"), folder.write("good.ps", "%!PS\n")});
    QCOMPARE(kept.documents().last(), folder.path("good.ps"));
    QCOMPARE(kept.refused(), QStringList({named, found}));
}

void TestDocumentIntake::refusalsComeInTheirPlace()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    const auto b = folder.write("b.doc", "text");
    const auto bad = folder.write("bad.ps", "no PostScript");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({a, bad, bad, b});
    const auto refused = QStringLiteral("refused");
    QCOMPARE(kept.documents(), QStringList({a, refused, refused, b}));
}

void TestDocumentIntake::nothingIsReportedWhileAMessageIsShown()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    const auto bad = folder.write("bad.ps", "no PostScript");
    DocumentIntake intake;
    Kept kept(intake);
    int shown = 0;
    connect(&intake, &DocumentIntake::refusedPostScript, this, [&] {
        ++shown;
        const auto before = kept.batches().size();
        intake.add({a});
        // The user takes time to read it, and the window goes on meanwhile.
        QEventLoop message;
        QTimer::singleShot(100, &message, &QEventLoop::quit);
        message.exec();
        QCOMPARE(kept.batches().size(), before);
        QVERIFY(intake.isBusy());
    });
    intake.add({bad, a, bad, a});
    QCOMPARE(kept.documents().count(a), 4);
    QCOMPARE(shown, 2);
}

void TestDocumentIntake::pipesAndDevicesAreRefusedAtOnce()
{
    const TestFolder folder;
    const auto pipe = folder.path("pipe.ps");
    QVERIFY(SystemActions::makeFifo(pipe));
    QVERIFY(QFile::link(SystemActions::nullDevice(), folder.path("device.ps")));
    const auto a = folder.write("a.doc", "text");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({pipe, folder.path("device.ps"), folder.path(), a});
    QCOMPARE(kept.documents(), QStringList({a, a}));
}

void TestDocumentIntake::aResourceOfTheProgramIsNoDocument()
{
    QVERIFY(QFileInfo(QStringLiteral(":/quorlin/quorlin.svg")).exists());
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({QStringLiteral(":/quorlin/quorlin.svg"), QStringLiteral("qrc:/quorlin/quorlin.svg"),
                QStringLiteral(":/quorlin")});
    QVERIFY(kept.documents().isEmpty());
}

void TestDocumentIntake::aRelativePathBecomesFull()
{
    const TestFolder folder;
    const auto a = folder.write("sub/a.doc", "text");
    const auto before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({QStringLiteral("sub/a.doc"), QStringLiteral("sub")});
    const auto found = kept.documents();
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(found, QStringList({a, a}));
}

void TestDocumentIntake::nothingIsReportedWithinTheCall()
{
    const TestFolder folder;
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.write("a.doc", "text")});
    QVERIFY(kept.batches().isEmpty());
    QVERIFY(intake.isBusy());
    QCOMPARE(kept.documents().size(), 1);
}

void TestDocumentIntake::theEndIsToldOncePerQueue()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({a});
    intake.add({a, QString()});
    QCOMPARE(kept.documents().size(), 2);
    QCOMPARE(kept.idle(), 1);
    intake.add({QString()});
    QCOMPARE(kept.documents().size(), 2);
    QCOMPARE(kept.idle(), 2);
}

void TestDocumentIntake::addingNothingIsNoWork()
{
    DocumentIntake intake;
    intake.add({});
    QVERIFY(!intake.isBusy());
    intake.cancel();
    QVERIFY(!intake.isBusy());
}

void TestDocumentIntake::documentsCanBeAddedFromAnAnswer()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    DocumentIntake intake;
    Kept kept(intake);
    int left = 3;
    connect(&intake, &DocumentIntake::documentsAccepted, this, [&] {
        if (left-- > 0)
            intake.add({a});
    });
    intake.add({a});
    QCOMPARE(kept.documents().size(), 4);
    QCOMPARE(kept.idle(), 1);
}

void TestDocumentIntake::aBatchIsNeverLarge()
{
    QStringList many;
    for (int number = 0; number < 10'000; ++number)
        many.append(QStringLiteral("/folder/%1.doc").arg(number));
    DocumentIntake intake([](const QString &) { return Refusal(); });
    Kept kept(intake);
    intake.add(many);
    QCOMPARE(kept.documents(), many);
    for (const auto size : kept.batches())
        QVERIFY(size <= DocumentIntake::MostAtOnce);
}

void TestDocumentIntake::theFirstDocumentDoesNotWaitForTheLast()
{
    const TestFolder folder;
    const auto first = folder.write("a.txt", "text");
    const auto silence = std::make_shared<Silence>();
    DocumentIntake intake(silentQuery(silence));
    Kept kept(intake);
    intake.add({first, folder.write("silent.txt", "text")});
    QTRY_COMPARE(kept.batches().size(), 1);
    QVERIFY(intake.isBusy());
    silence->answer.release();
    QCOMPARE(kept.documents().size(), 2);
}

/// A tree that has no end.
void TestDocumentIntake::theEndDoesNotWaitForAWalk()
{
    const TestFolder folder;
    QByteArray path;
    for (int level = 0; level < 200; ++level) {
        path += "d/";
        folder.write((path + "a.txt").constData(), "text");
    }
    const auto tested = std::make_shared<std::atomic<int>>(0);
    auto intake = std::make_unique<DocumentIntake>([tested](const QString &file) {
        QThread::msleep(20);
        ++*tested;
        return PDFLib::refusalOf(file);
    });
    intake->add({folder.path()});
    QTRY_VERIFY(*tested > 0);
    intake.reset();
    QVERIFY(*tested < 200);
}

void TestDocumentIntake::theEndDoesNotWaitForAFileSystemThatDoesNotAnswer()
{
    const TestFolder folder;
    const auto silence = std::make_shared<Silence>();
    auto intake = std::make_unique<DocumentIntake>(silentQuery(silence));
    intake->add({folder.write("silent.txt", "text")});
    silence->asked.acquire();
    intake.reset();
    QCOMPARE(silence->answer.available(), 0);
    silence->answer.release();
    QTRY_COMPARE(silence.use_count(), 1);
}

void TestDocumentIntake::cancellingForgetsWhatIsLeft()
{
    const TestFolder folder;
    for (int number = 0; number < 300; ++number)
        folder.write(qUtf8Printable(QStringLiteral("%1.txt").arg(number)), "text");
    DocumentIntake intake;
    Kept kept(intake);
    intake.add({folder.path()});
    intake.cancel();
    QVERIFY(kept.documents().isEmpty());
    QCOMPARE(kept.idle(), 1);
    intake.add({folder.path("7.txt")});
    QCOMPARE(kept.documents(), QStringList(folder.path("7.txt")));
    QCOMPARE(kept.idle(), 2);
}

void TestDocumentIntake::cancellingFreesTheWayFromAFileSystemThatDoesNotAnswer()
{
    const TestFolder folder;
    const auto silence = std::make_shared<Silence>();
    const auto a = folder.write("a.txt", "text");
    {
        DocumentIntake intake(silentQuery(silence));
        Kept kept(intake);
        intake.add({folder.write("silent.txt", "text"), a});
        silence->asked.acquire();
        intake.cancel();
        intake.add({a});
        QCOMPARE(kept.documents(), QStringList(a));
    }
    silence->answer.release();
    QTRY_COMPARE(silence.use_count(), 1);
}

/// The program may be ended while a message is on the screen.
void TestDocumentIntake::theIntakeMayGoWhileItReports()
{
    const TestFolder folder;
    const auto bad = folder.write("bad.ps", "no PostScript");
    auto *const intake = new DocumentIntake;
    bool isGone = false;
    connect(intake, &QObject::destroyed, this, [&] { isGone = true; });
    connect(intake, &DocumentIntake::refusedPostScript, this, [intake] { delete intake; });
    intake->add({bad, bad});
    QTRY_VERIFY(isGone);
}

QTEST_MAIN(TestDocumentIntake)
#include "tst_document_intake.moc"
