#include "component/confinement/Confinement.h"
#include "endtoend/ConvertScene.h"
#include "endtoend/PdfFacts.h"
#include "endtoend/TestDocuments.h"
#include "unit/office/PackageMaker.h"

#include <QDirIterator>
#include <QTcpServer>
#include <QTest>
#include <QUrl>

#include <memory>

using namespace Quorlin;

/// Documents that reach out, or take all they can get. Another document of the same list must not
/// suffer.
class tst_endtoend_hostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ConvertScene>(); }
    void cleanup();
    void linkedPicturesAreNotFetched_data();
    void linkedPicturesAreNotFetched();
    void linkedFilesAreNotRead_data();
    void linkedFilesAreNotRead();
    void macrosDoNotRun();
    void whatNeedsTooMuchMemoryFails_data();
    void whatNeedsTooMuchMemoryFails();
    void whatFillsTheDiskFails();
    void aSystemWithoutFileRulesIsToldOfOnce();
    void aSystemWithoutFiltersIsToldOfOnce();
    void socketsOfTheEngineLieInItsFolder();

private:
    Outcome convertWithAGoodOne(const QString &name, const QStringList &options = {});
    void convertWithout(const QString &what, const QString &told);

    std::unique_ptr<ConvertScene> m_scene;
};

namespace {

const QString Converted = QStringLiteral("converted");

QByteArray flatText(const QByteArray &body, const QByteArray &scripts = {})
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.text"
 xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0"
 xmlns:ooo="http://openoffice.org/2004/office"
 xmlns:script="urn:oasis:names:tc:opendocument:xmlns:script:1.0"
 xmlns:xlink="http://www.w3.org/1999/xlink">)" +
           scripts + "<office:body><office:text>" + body +
           "</office:text></office:body></office:document>";
}

QByteArray pictureFrame(const QByteArray &address)
{
    return "<text:p><draw:frame svg:width=\"5cm\" svg:height=\"5cm\" text:anchor-type=\"as-char\">"
           "<draw:image xlink:type=\"simple\" xlink:href=\"" +
           address + "\"/></draw:frame>visible</text:p>";
}

QByteArray linkedSection(const QByteArray &address)
{
    return "<text:section text:name=\"s\"><text:section-source xlink:type=\"simple\" "
           "xlink:href=\"" +
           address + "\"/><text:p>visible</text:p></text:section>";
}

QByteArray flatSheet(const QByteArray &formula)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.spreadsheet"
 xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"><office:body><office:spreadsheet>
<table:table table:name="a"><table:table-row><table:table-cell table:formula=")" +
           formula + R"("/><table:table-cell office:value-type="string"><text:p>visible</text:p>
</table:table-cell></table:table-row></table:table></office:spreadsheet></office:body>
</office:document>)";
}

/// A macro in the document, bound to its loading.
QByteArray loadingMacro(const QByteArray &target)
{
    return R"(<office:scripts><office:script script:language="ooo:Basic">
<ooo:libraries><ooo:library-embedded ooo:name="Standard"><ooo:module ooo:name="Module1">
<ooo:source-code>Sub Main
Open ")" + target +
           R"(" For Output As #1
Close #1
End Sub</ooo:source-code></ooo:module></ooo:library-embedded></ooo:libraries></office:script>
<office:event-listeners><script:event-listener script:language="ooo:script"
 script:event-name="dom:load"
 xlink:href="vnd.sun.star.script:Standard.Module1.Main?language=Basic&amp;location=document"
 xmlns:dom="http://www.w3.org/2001/xml-events" xlink:type="simple"/></office:event-listeners>
</office:scripts>)";
}

} // namespace

void tst_endtoend_hostile::cleanup()
{
    QCOMPARE(m_scene->leftovers(), QString());
    m_scene.reset();
}

Outcome tst_endtoend_hostile::convertWithAGoodOne(const QString &name, const QStringList &options)
{
    m_scene->write(QStringLiteral("good.fodt"), TestDocuments::letter("good"));
    return m_scene->convert(options + QStringList{name, QStringLiteral("good.fodt")});
}

void tst_endtoend_hostile::linkedPicturesAreNotFetched_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    const QByteArray picture = "http://127.0.0.1:%1/x.png";
    QTest::newRow("text") << QStringLiteral("a.fodt") << flatText(pictureFrame(picture));
    QTest::newRow("section") << QStringLiteral("a.fodt") << flatText(linkedSection(picture));
    QTest::newRow("page") << QStringLiteral("a.html")
                          << QByteArray("<p>first</p><p>visible<img src=\"" + picture +
                                        "\"><link rel=\"stylesheet\" href=\"" + picture +
                                        "\"></p>");
    QTest::newRow("table") << QStringLiteral("a.fods")
                           << flatSheet("of:=WEBSERVICE(&quot;" + picture + "&quot;)");
    QTest::newRow("drawing") << QStringLiteral("a.svg")
                             << QByteArray(
                                    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"90\" "
                                    "height=\"90\" xmlns:xlink=\"http://www.w3.org/1999/xlink\">"
                                    "<rect width=\"9\" height=\"9\"/><image width=\"50\" "
                                    "height=\"50\" xlink:href=\"" +
                                    picture + "\"/></svg>");
    QTest::newRow("rich text") << QStringLiteral("a.rtf")
                               << QByteArray("{\\rtf1 visible {\\field{\\*\\fldinst INCLUDEPICTURE "
                                             "\"" +
                                             picture + "\" \\\\d}{\\fldrslt x}}}");
}

void tst_endtoend_hostile::linkedPicturesAreNotFetched()
{
    QFETCH(const QString, name);
    QFETCH(QByteArray, content);
    QTcpServer web;
    QVERIFY(web.listen(QHostAddress::LocalHost));
    content.replace("%1", QByteArray::number(web.serverPort()));
    m_scene->write(name, content);
    const auto outcome = convertWithAGoodOne(name);
    QCOMPARE(outcome.results(), QStringList({Converted, Converted}));
    QVERIFY(!web.hasPendingConnections() && !web.waitForNewConnection(200));
}

void tst_endtoend_hostile::linkedFilesAreNotRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("section") << QStringLiteral("a.fodt") << flatText(linkedSection("%1"));
    QTest::newRow("section beside it")
        << QStringLiteral("a.fodt") << flatText(linkedSection("../secret.txt"));
    QTest::newRow("table") << QStringLiteral("a.fods") << flatSheet("of:='%1'#$secret.A1");
    QTest::newRow("page") << QStringLiteral("a.html")
                          << QByteArray("<p>first</p><p>visible</p><iframe src=\"%1\"></iframe>");
    QTest::newRow("rich text") << QStringLiteral("a.rtf")
                               << QByteArray("{\\rtf1 visible {\\field{\\*\\fldinst INCLUDETEXT "
                                             "\"%1\"}{\\fldrslt x}}}");
}

void tst_endtoend_hostile::linkedFilesAreNotRead()
{
    QFETCH(const QString, name);
    QFETCH(QByteArray, content);
    const auto secret = m_scene->write(QStringLiteral("secret.txt"), "Blackcurrant\n");
    content.replace("%1", QUrl::fromLocalFile(secret).toEncoded());
    m_scene->write(name, content);
    const auto outcome = convertWithAGoodOne(name);
    QCOMPARE(outcome.results(), QStringList({Converted, Converted}));
    const auto text = PdfFacts(outcome.pdf()).text();
    QVERIFY(text.contains(QStringLiteral("visible")));
    QVERIFY(!text.contains(QStringLiteral("Blackcurrant")));
}

void tst_endtoend_hostile::macrosDoNotRun()
{
    const auto target = m_scene->path(QStringLiteral("made-by-a-macro"));
    m_scene->write(QStringLiteral("a.fodt"),
                   flatText("<text:p>visible</text:p>", loadingMacro(target.toUtf8())));
    const auto outcome = convertWithAGoodOne(QStringLiteral("a.fodt"));
    QCOMPARE(outcome.results(), QStringList({Converted, Converted}));
    QVERIFY(!QFile::exists(target));
}

void tst_endtoend_hostile::whatNeedsTooMuchMemoryFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text that expands")
        << QStringLiteral("a.docx") << PackageMaker::endlessDocument(1'000'000);
    QTest::newRow("program") << QStringLiteral("a.ps")
                             << QByteArray("%!PS\n[ { 60000 string } loop ] showpage\n");
}

void tst_endtoend_hostile::whatNeedsTooMuchMemoryFails()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);
    QVERIFY(content.size() < 200'000);
    m_scene->write(name, content);
    const auto outcome =
        convertWithAGoodOne(name, {QStringLiteral("--memory"), QStringLiteral("400")});
    QCOMPARE(outcome.results(), QStringList({QStringLiteral("out-of-memory"), Converted}));
    QVERIFY2(outcome.seconds < 30, qPrintable(QString::number(outcome.seconds)));
}

/// A program of a stranger's may write into its folder, but not for ever.
void tst_endtoend_hostile::whatFillsTheDiskFails()
{
    m_scene->write(
        QStringLiteral("a.ps"),
        "%!PS\n/page { 300 { rand 600 mod rand 800 mod moveto (xxxxxxxxxx) show } repeat "
        "showpage } def\n/Helvetica findfont 10 scalefont setfont { page } loop\n");
    const auto outcome = convertWithAGoodOne(QStringLiteral("a.ps"),
                                             {QStringLiteral("--timeout"), QStringLiteral("4")});
    QCOMPARE(outcome.results(), QStringList({QStringLiteral("too-long"), Converted}));
}

void tst_endtoend_hostile::convertWithout(const QString &what, const QString &told)
{
    m_scene->write(QStringLiteral("a.fodt"), TestDocuments::letter("a"));
    m_scene->write(QStringLiteral("b.ps"), TestDocuments::postScript("b"));
    m_scene->runThrough({QStringLiteral(QUORLIN_CONFINED_PROGRAM), what});
    const auto outcome = m_scene->convert({QStringLiteral("a.fodt"), QStringLiteral("b.ps")});
    QCOMPARE(outcome.results(), QStringList({Converted, Converted}));
    QCOMPARE(outcome.errors.count(told), 1);
}

void tst_endtoend_hostile::aSystemWithoutFileRulesIsToldOfOnce()
{
    convertWithout(QStringLiteral("without-file-rules"), QStringLiteral("no Landlock"));
}

void tst_endtoend_hostile::aSystemWithoutFiltersIsToldOfOnce()
{
    convertWithout(QStringLiteral("without-call-filters"), QStringLiteral("without a sandbox"));
}

void tst_endtoend_hostile::socketsOfTheEngineLieInItsFolder()
{
    if (const auto missing = Confinement::missing(); !missing.isEmpty())
        QSKIP(qPrintable(missing));
    m_scene->write(QStringLiteral("a.html"), TestDocuments::longPage(3000));
    m_scene->start({QStringLiteral("a.html")});
    const auto inWork = [this] {
        QDirIterator sockets(m_scene->temporary(), {QStringLiteral("OSL_PIPE_*")}, QDir::System,
                             QDirIterator::Subdirectories);
        return sockets.hasNext();
    };
    QVERIFY(m_scene->waitWhileRunning(inWork));
    QCOMPARE(m_scene->finish().results(), QStringList(Converted));
    m_scene->mayChange(QStringLiteral("a.pdf"));
}

QTEST_GUILESS_MAIN(tst_endtoend_hostile)
#include "tst_endtoend_hostile.moc"
