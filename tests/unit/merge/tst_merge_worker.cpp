#include "component/protocol/Message.h"
#include "support/TestFolder.h"
#include "unit/merge/MergeScene.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds

} // namespace

class TestMergeWorker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void greetsWithItsName();
    void answersAMergeWithItsPages();
    void namesTheFileThatFailed();
    void servesOneRequestAfterAnother();
    void requestsThatMakeNoSenseAreRefused_data();
    void requestsThatMakeNoSenseAreRefused();
    void endsWithItsInput();
    void progressComesByDocument();
    void leavesNoTemporaryFileBehind();
    void replacesAnOlderResult();

private:
    QJsonObject read();
    QJsonObject answer(const QJsonObject &request);

    QProcess m_worker;
    std::unique_ptr<TestFolder> m_place;
    QByteArray m_temporaryBefore = QFile::encodeName(QDir::tempPath());
};

void TestMergeWorker::init()
{
    m_worker.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // The folders of the scenes are made where the worker reaches them.
    m_place = std::make_unique<TestFolder>();
    qputenv("TMPDIR", QFile::encodeName(m_place->path()));
    m_worker.start(QStringLiteral(QUORLIN_BIN_DIR "/quorlin-pdf-merge"),
                   {QStringLiteral("--work"), m_place->path()});
    QVERIFY(m_worker.waitForStarted(Patience));
    QCOMPARE(read().value(QLatin1String("event")).toString(), QStringLiteral("ready"));
}

void TestMergeWorker::cleanup()
{
    m_worker.closeWriteChannel();
    QVERIFY(m_worker.waitForFinished(Patience));
    qputenv("TMPDIR", m_temporaryBefore);
    m_place.reset();
}

QJsonObject TestMergeWorker::read()
{
    while (!m_worker.canReadLine() && m_worker.waitForReadyRead(Patience)) {
    }
    return Message::decode(m_worker.readLine()).value_or(QJsonObject());
}

QJsonObject TestMergeWorker::answer(const QJsonObject &request)
{
    m_worker.write(Message::encode(request));
    auto message = read();
    while (message.value(QLatin1String("event")).toString() == QLatin1String("progress"))
        message = read();
    return message;
}

void TestMergeWorker::greetsWithItsName()
{
    QProcess worker;
    worker.start(m_worker.program(), m_worker.arguments());
    worker.closeWriteChannel();
    QVERIFY(worker.waitForFinished(Patience));
    const auto greeting = Message::decode(worker.readLine()).value_or(QJsonObject());
    QCOMPARE(greeting.value(QLatin1String("worker")).toString(),
             QStringLiteral("quorlin-pdf-merge"));
}

void TestMergeWorker::answersAMergeWithItsPages()
{
    PdfMaker a("a", 2), b("b", 3);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    const auto message = answer(scene.request(true));
    QCOMPARE(message.value(QLatin1String("event")).toString(), QStringLiteral("done"));
    QCOMPARE(message.value(QLatin1String("id")).toInt(), 1);
    QCOMPARE(message.value(QLatin1String("pages")).toInt(), 5);
    QCOMPARE(scene.pageNames(), QStringLiteral("a1 a2 b1 b2 b3"));
}

void TestMergeWorker::namesTheFileThatFailed()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.addBytes("nonsense", QStringLiteral("bad"));
    const auto message = answer(scene.request(true));
    QCOMPARE(message.value(QLatin1String("event")).toString(), QStringLiteral("failed"));
    QCOMPARE(message.value(QLatin1String("reason")).toString(), QStringLiteral("damaged"));
    QCOMPARE(message.value(QLatin1String("index")).toInt(), 2);
    QVERIFY(message.value(QLatin1String("text")).toString().contains(QLatin1String("bad.pdf")));
}

void TestMergeWorker::servesOneRequestAfterAnother()
{
    PdfMaker a("a", 1);
    MergeScene bad, good;
    bad.addBytes("nonsense", QStringLiteral("bad"));
    good.add(a, QStringLiteral("a"));
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(answer(bad.request(true)).value(QLatin1String("event")).toString(),
                 QStringLiteral("failed"));
        QCOMPARE(answer(good.request(true)).value(QLatin1String("event")).toString(),
                 QStringLiteral("done"));
    }
}

void TestMergeWorker::requestsThatMakeNoSenseAreRefused_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("another job") << QByteArray(R"({"id":1,"op":"print"})");
    QTest::newRow("no inputs") << QByteArray(R"({"id":1,"op":"merge","output":"/x"})");
    QTest::newRow("no output") << QByteArray(R"({"id":1,"op":"merge","inputs":[{"file":"/x"}]})");
    QTest::newRow("inputs of a wrong type")
        << QByteArray(R"({"id":1,"op":"merge","inputs":[7],"output":"/nowhere/x"})");
}

void TestMergeWorker::requestsThatMakeNoSenseAreRefused()
{
    QFETCH(const QByteArray, request);
    const auto message = answer(Message::decode(request).value());
    QCOMPARE(message.value(QLatin1String("event")).toString(), QStringLiteral("failed"));
    QVERIFY(!message.value(QLatin1String("text")).toString().isEmpty());
}

void TestMergeWorker::endsWithItsInput()
{
    cleanup();
    QCOMPARE(m_worker.exitCode(), 0);
    init();
}

void TestMergeWorker::progressComesByDocument()
{
    MergeScene scene;
    for (int i = 0; i < 4; ++i) {
        PdfMaker maker("p" + std::to_string(i), 1);
        scene.add(maker, QStringLiteral("p%1").arg(i));
    }
    QCOMPARE(scene.merge().reason, Reason::None);
    const auto &progress = scene.progress();
    QVERIFY(std::ranges::is_sorted(progress));
    for (const int percent : {20, 40, 60, 80, 100})
        QVERIFY(std::ranges::find(progress, percent) != progress.end());
}

void TestMergeWorker::leavesNoTemporaryFileBehind()
{
    PdfMaker a("a", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.files(), QStringList({QStringLiteral("a.pdf"), QStringLiteral("merged.pdf")}));
}

void TestMergeWorker::replacesAnOlderResult()
{
    PdfMaker a("a", 1), b("b", 1);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    scene.add(b, QStringLiteral("b"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("a1 b1"));
}

QTEST_GUILESS_MAIN(TestMergeWorker)
#include "tst_merge_worker.moc"
