#include "component/backends/ghostscript/GhostscriptServer.h"

#include <QTest>

using namespace Quorlin;
using Kind = GhostscriptServer::Answer::Kind;

/// What is written and read, without any process.
class TestGhostscriptServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStringIsSafeForAnyContent();
    void statementsNameFilesInHexadecimal();
    void readsAnAnswer_data();
    void readsAnAnswer();
    void readsOnlyWhatCarriesTheToken_data();
    void readsOnlyWhatCarriesTheToken();
};

void TestGhostscriptServer::aStringIsSafeForAnyContent()
{
    QCOMPARE(GhostscriptServer::hexString(""), QByteArray("<>"));
    QCOMPARE(GhostscriptServer::hexString(QByteArray(") quit (\\\n\0\xff", 12)),
             QByteArray("<29207175697420285c0a00ff>"));
}

void TestGhostscriptServer::statementsNameFilesInHexadecimal()
{
    const QByteArray evil("/w/) quit (.ps");
    const auto statements = GhostscriptServer::distil(evil, evil, evil);
    QVERIFY(!statements.contains("quit"));
    QCOMPARE(statements.count(evil.toHex()), 3);
    const auto start = GhostscriptServer::start(evil, "token");
    QVERIFY(!start.contains(evil));
    QVERIFY(start.contains(evil.toHex()));
}

void TestGhostscriptServer::readsAnAnswer_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<int>("pages");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("a page") << QByteArray("%quorlin T page 3") << Kind::Page << 3 << QByteArray();
    QTest::newRow("all pages") << QByteArray("%quorlin T end-of-pages 12") << Kind::Page << 12
                               << QByteArray();
    QTest::newRow("an error") << QByteArray("%quorlin T error undefined") << Kind::Error << 0
                              << QByteArray("undefined");
    QTest::newRow("the end") << QByteArray("%quorlin T end 0") << Kind::End << 0 << QByteArray();
    QTest::newRow("a carriage return")
        << QByteArray("%quorlin T end 0\r") << Kind::End << 0 << QByteArray();
}

void TestGhostscriptServer::readsAnAnswer()
{
    QFETCH(const QByteArray, line);
    QFETCH(const Kind, kind);
    QFETCH(const int, pages);
    QFETCH(const QByteArray, error);
    const auto answer = GhostscriptServer::parse(line, "T");
    QVERIFY(answer);
    QCOMPARE(answer->kind, kind);
    QCOMPARE(answer->pages, pages);
    QCOMPARE(answer->errorName, error);
}

void TestGhostscriptServer::readsOnlyWhatCarriesTheToken_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line :
         {"", "%quorlin", "%quorlin T", "%quorlin T end", "%quorlin U end 0", "%quorlin  end 0",
          "%quorlin T page -5", "%quorlin T page many", "quorlin T end 0", "%quorlin T fin 0",
          "%quorlin T end 0 0", "GPL Ghostscript", "Error: /undefined in foo",
          "\xff\xfe %quorlin T end 0"})
        QTest::newRow(line) << QByteArray(line);
}

void TestGhostscriptServer::readsOnlyWhatCarriesTheToken()
{
    QFETCH(const QByteArray, line);
    QVERIFY(!GhostscriptServer::parse(line, "T"));
}

QTEST_GUILESS_MAIN(TestGhostscriptServer)
#include "tst_ghostscriptserver.moc"
