#include "component/supervisor/PdfFile.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QTest>

using namespace Quorlin;

class TestPdfFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looksAtBothEnds_data();
    void looksAtBothEnds();
    void nothingIsNoPdf();
};

void TestPdfFile::looksAtBothEnds_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("whole");
    const QByteArray body(100'000, 'x');
    QTest::newRow("whole") << "%PDF-1.7\n" + body + "\n%%EOF\n" << true;
    QTest::newRow("small") << QByteArray("%PDF-1.4 %%EOF") << true;
    QTest::newRow("a little after its end") << "%PDF-1.4\n%%EOF\r\n" + body.left(900) << true;
    QTest::newRow("cut") << "%PDF-1.7\n" + body << false;
    QTest::newRow("cut inside its end") << "%PDF-1.7\n" + body + "\n%%EO" << false;
    QTest::newRow("ends long before its last byte") << "%PDF-1.7\n%%EOF\n" + body << false;
    QTest::newRow("another kind") << "%!PS-Adobe-3.0\n" + body + "\n%%EOF\n" << false;
    QTest::newRow("bytes before its beginning") << QByteArray(" %PDF-1.7\n%%EOF\n") << false;
    QTest::newRow("half a mark") << QByteArray("%PDF") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("bytes of value zero") << QByteArray(5000, '\0') << false;
}

void TestPdfFile::looksAtBothEnds()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, whole);
    const TestFolder folder;
    QCOMPARE(PdfFile::looksWhole(folder.write("a.pdf", content)), whole);
}

void TestPdfFile::nothingIsNoPdf()
{
    const TestFolder folder;
    QVERIFY(!PdfFile::looksWhole(folder.path("gone.pdf")));
    QVERIFY(!PdfFile::looksWhole(folder.path()));
    QVERIFY(!PdfFile::looksWhole(SystemActions::nullDevice()));
}

QTEST_GUILESS_MAIN(TestPdfFile)
#include "tst_pdffile.moc"
