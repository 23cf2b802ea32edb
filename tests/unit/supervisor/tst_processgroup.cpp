#include "component/supervisor/ProcessGroup.h"

#include "component/supervisor/Watchdog.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds
constexpr int Long = 600'000;
constexpr qint64 Mebibyte = 1 << 20;

} // namespace

/// Groups of real processes, and what is taken from those that take too much.
class TestProcessGroup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void aGroupIsEndedWithItsChildren();
    void theUsageOfAGroupIsThatOfAllItsProcesses();
    void aGroupThatIsGoneTakesNothing();
    void tooMuchMemoryIsNoticed();
    void tooManyProcessesAreNoticed();
    void tooMuchRoomOnTheDiskIsNoticed();
    void memoryIsBoundedByTheKernel();
    void filesAreBoundedByTheKernel();
    void processorTimeIsBoundedByTheKernel();
    void noCoreIsDumped();

private:
    void start(const QString &shellText, const ResourceLimits &limits = {});
    void checkBite(const Limits &limits, const QString &folder, Reason reason);

    TestFolder m_folder;
    QProcess m_process;
};

void TestProcessGroup::start(const QString &shellText, const ResourceLimits &limits)
{
    m_process.setWorkingDirectory(m_folder.path());
    ProcessGroup::lead(m_process, limits, nullptr);
    m_process.start(QStringLiteral("sh"), {QStringLiteral("-c"), shellText});
    QVERIFY(m_process.waitForStarted());
}

void TestProcessGroup::cleanup()
{
    ProcessGroup::kill(m_process.processId());
    m_process.waitForFinished();
}

void TestProcessGroup::checkBite(const Limits &limits, const QString &folder, Reason reason)
{
    Watchdog dog;
    QSignalSpy bit(&dog, &Watchdog::bit);
    dog.start(limits, folder, m_process.processId());
    QVERIFY(bit.wait(Patience));
    QCOMPARE(bit[0][0].value<Reason>(), reason);
}

void TestProcessGroup::aGroupIsEndedWithItsChildren()
{
    start(QStringLiteral("sleep 600 & echo $! >child; wait"));
    QTRY_VERIFY(contentOf(m_folder.path("child")).endsWith('\n'));
    const auto child = contentOf(m_folder.path("child")).trimmed().toLongLong();
    QVERIFY(SystemActions::isRunning(child));
    ProcessGroup::kill(m_process.processId());
    QTRY_VERIFY(!SystemActions::isRunning(child));
}

void TestProcessGroup::theUsageOfAGroupIsThatOfAllItsProcesses()
{
    start(QStringLiteral("sleep 600 & sleep 600 & "
                         "while [ $i -lt 300000 ]; do i=$((i + 1)); done; wait")
              .prepend(QStringLiteral("i=0; ")));
    const auto usage = [this] { return ProcessGroup::usageOf(m_process.processId()); };
    QTRY_COMPARE_WITH_TIMEOUT(usage().processes, 3, Patience);
    QTRY_VERIFY_WITH_TIMEOUT(usage().cpuMilliseconds > 50, Patience);
    QVERIFY(usage().memoryBytes > 0);
    QVERIFY(usage().memoryBytes < 100 * Mebibyte);
}

void TestProcessGroup::aGroupThatIsGoneTakesNothing()
{
    start(QStringLiteral("exit 0"));
    const auto group = m_process.processId();
    QVERIFY(m_process.waitForFinished());
    QCOMPARE(ProcessGroup::usageOf(group).processes, 0);
    QCOMPARE(ProcessGroup::usageOf(0).processes, 0);
}

/// "tail" keeps the last lines, and here there is only one, without an end.
void TestProcessGroup::tooMuchMemoryIsNoticed()
{
    start(QStringLiteral("tail /dev/zero"));
    checkBite({.stallMs = Long, .totalMs = Long, .memoryBytes = 100 * Mebibyte}, {},
              Reason::OutOfMemory);
    QVERIFY(ProcessGroup::usageOf(m_process.processId()).memoryBytes < 4096 * Mebibyte);
}

void TestProcessGroup::tooManyProcessesAreNoticed()
{
    start(QStringLiteral("for i in 1 2 3 4 5 6 7 8; do "
                         "sleep 600 & sleep 600 & sleep 600 & sleep 600 & sleep 600 & done; wait"));
    checkBite({.stallMs = Long, .totalMs = Long}, {}, Reason::EngineFailed);
}

void TestProcessGroup::tooMuchRoomOnTheDiskIsNoticed()
{
    start(QStringLiteral("cat /dev/zero >endless"));
    checkBite({.stallMs = Long, .totalMs = Long, .diskBytes = 5 * Mebibyte}, m_folder.path(),
              Reason::NoRoom);
    cleanup();
    QVERIFY(QFile::remove(m_folder.path("endless")));
}

void TestProcessGroup::memoryIsBoundedByTheKernel()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("a sanitizer claims more memory than any bound that makes sense");
#endif
    start(QStringLiteral("tail /dev/zero 2>message"), {.memoryBytes = 100 * Mebibyte});
    QVERIFY(m_process.waitForFinished(Patience));
    QVERIFY(m_process.exitCode() != 0);
    QVERIFY(contentOf(m_folder.path("message")).contains("memory"));
}

void TestProcessGroup::filesAreBoundedByTheKernel()
{
    start(QStringLiteral("cat /dev/zero >endless"), {.fileBytes = Mebibyte});
    QVERIFY(m_process.waitForFinished(Patience));
    QCOMPARE(m_process.exitStatus(), QProcess::NormalExit);
    QVERIFY(m_process.exitCode() != 0);
    QCOMPARE(QFile(m_folder.path("endless")).size(), Mebibyte);
}

void TestProcessGroup::processorTimeIsBoundedByTheKernel()
{
    start(QStringLiteral("while :; do :; done"), {.cpuSeconds = 1});
    QVERIFY(m_process.waitForFinished(Patience));
    QCOMPARE(m_process.exitStatus(), QProcess::CrashExit);
}

void TestProcessGroup::noCoreIsDumped()
{
    start(QStringLiteral("ulimit -c >limit"));
    QVERIFY(m_process.waitForFinished(Patience));
    QCOMPARE(contentOf(m_folder.path("limit")).trimmed(), QByteArray("0"));
}

QTEST_GUILESS_MAIN(TestProcessGroup)
#include "tst_processgroup.moc"
