#include "ui/DocumentIntake.h"

#include "support/TestFolder.h"
#include "unit/ui/KeptDocuments.h"

#include <QEventLoop>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <memory>

using namespace Quorlin;

class TestDocumentIntakeLife : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsReportedWhileAMessageIsShown();
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

void TestDocumentIntakeLife::nothingIsReportedWhileAMessageIsShown()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    const auto bad = folder.write("bad.ps", "no PostScript");
    DocumentIntake intake;
    KeptDocuments kept(intake);
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

void TestDocumentIntakeLife::nothingIsReportedWithinTheCall()
{
    const TestFolder folder;
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.write("a.doc", "text")});
    QVERIFY(kept.batches().isEmpty());
    QVERIFY(intake.isBusy());
    QCOMPARE(kept.documents().size(), 1);
}

void TestDocumentIntakeLife::theEndIsToldOncePerQueue()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({a});
    intake.add({a, QString()});
    QCOMPARE(kept.documents().size(), 2);
    QCOMPARE(kept.idle(), 1);
    intake.add({QString()});
    QCOMPARE(kept.documents().size(), 2);
    QCOMPARE(kept.idle(), 2);
}

void TestDocumentIntakeLife::addingNothingIsNoWork()
{
    DocumentIntake intake;
    intake.add({});
    QVERIFY(!intake.isBusy());
    intake.cancel();
    QVERIFY(!intake.isBusy());
}

void TestDocumentIntakeLife::documentsCanBeAddedFromAnAnswer()
{
    const TestFolder folder;
    const auto a = folder.write("a.doc", "text");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    int left = 3;
    connect(&intake, &DocumentIntake::documentsAccepted, this, [&] {
        if (left-- > 0)
            intake.add({a});
    });
    intake.add({a});
    QCOMPARE(kept.documents().size(), 4);
    QCOMPARE(kept.idle(), 1);
}

void TestDocumentIntakeLife::aBatchIsNeverLarge()
{
    QStringList many;
    for (int number = 0; number < 10'000; ++number)
        many.append(QStringLiteral("/folder/%1.doc").arg(number));
    DocumentIntake intake([](const QString &) { return Refusal(); });
    KeptDocuments kept(intake);
    intake.add(many);
    QCOMPARE(kept.documents(), many);
    for (const auto size : kept.batches())
        QVERIFY(size <= DocumentIntake::MostAtOnce);
}

void TestDocumentIntakeLife::theFirstDocumentDoesNotWaitForTheLast()
{
    const TestFolder folder;
    const auto first = folder.write("a.txt", "text");
    const auto silence = std::make_shared<Silence>();
    DocumentIntake intake(silentQuery(silence));
    KeptDocuments kept(intake);
    intake.add({first, folder.write("silent.txt", "text")});
    QTRY_COMPARE(kept.batches().size(), 1);
    QVERIFY(intake.isBusy());
    silence->answer.release();
    QCOMPARE(kept.documents().size(), 2);
}

/// A tree that has no end.
void TestDocumentIntakeLife::theEndDoesNotWaitForAWalk()
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

void TestDocumentIntakeLife::theEndDoesNotWaitForAFileSystemThatDoesNotAnswer()
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

void TestDocumentIntakeLife::cancellingForgetsWhatIsLeft()
{
    const TestFolder folder;
    for (int number = 0; number < 300; ++number)
        folder.write(qUtf8Printable(QStringLiteral("%1.txt").arg(number)), "text");
    DocumentIntake intake;
    KeptDocuments kept(intake);
    intake.add({folder.path()});
    intake.cancel();
    QVERIFY(kept.documents().isEmpty());
    QCOMPARE(kept.idle(), 1);
    intake.add({folder.path("7.txt")});
    QCOMPARE(kept.documents(), QStringList(folder.path("7.txt")));
    QCOMPARE(kept.idle(), 2);
}

void TestDocumentIntakeLife::cancellingFreesTheWayFromAFileSystemThatDoesNotAnswer()
{
    const TestFolder folder;
    const auto silence = std::make_shared<Silence>();
    const auto a = folder.write("a.txt", "text");
    {
        DocumentIntake intake(silentQuery(silence));
        KeptDocuments kept(intake);
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
void TestDocumentIntakeLife::theIntakeMayGoWhileItReports()
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

QTEST_MAIN(TestDocumentIntakeLife)
#include "tst_document_intake_life.moc"
