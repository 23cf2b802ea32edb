#include "component/backends/worker/WorkerLoop.h"

#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QProcess>
#include <QTest>

#include <algorithm>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds

QString textOf(const QJsonObject &message, const char *key)
{
    return message.value(QLatin1String(key)).toString();
}

} // namespace

class TestWorkerLoop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void greetsFirstWithItsValues();
    void saysThatItIsUnavailableInPlaceOfAGreeting();
    void answersWithTheIdOfTheRequest();
    void theIdMayBeAnyValue();
    void answersRequestsInTheirOrder();
    void tellsProgressBeforeTheAnswer();
    void tellsTheSamePercentOnce();
    void linesStayWholeWhenThreadsTellProgress();
    void aFailureCarriesReasonAndText();
    void aFailureWithoutATextGetsTheReasonsOwn();
    void aFailureCarriesItsValues();
    void anExceptionMeansThatTheEngineFailed();
    void lackOfMemoryIsTold();
    void goesOnAfterAFailure();
    void whatALibraryPrintsDoesNotReachThePipe();
    void linesThatAreNoRequestsAreIgnored();
    void aLineThatIsTooLongIsIgnored();
    void aRequestMayComeInPieces();
    void endsWithItsInput();
    void endsAtOnceWhenNothingIsAsked();
    void aLastLineWithoutALineEndIsNoRequest();
    void endsAfterItsLastAnswer();
    void endsWhenNobodyReadsItsAnswers();
    void endsWithItsWholeGroupWhenItsParentIsKilled();

private:
    QJsonObject read();
    QJsonObject answer(const char *op);
    void send(const QJsonObject &request) { m_worker.write(Message::encode(request)); }

    QProcess m_worker;
};

void TestWorkerLoop::init()
{
    m_worker.start(QStringLiteral(QUORLIN_LOOP_WORKER), QStringList());
    QVERIFY(m_worker.waitForStarted(Patience));
    QCOMPARE(textOf(read(), "event"), QStringLiteral("ready"));
}

void TestWorkerLoop::cleanup()
{
    m_worker.closeWriteChannel();
    if (m_worker.state() != QProcess::NotRunning)
        QVERIFY(m_worker.waitForFinished(Patience));
}

QJsonObject TestWorkerLoop::read()
{
    while (!m_worker.canReadLine() && m_worker.waitForReadyRead(Patience)) {
    }
    return Message::decode(m_worker.readLine()).value_or(QJsonObject());
}

QJsonObject TestWorkerLoop::answer(const char *op)
{
    send({{QStringLiteral("id"), 1}, {QStringLiteral("op"), QLatin1String(op)}});
    return read();
}

void TestWorkerLoop::greetsFirstWithItsValues()
{
    QProcess worker;
    worker.start(m_worker.program(), QStringList());
    worker.closeWriteChannel();
    QVERIFY(worker.waitForFinished(Patience));
    QCOMPARE(worker.readAllStandardOutput(),
             QByteArray("{\"event\":\"ready\",\"worker\":\"loop-worker\"}\n"));
}

void TestWorkerLoop::saysThatItIsUnavailableInPlaceOfAGreeting()
{
    QProcess worker;
    worker.start(m_worker.program(), {QStringLiteral("--unavailable")});
    QVERIFY(worker.waitForFinished(Patience));
    QCOMPARE(worker.exitCode(), 3);
    QCOMPARE(worker.readAllStandardOutput(),
             QByteArray("{\"event\":\"unavailable\",\"reason\":\"program-missing\","
                        "\"text\":\"install it\"}\n"));
}

void TestWorkerLoop::answersWithTheIdOfTheRequest()
{
    send({{QStringLiteral("id"), 7}, {QStringLiteral("op"), QStringLiteral("echo")}});
    const auto message = read();
    QCOMPARE(textOf(message, "event"), QStringLiteral("done"));
    QCOMPARE(message.value(QLatin1String("id")).toInt(), 7);
    QCOMPARE(textOf(message.value(QLatin1String("echo")).toObject(), "op"), QStringLiteral("echo"));
}

void TestWorkerLoop::theIdMayBeAnyValue()
{
    send({{QStringLiteral("id"), QStringLiteral("x-1")}});
    QCOMPARE(textOf(read(), "id"), QStringLiteral("x-1"));
}

void TestWorkerLoop::answersRequestsInTheirOrder()
{
    constexpr int Requests = 100;
    for (int id = 0; id < Requests; ++id)
        send({{QStringLiteral("id"), id}});
    for (int id = 0; id < Requests; ++id)
        QCOMPARE(read().value(QLatin1String("id")).toInt(-1), id);
}

void TestWorkerLoop::tellsProgressBeforeTheAnswer()
{
    auto message = answer("progress");
    QCOMPARE(textOf(message, "event"), QStringLiteral("progress"));
    QCOMPARE(message.value(QLatin1String("id")).toInt(), 1);
    while (textOf(message, "event") == QLatin1String("progress"))
        message = read();
    QCOMPARE(textOf(message, "event"), QStringLiteral("done"));
}

void TestWorkerLoop::tellsTheSamePercentOnce()
{
    QList<int> percents;
    for (auto message = answer("progress"); textOf(message, "event") == QLatin1String("progress");
         message = read())
        percents.append(message.value(QLatin1String("percent")).toInt(-1));
    QCOMPARE(percents, QList<int>({0, 40, 100}));
}

void TestWorkerLoop::linesStayWholeWhenThreadsTellProgress()
{
    QList<int> percents;
    auto message = answer("progress-of-threads");
    for (; textOf(message, "event") == QLatin1String("progress"); message = read())
        percents.append(message.value(QLatin1String("percent")).toInt(-1));
    QCOMPARE(textOf(message, "event"), QStringLiteral("done"));
    std::ranges::sort(percents);
    QCOMPARE(percents.size(), 101);
    QCOMPARE(percents.first(), 0);
    QCOMPARE(percents.last(), 100);
}

void TestWorkerLoop::aFailureCarriesReasonAndText()
{
    const auto message = answer("damaged");
    QCOMPARE(textOf(message, "event"), QStringLiteral("failed"));
    QCOMPARE(textOf(message, "reason"), QStringLiteral("damaged"));
    QCOMPARE(textOf(message, "text"), QStringLiteral("page 3 is broken"));
}

void TestWorkerLoop::aFailureWithoutATextGetsTheReasonsOwn()
{
    const auto message = answer("protected");
    QCOMPARE(textOf(message, "reason"), QStringLiteral("protected"));
    QCOMPARE(textOf(message, "text"), reasonText(Reason::Protected));
}

void TestWorkerLoop::aFailureCarriesItsValues()
{
    QCOMPARE(answer("damaged").value(QLatin1String("page")).toInt(), 3);
}

void TestWorkerLoop::anExceptionMeansThatTheEngineFailed()
{
    const auto message = answer("throw");
    QCOMPARE(textOf(message, "event"), QStringLiteral("failed"));
    QCOMPARE(textOf(message, "reason"), QStringLiteral("engine-failed"));
    QCOMPARE(textOf(message, "text"), QStringLiteral("the engine says no"));
}

void TestWorkerLoop::lackOfMemoryIsTold()
{
    const auto message = answer("no-memory");
    QCOMPARE(textOf(message, "reason"), QStringLiteral("out-of-memory"));
    QCOMPARE(textOf(message, "text"), reasonText(Reason::OutOfMemory));
}

void TestWorkerLoop::goesOnAfterAFailure()
{
    for (const char *op : {"throw", "no-memory", "damaged"}) {
        QCOMPARE(textOf(answer(op), "event"), QStringLiteral("failed"));
        QCOMPARE(textOf(answer("echo"), "event"), QStringLiteral("done"));
    }
}

void TestWorkerLoop::whatALibraryPrintsDoesNotReachThePipe()
{
    const auto message = answer("chatter");
    QCOMPARE(textOf(message, "event"), QStringLiteral("done"));
    QVERIFY(!message.contains(QLatin1String("forged")));
    m_worker.closeWriteChannel();
    QVERIFY(m_worker.waitForFinished(Patience));
    const auto log = m_worker.readAllStandardError();
    QVERIFY(log.contains("printed by a library"));
    QVERIFY(log.contains("forged"));
    QVERIFY(log.contains("for the log"));
    QCOMPARE(m_worker.readAllStandardOutput(), QByteArray());
}

void TestWorkerLoop::linesThatAreNoRequestsAreIgnored()
{
    m_worker.write("Hello\n\n[1,2]\n{\"id\":\n\"text\"\n\xff\xfe\n{\"id\":5}\n");
    const auto message = read();
    QCOMPARE(textOf(message, "event"), QStringLiteral("done"));
    QCOMPARE(message.value(QLatin1String("id")).toInt(), 5);
}

void TestWorkerLoop::aLineThatIsTooLongIsIgnored()
{
    m_worker.write("{\"id\":1,\"text\":\"");
    m_worker.write(QByteArray(Protocol::MaxLineBytes, 'x'));
    m_worker.write("\"}\n{\"id\":2}\n");
    QCOMPARE(read().value(QLatin1String("id")).toInt(), 2);
}

void TestWorkerLoop::aRequestMayComeInPieces()
{
    for (const char byte : QByteArray("{\"id\":9}\n")) {
        m_worker.write(&byte, 1);
        QVERIFY(m_worker.waitForBytesWritten(Patience));
    }
    QCOMPARE(read().value(QLatin1String("id")).toInt(), 9);
}

void TestWorkerLoop::endsWithItsInput()
{
    QCOMPARE(textOf(answer("echo"), "event"), QStringLiteral("done"));
    m_worker.closeWriteChannel();
    QVERIFY(m_worker.waitForFinished(Patience));
    QCOMPARE(m_worker.exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_worker.exitCode(), 0);
}

void TestWorkerLoop::endsAtOnceWhenNothingIsAsked()
{
    m_worker.closeWriteChannel();
    QVERIFY(m_worker.waitForFinished(Patience));
    QCOMPARE(m_worker.exitCode(), 0);
    QCOMPARE(m_worker.readAllStandardOutput(), QByteArray());
}

void TestWorkerLoop::aLastLineWithoutALineEndIsNoRequest()
{
    m_worker.write("{\"id\":1}");
    m_worker.closeWriteChannel();
    QVERIFY(m_worker.waitForFinished(Patience));
    QCOMPARE(m_worker.exitCode(), 0);
    QCOMPARE(m_worker.readAllStandardOutput(), QByteArray());
}

void TestWorkerLoop::endsAfterItsLastAnswer()
{
    QCOMPARE(textOf(answer("last"), "reason"), QStringLiteral("engine-failed"));
    QVERIFY(m_worker.waitForFinished(Patience));
    QCOMPARE(m_worker.exitCode(), 2);
}

void TestWorkerLoop::endsWhenNobodyReadsItsAnswers()
{
    QProcess worker, reader;
    worker.setStandardOutputProcess(&reader);
    worker.start(m_worker.program(), QStringList());
    reader.start(QStringLiteral("head"), {QStringLiteral("-n1")});
    QVERIFY(reader.waitForFinished(Patience));
    worker.write("{\"id\":1}\n");
    QVERIFY(worker.waitForFinished(Patience));
    QCOMPARE(worker.exitStatus(), QProcess::NormalExit);
    QCOMPARE(worker.exitCode(), 1);
}

void TestWorkerLoop::endsWithItsWholeGroupWhenItsParentIsKilled()
{
    const TestFolder folder;
    const auto note = folder.path("processes");
    QProcess parent;
    parent.start(QStringLiteral("sh"),
                 {QStringLiteral("-c"), QStringLiteral("setsid \"$0\"; true"), m_worker.program()});
    parent.write(Message::encode({{QStringLiteral("id"), 1},
                                  {QStringLiteral("op"), QStringLiteral("hang")},
                                  {QStringLiteral("file"), note}}));
    QTRY_VERIFY_WITH_TIMEOUT(contentOf(note).endsWith('\n'), Patience);
    const auto processes = contentOf(note).trimmed().split(' ');
    for (const auto &process : processes)
        QVERIFY(SystemActions::isRunning(process.toLongLong()));
    SystemActions::kill(parent.processId());
    QVERIFY(parent.waitForFinished(Patience));
    for (const auto &process : processes)
        QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(process.toLongLong()), Patience);
}

QTEST_GUILESS_MAIN(TestWorkerLoop)
#include "tst_workerloop.moc"
