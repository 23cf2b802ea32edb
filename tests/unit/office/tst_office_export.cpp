#include "unit/office/OfficeScene.h"
#include "unit/office/PackageMaker.h"

#include <QTest>

#include <algorithm>

using namespace Quorlin;

namespace {

QString eventOf(const QJsonObject &message)
{
    return message.value(QLatin1String("event")).toString();
}

QString reasonOf(const QJsonObject &message)
{
    return message.value(QLatin1String("reason")).toString();
}

/// A drawing of 24 by 24 units.
const QByteArray Drawing("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"24\" height=\"24\">"
                         "<rect width=\"20\" height=\"10\" fill=\"red\"/></svg>");

} // namespace

class TestOfficeExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void greetsWithItsEngine();
    void exports_data();
    void exports();
    void countsPages();
    void plainLeavesBookmarksOut();
    void namesMayHoldAnyCharacter();
    void progressNeverFalls();
    void commentsDoNotEndTheEngine();
    void linkedPicturesAreNotFetched();
    void refuses_data();
    void refuses();
    void aMissingFileIsNotFound();
    void aResultWithoutAFolderIsRefused();
    void requestsThatMakeNoSenseAreRefused_data();
    void requestsThatMakeNoSenseAreRefused();
    void cleanupTestCase();

private:
    OfficeScene m_scene;
    QJsonObject m_greeting;
};

void TestOfficeExport::initTestCase()
{
    m_greeting = m_scene.start();
}

void TestOfficeExport::greetsWithItsEngine()
{
    QCOMPARE(eventOf(m_greeting), QStringLiteral("ready"));
    QCOMPARE(m_greeting.value(QLatin1String("worker")).toString(), QStringLiteral("office"));
    QVERIFY(m_scene.engineId() > 1);
    const auto version = m_greeting.value(QLatin1String("engineVersion")).toString();
    QVERIFY2(version.count(QLatin1Char('.')) >= 2, qPrintable(version));
}

void TestOfficeExport::exports_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("text") << QByteArray("a.txt") << QByteArray("Some words\n");
    QTest::newRow("page") << QByteArray("a.html") << QByteArray("<p>Words</p>");
    QTest::newRow("package") << QByteArray("a.odt") << PackageMaker::textDocument("Words");
    QTest::newRow("table") << QByteArray("a.csv") << QByteArray("one,two\n1,\"2,5\"\n");
    QTest::newRow("drawing") << QByteArray("a.svg") << Drawing;
}

void TestOfficeExport::exports()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QByteArray, content);
    const auto answer = m_scene.exportFile(m_scene.documents().write(name.constData(), content));
    QCOMPARE(eventOf(answer), QStringLiteral("done"));
    QCOMPARE(answer.value(QLatin1String("pages")).toInt(), 1);
    const auto pdf = contentOf(m_scene.output());
    QVERIFY(pdf.startsWith("%PDF-"));
    QVERIFY(pdf.trimmed().endsWith("%%EOF"));
    QVERIFY(QFile::remove(m_scene.output()));
}

void TestOfficeExport::countsPages()
{
    const auto page = QByteArray("<p style=\"page-break-before: always\">Next</p>");
    const auto file = m_scene.documents().write("pages.html", "<p>First</p>" + page + page);
    QCOMPARE(m_scene.exportFile(file).value(QLatin1String("pages")).toInt(), 3);
}

void TestOfficeExport::plainLeavesBookmarksOut()
{
    const auto file = m_scene.documents().write("heads.html", "<h1>One</h1><h2>Two</h2>");
    QCOMPARE(eventOf(m_scene.exportFile(file)), QStringLiteral("done"));
    QVERIFY(contentOf(m_scene.output()).contains("/Outlines"));
    QCOMPARE(eventOf(m_scene.exportFile(file, true)), QStringLiteral("done"));
    QVERIFY(!contentOf(m_scene.output()).contains("/Outlines"));
}

void TestOfficeExport::namesMayHoldAnyCharacter()
{
    const auto file = m_scene.documents().write("50%20 #1?;[é] \"日本\" 😀.txt", "words");
    QCOMPARE(eventOf(m_scene.exportFile(file)), QStringLiteral("done"));
}

void TestOfficeExport::progressNeverFalls()
{
    const auto file =
        m_scene.documents().write("long.html", QByteArray("<p>Some words</p>\n").repeated(3000));
    QCOMPARE(eventOf(m_scene.exportFile(file)), QStringLiteral("done"));
    const auto &progress = m_scene.progress();
    QVERIFY(progress.size() > 2);
    QVERIFY(std::ranges::is_sorted(progress));
    QVERIFY(progress.first() >= 0 && progress.last() <= 100);
}

void TestOfficeExport::commentsDoNotEndTheEngine()
{
    const auto commented = PackageMaker::textDocument(
        "Words<office:annotation xmlns:dc=\"http://purl.org/dc/elements/1.1/\">"
        "<dc:creator>Somebody</dc:creator><text:p>Remark</text:p></office:annotation>");
    const auto file = m_scene.documents().write("comment.odt", commented);
    for (int time = 0; time < 5; ++time)
        QCOMPARE(eventOf(m_scene.exportFile(file)), QStringLiteral("done"));
}

void TestOfficeExport::linkedPicturesAreNotFetched()
{
    const auto size = [this](const QByteArray &page) {
        const auto file = m_scene.documents().write("linked.html", page);
        return eventOf(m_scene.exportFile(file)) == QLatin1String("done")
                   ? contentOf(m_scene.output()).count("/Subtype/Image")
                   : -1;
    };
    m_scene.documents().write(
        "secret.bmp", QByteArray::fromHex("424d4600000000000000360000002800000002000000020000000100"
                                          "180000000000100000000000000000000"
                                          "0000000000000000000ff00ff00ff000000ff00ff00ff000000"));
    QCOMPARE(size("<p>x</p><img src=\"secret.bmp\" width=99 height=99>"), 0);
}

void TestOfficeExport::refuses_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");

    const auto whole = PackageMaker::textDocument("Words");
    QTest::newRow("open document with password")
        << QByteArray("a.odt") << PackageMaker::encryptedDocument() << QStringLiteral("protected");
    QTest::newRow("encrypted package")
        << QByteArray("a.docx") << PackageMaker::encryptedCompound() << QStringLiteral("protected");
    QTest::newRow("truncated package")
        << QByteArray("a.odt") << whole.first(whole.size() / 2) << QStringLiteral("damaged");
    QTest::newRow("noise") << QByteArray("a.docx") << QByteArray("\x07\x00\x12", 3).repeated(999)
                           << QStringLiteral("damaged");
    QTest::newRow("picture without content")
        << QByteArray("a.png") << QByteArray("\x89PNG\r\n\x1A\n") << QStringLiteral("damaged");
    QTest::newRow("empty") << QByteArray("a.doc") << QByteArray() << QStringLiteral("empty");
}

void TestOfficeExport::refuses()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QByteArray, content);
    QFETCH(const QString, reason);
    const auto answer = m_scene.exportFile(m_scene.documents().write(name.constData(), content));
    QCOMPARE(eventOf(answer), QStringLiteral("failed"));
    QCOMPARE(reasonOf(answer), reason);
    const auto next = m_scene.documents().write("next.txt", "words");
    QCOMPARE(eventOf(m_scene.exportFile(next)), QStringLiteral("done"));
}

void TestOfficeExport::aMissingFileIsNotFound()
{
    QCOMPARE(reasonOf(m_scene.exportFile(m_scene.documents().path("no.doc"))),
             QStringLiteral("not-found"));
}

void TestOfficeExport::aResultWithoutAFolderIsRefused()
{
    const auto file = m_scene.documents().write("words.txt", "words");
    m_scene.send({{QStringLiteral("id"), 99},
                  {QStringLiteral("op"), QStringLiteral("export")},
                  {QStringLiteral("input"), file},
                  {QStringLiteral("output"), m_scene.documents().path("no/folder/out.pdf")}});
    QCOMPARE(reasonOf(m_scene.readAnswer()), QStringLiteral("not-allowed"));
    QVERIFY(!QFile::exists(m_scene.documents().path("no")));
    QCOMPARE(eventOf(m_scene.exportFile(file)), QStringLiteral("done"));
}

void TestOfficeExport::requestsThatMakeNoSenseAreRefused_data()
{
    QTest::addColumn<QJsonObject>("request");

    QTest::newRow("no operation") << QJsonObject{{QStringLiteral("id"), 7}};
    QTest::newRow("relative path")
        << QJsonObject{{QStringLiteral("id"), 7},
                       {QStringLiteral("op"), QStringLiteral("export")},
                       {QStringLiteral("input"), QStringLiteral("a.doc")},
                       {QStringLiteral("output"), QStringLiteral("/tmp/out.pdf")}};
}

void TestOfficeExport::requestsThatMakeNoSenseAreRefused()
{
    QFETCH(const QJsonObject, request);
    m_scene.send(request);
    const auto answer = m_scene.readAnswer();
    QCOMPARE(eventOf(answer), QStringLiteral("failed"));
    QCOMPARE(answer.value(QLatin1String("id")).toInt(), 7);
}

void TestOfficeExport::cleanupTestCase()
{
    m_scene.worker().closeWriteChannel();
    QVERIFY(m_scene.waitForEnd());
    QCOMPARE(m_scene.worker().exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestOfficeExport)
#include "tst_office_export.moc"
