#include "support/SystemActions.h"
#include "unit/supervisor/ComponentScene.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Quorlin;

namespace {

const QByteArray OnePage("%!PS\n72 72 moveto 200 200 lineto stroke showpage\n");

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

} // namespace

/// The distilling step with the real Ghostscript.
class TestDistilJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ComponentScene>(); }
    void cleanup() { m_scene.reset(); }
    void distilsWhatWasPrinted();
    void printedFilesAreRemovedAfterwards();
    void printedFilesAreRemovedAlsoWhenTheyFail();
    void distilsForeignPostScriptAndKeepsIt();
    void foreignPostScriptCannotChangeItsOwnFile();
    void foreignPostScriptMayBeALink();
    void aFileThatTheUserChangedIsTheUsers();
    void resultsComeInTheOrderOfTheList();
    void oneFailureCostsNoOtherDocument();
    void aFileThatEndsItsDistillerIsTriedAlone();
    void aFileThatHangsIsTold();
    void everyDocumentMayHaveOptionsOfItsOwn();
    void missingOptionsFailTheWholeStep();
    void faultyOptionsAreTold_data();
    void faultyOptionsAreTold();
    void nothingIsReportedAfterTheEnd();
    void aMissingDistillerIsNamed();
    void documentsThatAreNoFilesAreTold();
    void aFileOfTheUsersUnderTheHiddenNameStays();
    void progressComesByPage();
    void manyDocumentsComeThrough();
    void nothingOfTheWorkStaysInTheWorkingFolder();

private:
    QString printed(const char *name, const QByteArray &text = "text");

    std::unique_ptr<ComponentScene> m_scene;
};

/// A document that has been printed. @return its PostScript.
QString TestDistilJob::printed(const char *name, const QByteArray &text)
{
    return m_scene->print({m_scene->document(name, text)}).value(0);
}

void TestDistilJob::distilsWhatWasPrinted()
{
    const auto outputs = m_scene->distil({printed("report.docx", "pages 3")});
    QCOMPARE(outputs, QStringList{m_scene->path("report.pdf~")});
    QVERIFY(m_scene->succeeded());
    QVERIFY(contentOf(outputs[0]).startsWith("%PDF-1.4"));
    QVERIFY(!m_scene->reports.has("output", 2));
}

void TestDistilJob::printedFilesAreRemovedAfterwards()
{
    m_scene->distil({printed("a.docx"), printed("b.pdf", "%PDF-1.4\n%%EOF")});
    QCOMPARE(m_scene->reports.failures(), QStringList());
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("a.docx"), QStringLiteral("a.pdf~"),
                          QStringLiteral("b (2).pdf~"), QStringLiteral("b.pdf")}));
}

void TestDistilJob::printedFilesAreRemovedAlsoWhenTheyFail()
{
    m_scene->distil({printed("a.docx", "ps nosuchoperator")});
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:damaged")});
    QCOMPARE(m_scene->documents.names(), QStringList{QStringLiteral("a.docx")});
}

void TestDistilJob::distilsForeignPostScriptAndKeepsIt()
{
    const auto job = m_scene->document("job.ps", OnePage);
    const auto other = m_scene->document("other.prn", OnePage);
    QCOMPARE(m_scene->distil(m_scene->print({job, other})),
             QStringList({m_scene->path("job.pdf~"), m_scene->path("other.pdf~")}));
    m_scene->end();
    QCOMPARE(contentOf(job), OnePage);
    QCOMPARE(contentOf(other), OnePage);
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("job.ps"), QStringLiteral("other.prn")}));
}

void TestDistilJob::foreignPostScriptCannotChangeItsOwnFile()
{
    const QByteArray program(
        "%!PS\n/f currentpagedevice /OutputFile get dup length 10 sub 0 exch getinterval def\n"
        "/n f length 8 add string def n 0 f putinterval n f length (input.ps) putinterval\n"
        "n (a) file dup (vandal) writestring closefile showpage\n");
    const auto job = m_scene->document("job.ps", program);
    const auto outputs = m_scene->distil({job});
    QCOMPARE(m_scene->reports.failures(), QStringList()); // it did write, but to its copy
    QVERIFY(QFileInfo::exists(outputs[0]));
    QCOMPARE(contentOf(job), program);
}

void TestDistilJob::foreignPostScriptMayBeALink()
{
    const auto job = m_scene->document("folder/job.ps", OnePage);
    QVERIFY(QFile::link(job, m_scene->path("link.ps")));
    QCOMPARE(m_scene->distil({m_scene->path("link.ps")}), QStringList{m_scene->path("link.pdf~")});
    QVERIFY(m_scene->succeeded());
    QVERIFY(QFileInfo(m_scene->path("link.ps")).isSymLink());
}

void TestDistilJob::aFileThatTheUserChangedIsTheUsers()
{
    const auto file = printed("report.docx");
    QVERIFY(QFile::remove(file));
    m_scene->document("report.ps~", OnePage);
    m_scene->distil({file});
    QVERIFY(m_scene->succeeded());
    m_scene->end();
    QCOMPARE(contentOf(file), OnePage);
}

void TestDistilJob::resultsComeInTheOrderOfTheList()
{
    const auto slow = m_scene->document("slow.ps", "%!\n200000 { 1 sin pop } repeat showpage foo");
    const auto fast = m_scene->document("fast.ps", "%!\nfoo");
    m_scene->distil({slow, fast, m_scene->path("gone.ps")});
    QCOMPARE(m_scene->reports.failures(),
             QStringList({QStringLiteral("1:damaged"), QStringLiteral("2:damaged"),
                          QStringLiteral("3:not-found")}));
}

void TestDistilJob::oneFailureCostsNoOtherDocument()
{
    const auto files = m_scene->print(
        {m_scene->document("a.docx"), m_scene->document("b.docx", "ps nosuchoperator"),
         m_scene->document("c.docx", "ps { 1 dict begin } loop"), m_scene->document("d.docx")});
    const auto outputs = m_scene->distil(files);
    QCOMPARE(m_scene->reports.failures(),
             QStringList({QStringLiteral("2:damaged"), QStringLiteral("3:damaged")}));
    QVERIFY(QFileInfo::exists(outputs[0]));
    QVERIFY(!QFileInfo::exists(outputs[1]));
    QVERIFY(!QFileInfo::exists(outputs[2]));
    QVERIFY(QFileInfo::exists(outputs[3]));
    QVERIFY(m_scene->succeeded());
}

void TestDistilJob::aFileThatEndsItsDistillerIsTriedAlone()
{
    const auto files = m_scene->print({m_scene->document("a.docx"),
                                       m_scene->document("b.docx", "ps showpage quit"),
                                       m_scene->document("c.docx")});
    const auto outputs = m_scene->distil(files);
    QCOMPARE(m_scene->reports.failures(), QStringList());
    for (const auto &output : outputs)
        QVERIFY(contentOf(output).startsWith("%PDF-"));
}

void TestDistilJob::aFileThatHangsIsTold()
{
    const auto files =
        m_scene->print({m_scene->document("a.docx", "ps { } loop"),
                        m_scene->document("b.ps", "%!\n{ } loop"), m_scene->document("c.docx")});
    m_scene->stallSeconds = 1;
    m_scene->distil(files);
    QCOMPARE(m_scene->reports.failures(),
             QStringList({QStringLiteral("1:too-long"), QStringLiteral("2:too-long")}));
    QCOMPARE(contentOf(m_scene->path("b.ps")), QByteArray("%!\n{ } loop"));
}

void TestDistilJob::everyDocumentMayHaveOptionsOfItsOwn()
{
    const auto files = m_scene->print({m_scene->document("a.docx"), m_scene->document("b.docx")});
    const auto other =
        m_scene->home.write("p.joboptions", "<< /CompatibilityLevel 1.6 >> setdistillerparams\n");
    const auto entry = [](const QString &file, const QString &options) {
        return QJsonObject{{QStringLiteral("file"), file}, {QStringLiteral("options"), options}};
    };
    m_scene->send({{QStringLiteral("type"), QStringLiteral("distil")},
                   {QStringLiteral("job"), 77},
                   {QStringLiteral("documents"),
                    QJsonArray{entry(files[0], m_scene->options()), entry(files[1], other)}}});
    QVERIFY(m_scene->waitFor("complete", 77));
    QVERIFY(contentOf(m_scene->path("a.pdf~")).startsWith("%PDF-1.4"));
    QVERIFY(contentOf(m_scene->path("b.pdf~")).startsWith("%PDF-1.6"));
}

void TestDistilJob::missingOptionsFailTheWholeStep()
{
    const auto files = m_scene->print({m_scene->document("a.docx"), m_scene->document("b.docx")});
    m_scene->distil(files, m_scene->home.path("gone.joboptions"));
    QCOMPARE(m_scene->reports.failures(),
             QStringList({QStringLiteral("1:bad-options"), QStringLiteral("2:bad-options")}));
    QVERIFY(!m_scene->succeeded());
    QVERIFY(textOf(m_scene->reports.last("failure"), "text")
                .contains(QStringLiteral("gone.joboptions")));
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("a.docx"), QStringLiteral("b.docx")}));
}

void TestDistilJob::faultyOptionsAreTold_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::newRow("unknown word") << QByteArray("<< /A 1 >> setdistillerthings\n");
    QTest::newRow("cut") << QByteArray("<< /A 1 >> { setdistiller");
    QTest::newRow("empty") << QByteArray();
}

void TestDistilJob::faultyOptionsAreTold()
{
    QFETCH(const QByteArray, options);
    const auto files =
        m_scene->print({m_scene->document("a.docx"), m_scene->document("b.ps", OnePage)});
    m_scene->distil(files, m_scene->home.write("bad.joboptions", options));
    QCOMPARE(m_scene->reports.failures(),
             QStringList({QStringLiteral("1:bad-options"), QStringLiteral("2:bad-options")}));
    QCOMPARE(contentOf(m_scene->path("b.ps")), OnePage);
}

void TestDistilJob::nothingIsReportedAfterTheEnd()
{
    const auto files = m_scene->print({m_scene->document("a.docx"), m_scene->document("b.docx")});
    for (const auto &options : {m_scene->home.path("gone.joboptions"), m_scene->options()}) {
        m_scene->reports.clear();
        m_scene->distil(files, options);
        QTest::qWait(200); // what still waited to be done is done by now
        QCOMPARE(textOf(m_scene->reports.all().last(), "type"), QStringLiteral("complete"));
        QCOMPARE(m_scene->reports.of("complete").size(), 1);
    }
}

void TestDistilJob::aMissingDistillerIsNamed()
{
    const auto files =
        m_scene->print({m_scene->document("a.docx"), m_scene->document("b.ps", OnePage)});
    qputenv("PATH", QFile::encodeName(m_scene->home.makeFolder("nothing")));
    m_scene->distil(files);
    QCOMPARE(m_scene->reports.failures(), QStringList({QStringLiteral("1:program-missing"),
                                                       QStringLiteral("2:program-missing")}));
    QVERIFY(
        textOf(m_scene->reports.last("failure"), "text").contains(QStringLiteral("Ghostscript")));
}

void TestDistilJob::documentsThatAreNoFilesAreTold()
{
    QVERIFY(SystemActions::makeFifo(m_scene->path("pipe.ps")));
    m_scene->documents.makeFolder("folder.ps");
    m_scene->distil({m_scene->path("gone.ps"), m_scene->path("pipe.ps"), m_scene->path("folder.ps"),
                     SystemActions::nullDevice()});
    QCOMPARE(m_scene->reports.failures(),
             QStringList({QStringLiteral("1:not-found"), QStringLiteral("2:not-regular"),
                          QStringLiteral("3:not-regular"), QStringLiteral("4:not-regular")}));
    QVERIFY(!m_scene->succeeded());
}

void TestDistilJob::aFileOfTheUsersUnderTheHiddenNameStays()
{
    const auto users = m_scene->document("a.pdf~", "the user's");
    QCOMPARE(m_scene->distil({printed("a.docx")}), QStringList{m_scene->path("a.pdf2~")});
    m_scene->end();
    QCOMPARE(contentOf(users), QByteArray("the user's"));
}

void TestDistilJob::progressComesByPage()
{
    const auto file = printed("a.docx", "pages 10");
    m_scene->reports.clear();
    m_scene->distil({file});
    const auto percents = m_scene->reports.percents();
    QVERIFY(std::ranges::is_sorted(percents));
    QVERIFY(percents.size() >= 10);
    QCOMPARE(percents.last(), 100);
}

void TestDistilJob::manyDocumentsComeThrough()
{
    constexpr int Count = 40;
    QStringList files;
    for (int i = 0; i < Count; ++i)
        files << m_scene->document(QByteArray(QByteArray::number(i) + ".docx").constData(),
                                   "pages " + QByteArray::number(i % 3 + 1));
    const auto outputs = m_scene->distil(m_scene->print(files));
    QCOMPARE(m_scene->reports.failures(), QStringList());
    QCOMPARE(outputs.size(), Count);
    for (int i = 0; i < Count; ++i) {
        const auto pdf = contentOf(outputs[i]);
        QCOMPARE(pdf.count("/Type/Page") - pdf.count("/Type/Pages"), i % 3 + 1);
    }
}

void TestDistilJob::nothingOfTheWorkStaysInTheWorkingFolder()
{
    const auto before = m_scene->workFolder();
    m_scene->distil({printed("a.docx"), m_scene->document("b.ps", OnePage)});
    m_scene->send({{QStringLiteral("type"), QStringLiteral("clear")},
                   {QStringLiteral("step"), QStringLiteral("distil")}});
    m_scene->end();
    QCOMPARE(m_scene->leftovers(), QStringList());
    QVERIFY(!QFileInfo::exists(before));
}

QTEST_GUILESS_MAIN(TestDistilJob)
#include "tst_distiljob.moc"
