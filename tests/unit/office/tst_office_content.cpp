#include "component/backends/office/EncryptedPackage.h"
#include "component/backends/office/ExportedPdf.h"
#include "component/backends/office/NameCheck.h"
#include "support/TestFolder.h"
#include "unit/office/PackageMaker.h"

#include <QTest>

using namespace Quorlin;

class TestOfficeContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEncryptedPackageIsKnownByItsStream();
    void otherFilesAreNoEncryptedPackages();
    void aNameIsContradicted_data();
    void aNameIsContradicted();
    void aWholePdfTellsItsPages();
    void whatIsNoWholePdfIsSeen_data();
    void whatIsNoWholePdfIsSeen();

private:
    TestFolder m_folder;
};

void TestOfficeContent::anEncryptedPackageIsKnownByItsStream()
{
    QVERIFY(isEncryptedPackage(m_folder.write("a.docx", PackageMaker::encryptedCompound())));
}

void TestOfficeContent::otherFilesAreNoEncryptedPackages()
{
    auto withoutMark = PackageMaker::encryptedCompound();
    withoutMark[0] = 'x';
    QVERIFY(!isEncryptedPackage(m_folder.write("b.docx", withoutMark)));
    QVERIFY(!isEncryptedPackage(
        m_folder.write("c.doc", PackageMaker::encryptedCompound().first(1024))));
    QVERIFY(
        !isEncryptedPackage(m_folder.write("d.doc", PackageMaker::encryptedCompound().first(9))));
    QVERIFY(!isEncryptedPackage(m_folder.write("e.doc", "")));
    QVERIFY(!isEncryptedPackage(m_folder.path("missing.doc")));
}

void TestOfficeContent::aNameIsContradicted_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("contradicted");

    const QByteArray noise("\x07\x00\x85\xF1 noise", 10);
    const auto row = [](const char *what, const char *name, const QByteArray &content, bool is) {
        QTest::newRow(what) << QByteArray(name) << content << is;
    };
    row("package", "a.docx", PackageMaker::textDocument("x"), false);
    row("older format under a newer name", "a.docx", PackageMaker::encryptedCompound(), false);
    row("markup under an office name", "a.xlsx", "<html>", false);
    row("noise in a package's name", "a.odt", noise, true);
    row("text in a package's name", "a.docx", "plain words", true);
    row("noise in an old document's name", "a.doc", noise, true);
    row("text in an old document's name", "a.doc", "plain words", false);
    row("early spreadsheet", "a.xls", QByteArray("\x09\x04\x06\x00", 4), false);
    row("noise in a picture's name", "a.png", noise, true);
    row("another kind of picture", "a.png", "\xFF\xD8\xFF\xE0", false);
    row("a package in a picture's name", "a.jpg", PackageMaker::textDocument("x"), true);
    row("drawing in markup after blank lines", "a.svg", "\n\n <svg/>", false);
    row("text is never judged", "a.txt", noise, false);
    row("extension in capitals", "A.DOCX", noise, true);
}

void TestOfficeContent::aNameIsContradicted()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QByteArray, content);
    QTEST(contradictsItsName(m_folder.write(name.constData(), content)), "contradicted");
}

void TestOfficeContent::aWholePdfTellsItsPages()
{
    const auto pdf = ExportedPdf::look(m_folder.write(
        "a.pdf", "%PDF-1.6\n1 0 obj<</Type/Pages\n/Kids[]/Count 37>>\nendobj\n2 0 obj<</Count 5>>\n"
                 "endobj\nstartxref\n0\n%%EOF\n"));
    QVERIFY(pdf.whole);
    QCOMPARE(pdf.pages, 37);
}

void TestOfficeContent::whatIsNoWholePdfIsSeen_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no beginning") << QByteArray("PDF-1.6 %%EOF");
    QTest::newRow("no end") << QByteArray("%PDF-1.6\n1 0 obj<</Type/Pages/Count ");
}

void TestOfficeContent::whatIsNoWholePdfIsSeen()
{
    QFETCH(const QByteArray, content);
    QVERIFY(!ExportedPdf::look(m_folder.write("b.pdf", content)).whole);
    QVERIFY(!ExportedPdf::look(m_folder.path("missing.pdf")).whole);
}

QTEST_GUILESS_MAIN(TestOfficeContent)
#include "tst_office_content.moc"
