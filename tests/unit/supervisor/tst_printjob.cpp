#include "support/SystemActions.h"
#include "unit/supervisor/ComponentScene.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QSet>
#include <QTest>
#include <QUrl>

#include <algorithm>
#include <memory>

using namespace Quorlin;

namespace {

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

QString addressOf(const QString &folder)
{
    return QString::fromLatin1(QUrl::fromLocalFile(folder + QLatin1Char('/')).toEncoded());
}

} // namespace

/// The printing step, from the request to its last report.
class TestPrintJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ComponentScene>(); }
    void cleanup() { m_scene.reset(); }
    void printsADocumentBesideIt();
    void reportsFromStartToEnd();
    void theEngineExportsACopyUnderTheDocumentsName();
    void thePrinterGetsWhatItNeeds();
    void aPdfSkipsTheEngine();
    void postScriptIsUsedAsItIs();
    void postScriptThatCannotStayInPlaceIsCopied();
    void documentsOfOneNameGetNamesOfTheirOwn();
    void aFileOfTheUsersUnderTheHiddenNameStays();
    void resultsComeInTheOrderOfTheList();
    void aJobWithoutDocumentsSucceeds();
    void strangeNamesReachTheEngineAsPlainOnes();
    void manyDocumentsComeThrough();
    void progressOfTheEngineIsReported();
    void aFolderThatCannotBeWrittenGivesWayToTheDocumentsFolder();
    void theHomeFolderComesLast();
    void noWritableFolderFailsTheDocument();

private:
    std::unique_ptr<ComponentScene> m_scene;
};

void TestPrintJob::printsADocumentBesideIt()
{
    const auto report = m_scene->document("report.docx");
    QCOMPARE(m_scene->print({report}), QStringList{m_scene->path("report.ps~")});
    QVERIFY(m_scene->succeeded());
    QVERIFY(contentOf(m_scene->path("report.ps~")).startsWith("%!PS"));
    QCOMPARE(contentOf(report), QByteArray("text"));
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("report.docx"), QStringLiteral("report.ps~")}));
}

void TestPrintJob::reportsFromStartToEnd()
{
    m_scene->print({m_scene->document("report.docx")});
    const auto outline = m_scene->reports.outline();
    QVERIFY2(outline.startsWith(QStringLiteral("start state progress")), qUtf8Printable(outline));
    QVERIFY2(outline.endsWith(QStringLiteral("output progress complete")), qUtf8Printable(outline));
    QCOMPARE(textOf(m_scene->reports.last("output"), "file"), m_scene->path("report.ps~"));
    QCOMPARE(m_scene->reports.of("complete").size(), 1);
    QVERIFY(
        textOf(m_scene->reports.last("state"), "state").contains(QStringLiteral("report.docx")));
}

void TestPrintJob::theEngineExportsACopyUnderTheDocumentsName()
{
    const auto report = m_scene->document("my report, \"1\" Übung.docx");
    m_scene->print({report});
    const auto requests = m_scene->requests("export");
    QCOMPARE(requests.size(), 1);
    const auto input = textOf(requests[0], "input");
    QVERIFY(input.startsWith(m_scene->workFolder()));
    QCOMPARE(QFileInfo(input).fileName(), QFileInfo(report).fileName());
    QVERIFY(textOf(requests[0], "output").startsWith(m_scene->workFolder()));
    QCOMPARE(requests[0].value(QLatin1String("plain")), QJsonValue(false));
}

void TestPrintJob::thePrinterGetsWhatItNeeds()
{
    m_scene->print({m_scene->document("a b/report.docx")});
    const auto requests = m_scene->requests("print");
    QCOMPARE(requests.size(), 1);
    QCOMPARE(textOf(requests[0], "printer"), QStringLiteral("Varnex PDF"));
    QCOMPARE(textOf(requests[0], "title"), QStringLiteral("report"));
    QCOMPARE(requests[0].value(QLatin1String("foreign")), QJsonValue(false));
    const auto input = textOf(m_scene->requests("export")[0], "input");
    const auto rebase = requests[0].value(QLatin1String("rebase")).toArray();
    QCOMPARE(rebase.first().toArray()[0].toString(), addressOf(QFileInfo(input).path()));
    QCOMPARE(rebase.first().toArray()[1].toString(), addressOf(m_scene->path("a b")));
    QCOMPARE(rebase[1].toArray()[1].toString(), addressOf(m_scene->documents.path()));
}

void TestPrintJob::aPdfSkipsTheEngine()
{
    QCOMPARE(m_scene->print({m_scene->document("report.PDF", "%PDF-1.4\n%%EOF\n")}),
             QStringList{m_scene->path("report.ps~")});
    QCOMPARE(m_scene->requests("export").size(), 0);
    QCOMPARE(m_scene->requests("print")[0].value(QLatin1String("foreign")), QJsonValue(true));
}

void TestPrintJob::postScriptIsUsedAsItIs()
{
    const auto job = m_scene->document("job.ps", "%!PS\n");
    QCOMPARE(m_scene->print({job}), QStringList{job});
    QCOMPARE(m_scene->requests("export").size(), 0);
    QCOMPARE(m_scene->requests("print").size(), 0);
    m_scene->end();
    QCOMPARE(contentOf(job), QByteArray("%!PS\n"));
}

void TestPrintJob::postScriptThatCannotStayInPlaceIsCopied()
{
    const auto job = m_scene->document("job.ps", "%!PS\n");
    const auto eps = m_scene->document("job.eps", "%!PS-EPSF\n");
    QCOMPARE(m_scene->print({job, eps}), QStringList({job, m_scene->path("job.eps.ps~")}));
    QCOMPARE(contentOf(m_scene->path("job.eps.ps~")), QByteArray("%!PS-EPSF\n"));
}

void TestPrintJob::documentsOfOneNameGetNamesOfTheirOwn()
{
    QCOMPARE(m_scene->print({m_scene->document("a.docx"), m_scene->document("a.xlsx")}),
             QStringList({m_scene->path("a.ps~"), m_scene->path("a.xlsx.ps~")}));
}

void TestPrintJob::aFileOfTheUsersUnderTheHiddenNameStays()
{
    const auto users = m_scene->document("a.ps~", "the user's");
    QCOMPARE(m_scene->print({m_scene->document("a.docx")}), QStringList{m_scene->path("a.ps2~")});
    m_scene->end();
    QCOMPARE(contentOf(users), QByteArray("the user's"));
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("a.docx"), QStringLiteral("a.ps~")}));
}

void TestPrintJob::resultsComeInTheOrderOfTheList()
{
    const auto go = m_scene->home.path("go");
    const auto slow = m_scene->document("slow.pdf", "print wait-for " + QFile::encodeName(go));
    const auto job = m_scene->askToPrint({slow, m_scene->document("fast.ps", "%!PS\n")});
    QTest::qWait(300); // the second one is ready long before
    QVERIFY(!m_scene->reports.has("output"));
    m_scene->home.write("go", "");
    QVERIFY(m_scene->waitFor("complete", job));
    const auto outputs = m_scene->reports.of("output");
    QCOMPARE(outputs.size(), 2);
    QCOMPARE(outputs[0].value(QLatin1String("index")).toInt(), 1);
    QCOMPARE(textOf(outputs[0], "file"), m_scene->path("slow (2).ps~"));
    QCOMPARE(textOf(outputs[1], "file"), m_scene->path("fast.ps"));
}

void TestPrintJob::aJobWithoutDocumentsSucceeds()
{
    QCOMPARE(m_scene->print({}), QStringList());
    QVERIFY(m_scene->succeeded());
}

void TestPrintJob::strangeNamesReachTheEngineAsPlainOnes()
{
    const auto lines = m_scene->document("two\nlines\t.docx");
    const auto longName = m_scene->document(QByteArray(QByteArray(240, 'x') + ".docx").constData());
    const auto outputs = m_scene->print({lines, longName});
    QCOMPARE(m_scene->reports.failures(), QStringList());
    QCOMPARE(outputs[0], m_scene->path("two\nlines\t.ps~"));
    for (const auto &request : m_scene->requests("export"))
        QCOMPARE(QFileInfo(textOf(request, "input")).fileName(), QStringLiteral("document.docx"));
}

void TestPrintJob::manyDocumentsComeThrough()
{
    constexpr int Count = 60;
    QStringList files;
    for (int i = 0; i < Count; ++i)
        files << m_scene->document(QByteArray(QByteArray::number(i) + ".docx").constData());
    const auto outputs = m_scene->print(files);
    QCOMPARE(m_scene->reports.failures(), QStringList());
    QCOMPARE(QSet<QString>(outputs.begin(), outputs.end()).size(), Count);
    const auto percents = m_scene->reports.percents();
    QVERIFY(std::ranges::is_sorted(percents));
    QCOMPARE(percents.last(), 100);
    for (int i = 0; i < Count; ++i)
        QCOMPARE(m_scene->reports.of("output")[i].value(QLatin1String("index")).toInt(), i + 1);
}

void TestPrintJob::progressOfTheEngineIsReported()
{
    m_scene->print({m_scene->document("a.docx", "export percent 50\nprint percent 50")});
    const auto percents = m_scene->reports.percents();
    QVERIFY(std::ranges::is_sorted(percents));
    QVERIFY(percents.size() >= 4);
    QCOMPARE(percents.last(), 100);
}

void TestPrintJob::aFolderThatCannotBeWrittenGivesWayToTheDocumentsFolder()
{
    m_scene.reset();
    const OrdinaryUser user;
    m_scene = std::make_unique<ComponentScene>();
    const auto report = m_scene->document("locked/report.docx");
    m_scene->home.makeFolder("Documents");
    QVERIFY(QFile::setPermissions(m_scene->path("locked"), QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(m_scene->print({report}), QStringList{m_scene->home.path("Documents/report.ps~")});
    m_scene.reset();
}

void TestPrintJob::theHomeFolderComesLast()
{
    m_scene.reset();
    const OrdinaryUser user;
    m_scene = std::make_unique<ComponentScene>();
    const auto report = m_scene->document("locked/report.docx");
    QVERIFY(QFile::setPermissions(m_scene->path("locked"), QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(m_scene->print({report}), QStringList{m_scene->home.path("report.ps~")});
    m_scene.reset();
}

void TestPrintJob::noWritableFolderFailsTheDocument()
{
    m_scene.reset();
    const OrdinaryUser user;
    m_scene = std::make_unique<ComponentScene>();
    const auto readOnly = QFile::ReadOwner | QFile::ExeOwner;
    const auto report = m_scene->document("locked/report.docx");
    QVERIFY(QFile::setPermissions(m_scene->path("locked"), readOnly));
    QVERIFY(QFile::setPermissions(m_scene->home.path(), readOnly));
    m_scene->print({report});
    QVERIFY(QFile::setPermissions(m_scene->home.path(), readOnly | QFile::WriteOwner));
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:not-allowed")});
    QVERIFY(!m_scene->succeeded());
    m_scene.reset();
}

QTEST_GUILESS_MAIN(TestPrintJob)
#include "tst_printjob.moc"
