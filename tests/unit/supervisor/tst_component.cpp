#include "component/protocol/Protocol.h"
#include "support/SystemActions.h"
#include "unit/supervisor/ComponentScene.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 30000; ///< milliseconds
const QByteArray Pdf("%PDF-1.4\n%%EOF\n");

QJsonObject clearRequest(const char *step)
{
    return {{QStringLiteral("type"), QStringLiteral("clear")},
            {QStringLiteral("step"), QLatin1String(step)}};
}

} // namespace

/// The component as its driver sees it; its workers are stand-ins.
class TestComponent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ComponentScene>(); }
    void cleanup() { m_scene.reset(); }
    void greetsWithTheProtocolsVersion();
    void allThreeStepsInTurn();
    void garbageIsAnsweredWithAnError_data();
    void garbageIsAnsweredWithAnError();
    void anErrorNamesTheJobWhenItCanBeRead();
    void emptyLinesAreNoRequests();
    void aLineThatIsTooLongIsAnsweredOnce();
    void aRequestMayComeInPieces();
    void garbageDoesNotHurtARunningJob();
    void oneJobOfAKindAtATime();
    void jobsOfDifferentKindsOverlap();
    void theSameKindMayFollowAtOnce();
    void limitsHoldForEachDocument();
    void limitsThatMakeNoSenseAreIgnored();
    void clearRemovesTheFilesOfItsStep();
    void clearKeepsFilesOfTheUsers();
    void clearIsRefusedWhileItsStepRuns();
    void clearOfAnUnknownStepIsAnError();
    void warmStartsAnEngine();
    void shutDownRemovesEverything();
    void shutDownInTheMiddleOfAStep_data();
    void shutDownInTheMiddleOfAStep();
    void shutDownEndsTheWorkers();
    void nothingIsReportedAfterShutDown();
    void cannotWorkWithoutAFolderForTemporaryFiles();
    void worksWithoutAJournal();

private:
    std::unique_ptr<ComponentScene> m_scene;
};

void TestComponent::greetsWithTheProtocolsVersion()
{
    m_scene->component->greet();
    QCOMPARE(m_scene->reports.all().size(), 1);
    const auto hello = m_scene->reports.last("hello");
    QCOMPARE(hello.value(QLatin1String("protocol")).toInt(), Protocol::Version);
    QCOMPARE(hello.value(QLatin1String("component")).toString(), QStringLiteral("quorlin-pdf"));
    QCOMPARE(hello.value(QLatin1String("version")).toString(), QStringLiteral(QUORLIN_VERSION));
}

void TestComponent::allThreeStepsInTurn()
{
    const auto files = QStringList{m_scene->document("a.docx"), m_scene->document("b.pdf", Pdf),
                                   m_scene->document("c.ps", "%!\nshowpage\n")};
    const auto outputs = m_scene->merge(m_scene->distil(m_scene->print(files)), true);
    QCOMPARE(m_scene->reports.failures(), QStringList());
    QCOMPARE(outputs[0], m_scene->path("a.merged~"));
    QCOMPARE(contentOf(outputs[0]).count("%PDF-"), 3);
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("a.docx"), QStringLiteral("a.merged~"),
                          QStringLiteral("b.pdf"), QStringLiteral("c.ps")}));
}

void TestComponent::garbageIsAnsweredWithAnError_data()
{
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char *what, const char *line) {
        QTest::newRow(what) << QByteArray(line);
    };
    row("words", "Hello");
    row("array", "[{\"type\":\"print\"}]");
    row("not UTF-8", "{\"type\":\"\xff\xfe\"}");
    row("cut", "{\"type\":\"print\",");
    row("no type", "{\"job\":1}");
    row("unknown type", "{\"type\":\"dance\",\"job\":1}");
    row("type of a wrong kind", "{\"type\":[],\"job\":1}");
    row("no job", "{\"type\":\"print\",\"documents\":[]}");
    row("job of a wrong kind", "{\"type\":\"print\",\"job\":\"1\",\"documents\":[]}");
    row("negative job", "{\"type\":\"print\",\"job\":-1,\"documents\":[]}");
    row("no documents", "{\"type\":\"print\",\"job\":1}");
    row("documents of a wrong kind", "{\"type\":\"print\",\"job\":1,\"documents\":{}}");
    row("a document of a wrong kind", "{\"type\":\"merge\",\"job\":1,\"documents\":[\"/a\"]}");
    row("a document without a file", "{\"type\":\"distil\",\"job\":1,\"documents\":[{}]}");
    row("a relative path", "{\"type\":\"print\",\"job\":1,\"documents\":[{\"file\":\"a.docx\"}]}");
    row("nesting without end", QByteArray("{\"a\":").repeated(100'000).constData());
}

void TestComponent::garbageIsAnsweredWithAnError()
{
    QFETCH(const QByteArray, line);
    m_scene->send(line + '\n');
    QCOMPARE(m_scene->reports.outline(), QStringLiteral("error"));
    QCOMPARE(m_scene->reports.all().size(), 1);
    QVERIFY(!m_scene->reports.last("error").value(QLatin1String("text")).toString().isEmpty());
    m_scene->print({m_scene->document("a.docx")});
    QVERIFY(m_scene->succeeded());
}

void TestComponent::anErrorNamesTheJobWhenItCanBeRead()
{
    m_scene->send("{\"type\":\"print\",\"job\":42}\n");
    QCOMPARE(m_scene->reports.last("error").value(QLatin1String("job")).toInt(), 42);
    m_scene->send("garbage\n");
    QVERIFY(!m_scene->reports.last("error").contains(QLatin1String("job")));
}

void TestComponent::emptyLinesAreNoRequests()
{
    m_scene->send("\n\r\n  \n");
    QCOMPARE(m_scene->reports.all().size(), 0);
}

void TestComponent::aLineThatIsTooLongIsAnsweredOnce()
{
    const QByteArray much(8 * 1024 * 1024, 'x');
    for (int i = 0; i < 10; ++i)
        m_scene->send(much);
    m_scene->send("\n{\"type\":\"dance\"}\n");
    QCOMPARE(m_scene->reports.of("error").size(), 2);
}

void TestComponent::aRequestMayComeInPieces()
{
    for (const char byte : QByteArray("{\"type\":\"print\",\"job\":9,\"documents\":[]}\r\n"))
        m_scene->send(QByteArray(1, byte));
    QVERIFY(m_scene->waitFor("complete", 9));
    QVERIFY(!m_scene->reports.has("error"));
}

void TestComponent::garbageDoesNotHurtARunningJob()
{
    const auto job = m_scene->askToPrint({m_scene->document("a.docx")});
    m_scene->send("garbage\n{\"type\":\"print\",\"job\":99}\n{\"type\":\"clear\"}\n");
    QVERIFY(m_scene->waitFor("complete", job));
    QVERIFY(m_scene->succeeded(job));
    QVERIFY(!m_scene->reports.has("complete", 99));
}

void TestComponent::oneJobOfAKindAtATime()
{
    const auto first = m_scene->askToPrint({m_scene->document("a.docx")});
    const auto second = m_scene->askToPrint({m_scene->document("b.docx")});
    QCOMPARE(m_scene->reports.of("error", second).size(), 1);
    QVERIFY(m_scene->waitFor("complete", first));
    QVERIFY(m_scene->succeeded(first));
    QVERIFY(!m_scene->reports.has("start", second));
    QVERIFY(!QFileInfo::exists(m_scene->path("b.ps~")));
}

void TestComponent::jobsOfDifferentKindsOverlap()
{
    const auto go = m_scene->home.path("go");
    const auto slow = m_scene->askToPrint(
        {m_scene->document("a.docx", "export wait-for " + QFile::encodeName(go))});
    m_scene->distil({m_scene->document("b.ps", "%!\nshowpage\n")});
    m_scene->merge({m_scene->document("c.pdf", Pdf)});
    QVERIFY(!m_scene->reports.has("complete", slow));
    m_scene->home.write("go", "");
    QVERIFY(m_scene->waitFor("complete", slow));
    for (int job = slow; job < slow + 3; ++job)
        QVERIFY(m_scene->succeeded(job));
}

void TestComponent::theSameKindMayFollowAtOnce()
{
    for (int i = 0; i < 3; ++i) {
        m_scene->print({m_scene->document("a.docx")});
        QVERIFY(m_scene->succeeded());
    }
    QCOMPARE(m_scene->documents.names().size(), 4); // none has been cleared
}

void TestComponent::limitsHoldForEachDocument()
{
    m_scene->send({{QStringLiteral("type"), QStringLiteral("merge")},
                   {QStringLiteral("job"), 5},
                   {QStringLiteral("limits"), QJsonObject{{QStringLiteral("total"), 0.3}}},
                   {QStringLiteral("documents"),
                    QJsonArray{QJsonObject{{QStringLiteral("file"),
                                            m_scene->document("a.pdf", "%PDF-\nmerge hang\n")}}}}});
    QVERIFY(m_scene->waitFor("complete", 5));
    QCOMPARE(m_scene->reports.failures(5), QStringList{QStringLiteral("1:too-long")});
}

void TestComponent::limitsThatMakeNoSenseAreIgnored()
{
    m_scene->document("a.pdf", Pdf);
    int job = 100;
    for (const char *limits :
         {"{\"stall\":-1}", "{\"stall\":0,\"total\":1e300}", "7", "{\"total\":\"soon\"}", "[]"}) {
        m_scene->send("{\"type\":\"merge\",\"job\":" + QByteArray::number(++job) +
                      ",\"limits\":" + limits + ",\"documents\":[{\"file\":\"" +
                      QFile::encodeName(m_scene->path("a.pdf")) + "\"}]}\n");
        QVERIFY(m_scene->waitFor("complete", job));
        QVERIFY(m_scene->succeeded(job));
    }
}

void TestComponent::clearRemovesTheFilesOfItsStep()
{
    m_scene->print({m_scene->document("a.docx")});
    m_scene->distil({m_scene->document("b.ps", "%!\nshowpage\n")});
    m_scene->merge({m_scene->document("c.pdf", Pdf)});
    m_scene->send(clearRequest("distil"));
    QVERIFY(QFileInfo::exists(m_scene->path("a.ps~")));
    QVERIFY(!QFileInfo::exists(m_scene->path("b.pdf~")));
    QVERIFY(QFileInfo::exists(m_scene->path("c.merged~")));
    m_scene->send(clearRequest("print"));
    m_scene->send(clearRequest("merge"));
    QCOMPARE(
        m_scene->documents.names(),
        QStringList({QStringLiteral("a.docx"), QStringLiteral("b.ps"), QStringLiteral("c.pdf")}));
    QVERIFY(!m_scene->reports.has("error"));
}

void TestComponent::clearKeepsFilesOfTheUsers()
{
    m_scene->print({m_scene->document("a.docx"), m_scene->document("b.ps", "%!\n")});
    QVERIFY(QFile::remove(m_scene->path("a.ps~")));
    m_scene->document("a.ps~", "the user's");
    m_scene->send(clearRequest("print"));
    QCOMPARE(contentOf(m_scene->path("a.ps~")), QByteArray("the user's"));
    QCOMPARE(contentOf(m_scene->path("b.ps")), QByteArray("%!\n"));
}

void TestComponent::clearIsRefusedWhileItsStepRuns()
{
    const auto job = m_scene->askToPrint({m_scene->document("a.docx")});
    m_scene->send(clearRequest("print"));
    QCOMPARE(m_scene->reports.of("error").size(), 1);
    QVERIFY(m_scene->waitFor("complete", job));
    QVERIFY(QFileInfo::exists(m_scene->path("a.ps~")));
}

void TestComponent::clearOfAnUnknownStepIsAnError()
{
    m_scene->send(clearRequest("everything"));
    m_scene->send("{\"type\":\"clear\"}\n");
    QCOMPARE(m_scene->reports.of("error").size(), 2);
}

void TestComponent::warmStartsAnEngine()
{
    m_scene->send("{\"type\":\"warm\"}\n");
    QTRY_VERIFY_WITH_TIMEOUT(
        !namesIn(m_scene->workFolder()).filter(QStringLiteral("quorlin-pdf-office")).isEmpty(),
        Patience);
    m_scene->send("{\"type\":\"warm\"}\n");
    m_scene->print({m_scene->document("a.docx")});
    QVERIFY(m_scene->succeeded());
    QCOMPARE(namesIn(m_scene->workFolder()).filter(QStringLiteral("quorlin-pdf-office")).size(), 1);
    QVERIFY(!m_scene->reports.has("error"));
}

void TestComponent::shutDownRemovesEverything()
{
    const auto printed = m_scene->print({m_scene->document("a.docx"), m_scene->document("b.docx")});
    m_scene->distil({printed[0]});
    m_scene->merge({m_scene->document("c.pdf", Pdf)});
    QVERIFY(!m_scene->leftovers().isEmpty());
    m_scene->end();
    QCOMPARE(m_scene->leftovers(), QStringList());
    QCOMPARE(
        m_scene->documents.names(),
        QStringList({QStringLiteral("a.docx"), QStringLiteral("b.docx"), QStringLiteral("c.pdf")}));
    m_scene->end();
}

void TestComponent::shutDownInTheMiddleOfAStep_data()
{
    QTest::addColumn<int>("milliseconds");
    for (const int milliseconds : {0, 1, 5, 20, 50, 100, 200})
        QTest::addRow("after %d ms", milliseconds) << milliseconds;
}

void TestComponent::shutDownInTheMiddleOfAStep()
{
    QFETCH(const int, milliseconds);
    const auto printed = m_scene->print({m_scene->document("x.docx", "ps { } loop")});
    QStringList files;
    for (int i = 0; i < 20; ++i)
        files << m_scene->document(QByteArray(QByteArray::number(i) + ".docx").constData());
    files << m_scene->document("hangs.docx", "export hang");
    m_scene->askToPrint(files);
    m_scene->askToDistil(printed + QStringList{m_scene->document("y.ps", "%!\n{ } loop")});
    m_scene->askToMerge({m_scene->document("z.pdf", Pdf + "merge hang\n")});
    QTest::qWait(milliseconds);
    m_scene->end();
    QCOMPARE(m_scene->leftovers(), QStringList());
    QCOMPARE(m_scene->documents.names().filter(QStringLiteral("~")), QStringList());
    QCOMPARE(m_scene->documents.names().size(), 24);
}

void TestComponent::shutDownEndsTheWorkers()
{
    m_scene->print({m_scene->document("a.docx")});
    m_scene->askToPrint({m_scene->document("b.docx", "export hang")});
    QTRY_COMPARE_WITH_TIMEOUT(m_scene->requests("export").size(), 2, Patience);
    const auto requests = m_scene->requests("export") + m_scene->requests("print");
    m_scene->end();
    for (const auto &request : requests)
        QTRY_VERIFY_WITH_TIMEOUT(
            !SystemActions::isRunning(request.value(QLatin1String("pid")).toInteger()), Patience);
}

void TestComponent::nothingIsReportedAfterShutDown()
{
    m_scene->askToPrint({m_scene->document("a.docx"), m_scene->document("b.docx")});
    QTest::qWait(20);
    const auto before = m_scene->reports.all().size();
    m_scene->end();
    QTest::qWait(100); // what was on its way would have come by now
    QCOMPARE(m_scene->reports.all().size(), before);
}

void TestComponent::cannotWorkWithoutAFolderForTemporaryFiles()
{
    qputenv("TMPDIR", QFile::encodeName(m_scene->home.path("gone")));
    Component component({m_scene->programs.path(), m_scene->journals.path()});
    QVERIFY(!component.prepare());
}

void TestComponent::worksWithoutAJournal()
{
    const auto inTheWay = m_scene->home.write("file", "");
    Component component({m_scene->programs.path(), inTheWay + QStringLiteral("/journals")});
    Reports reports;
    connect(&component, &Component::send, this, [&](const auto &message) { reports.add(message); });
    QTest::ignoreMessage(
        QtWarningMsg, "The journal cannot be written; a killed run will leave its files behind.");
    QVERIFY(component.prepare());
    component.receive("{\"type\":\"print\",\"job\":1,\"documents\":[{\"file\":\"" +
                      QFile::encodeName(m_scene->document("a.docx")) + "\"}]}\n");
    QTRY_VERIFY_WITH_TIMEOUT(reports.has("complete"), Patience);
    QVERIFY(QFileInfo::exists(m_scene->path("a.ps~")));
}

QTEST_GUILESS_MAIN(TestComponent)
#include "tst_component.moc"
