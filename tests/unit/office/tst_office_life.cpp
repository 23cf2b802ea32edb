#include "support/SystemActions.h"
#include "unit/office/OfficeScene.h"

#include <QDir>
#include <QTest>

using namespace Quorlin;

namespace {

constexpr int Patience = 20000; ///< milliseconds

QString eventOf(const QJsonObject &message)
{
    return message.value(QLatin1String("event")).toString();
}

QString reasonOf(const QJsonObject &message)
{
    return message.value(QLatin1String("reason")).toString();
}

/// A page that keeps the engine busy for many seconds.
QByteArray longPage()
{
    return QByteArray("<p>Some words on a long page</p>\n").repeated(100000);
}

/// The names of a worker's pipes where everybody's temporary files lie.
QStringList socketNames(qint64 worker)
{
    const auto names = QStringLiteral("OSL_PIPE_*_quorlin-%1-*").arg(worker);
    return QDir::temp().entryList({names}, QDir::AllEntries | QDir::System);
}

} // namespace

class TestOfficeLife : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theEndOfItsInputEndsTheEngineToo();
    void aKilledWorkerTakesItsEngineAlong();
    void aBusyWorkerEndsWithWhoeverStartedIt();
    void anEngineThatDiesIdleFailsTheNextDocument();
    void anEngineThatDiesAtWorkFailsItsDocument();
    void theEngineIsInTheWorkersGroup();
    void writesIntoItsWorkFolderOnly();
    void itKeepsItsOwnOfWhatUsersShare();
    void aUsedProfileIsTakenAgain();
    void anEngineThatAsksToBeStartedAgainIs();
    void saysThatTheEngineIsMissing();
    void saysThatItsFolderIsMissing();
};

void TestOfficeLife::theEndOfItsInputEndsTheEngineToo()
{
    OfficeScene scene;
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    QVERIFY(SystemActions::isRunning(scene.engineId()));
    scene.worker().closeWriteChannel();
    QVERIFY(scene.waitForEnd());
    QCOMPARE(scene.worker().exitCode(), 0);
    QVERIFY(!SystemActions::isRunning(scene.engineId()));
}

void TestOfficeLife::aKilledWorkerTakesItsEngineAlong()
{
    OfficeScene scene;
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    SystemActions::kill(scene.worker().processId());
    QVERIFY(scene.waitForEnd());
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(scene.engineId()), Patience);
}

void TestOfficeLife::aBusyWorkerEndsWithWhoeverStartedIt()
{
    OfficeScene scene;
    QCOMPARE(eventOf(scene.startBelowAnother()), QStringLiteral("ready"));
    scene.sendExport(scene.documents().write("long.html", longPage()));
    QCOMPARE(eventOf(scene.read()), QStringLiteral("progress"));
    SystemActions::kill(scene.worker().processId());
    QVERIFY(scene.waitForEnd());
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(scene.engineId()), 3000);
    QVERIFY(!QFile::exists(scene.output()));
}

void TestOfficeLife::anEngineThatDiesIdleFailsTheNextDocument()
{
    OfficeScene scene;
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    SystemActions::kill(scene.engineId());
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(scene.engineId()), Patience);
    const auto answer = scene.exportFile(scene.documents().write("a.txt", "words"));
    QCOMPARE(reasonOf(answer), QStringLiteral("engine-failed"));
    QVERIFY(scene.waitForEnd());
    QCOMPARE(scene.worker().exitCode(), 2);
}

void TestOfficeLife::anEngineThatDiesAtWorkFailsItsDocument()
{
    OfficeScene scene;
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    scene.sendExport(scene.documents().write("long.html", longPage()));
    QCOMPARE(eventOf(scene.read()), QStringLiteral("progress"));
    SystemActions::kill(scene.engineId());
    const auto answer = scene.readAnswer();
    QCOMPARE(eventOf(answer), QStringLiteral("failed"));
    QCOMPARE(reasonOf(answer), QStringLiteral("engine-failed"));
    QVERIFY(scene.waitForEnd());
    QCOMPARE(scene.worker().exitCode(), 2);
}

void TestOfficeLife::theEngineIsInTheWorkersGroup()
{
    OfficeScene scene;
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    QCOMPARE(SystemActions::groupOf(scene.engineId()),
             SystemActions::groupOf(scene.worker().processId()));
}

void TestOfficeLife::writesIntoItsWorkFolderOnly()
{
    const TestFolder home;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    OfficeScene scene;
    QCOMPARE(eventOf(scene.start(environment)), QStringLiteral("ready"));
    const auto file = scene.documents().write("grün.txt", "words");
    QCOMPARE(eventOf(scene.exportFile(file)), QStringLiteral("done"));
    QCOMPARE(home.names(), QStringList());
    QCOMPARE(socketNames(scene.worker().processId()), QStringList());
    QCOMPARE(scene.documents().names(),
             QStringList({QStringLiteral("grün.txt"), QStringLiteral("out.pdf")}));
}

/// An engine of root's would otherwise make a folder of the system without which no other user's
/// engine starts.
void TestOfficeLife::itKeepsItsOwnOfWhatUsersShare()
{
    OfficeScene scene;
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    QVERIFY(QFileInfo(scene.work().path("profile/shared/uno_packages")).isDir());
}

void TestOfficeLife::aUsedProfileIsTakenAgain()
{
    OfficeScene scene;
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    const auto first = scene.engineId();
    scene.worker().closeWriteChannel();
    QVERIFY(scene.waitForEnd());
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    QVERIFY(scene.engineId() != first);
    const auto file = scene.documents().write("a.txt", "words");
    QCOMPARE(eventOf(scene.exportFile(file)), QStringLiteral("done"));
}

void TestOfficeLife::anEngineThatAsksToBeStartedAgainIs()
{
    OfficeScene scene;
    // It does so when its profile belongs to another build.
    const auto buildId = scene.work().write("profile/user/extensions/buildid", "another build");
    QCOMPARE(eventOf(scene.start()), QStringLiteral("ready"));
    QVERIFY(contentOf(buildId) != "another build");
    const auto file = scene.documents().write("a.txt", "words");
    QCOMPARE(eventOf(scene.exportFile(file)), QStringLiteral("done"));
}

void TestOfficeLife::saysThatTheEngineIsMissing()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), QStringLiteral("/nowhere"));
    OfficeScene scene;
    const auto message = scene.start(environment);
    QCOMPARE(eventOf(message), QStringLiteral("unavailable"));
    QCOMPARE(reasonOf(message), QStringLiteral("program-missing"));
    QVERIFY(message.value(QLatin1String("text")).toString().contains(QLatin1String("soffice")));
    QVERIFY(scene.waitForEnd());
    QCOMPARE(scene.worker().exitCode(), 3);
}

void TestOfficeLife::saysThatItsFolderIsMissing()
{
    OfficeScene scene;
    QVERIFY(QDir(scene.work().path()).removeRecursively());
    const auto message = scene.start();
    QCOMPARE(eventOf(message), QStringLiteral("unavailable"));
    QCOMPARE(reasonOf(message), QStringLiteral("not-allowed"));
    QVERIFY(scene.waitForEnd());
    QCOMPARE(scene.worker().exitCode(), 3);
}

QTEST_GUILESS_MAIN(TestOfficeLife)
#include "tst_office_life.moc"
