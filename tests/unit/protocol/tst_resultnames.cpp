#include "component/protocol/ResultNames.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QTest>

using namespace Quorlin;

/// Documents are told by their names in the test's folder; none of them needs to be there.
class TestResultNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theResultHasTheDocumentsName_data();
    void theResultHasTheDocumentsName();
    void severalDocumentsOfOneJob_data();
    void severalDocumentsOfOneJob();
    void documentsOfDifferentFoldersDoNotClash();
    void anOtherSpellingOfThePathIsTheSameFile();
    void aResultOfAnEarlierRunIsReplaced();
    void postScriptIsItsOwnPrintedFile();
    void postScriptInAFolderThatCannotBeWrittenIsNot();
    void postScriptWhoseResultIsADocumentOfTheJobIsNot();
    void theFirstFolderThatCanBeWrittenTakesThePlace();
    void documentsOfDifferentFoldersClashInTheirCommonSubstitute();
    void noFolderMeansNoPlace();
    void theBaseIsTheNameUpToItsLastPoint_data();
    void theBaseIsTheNameUpToItsLastPoint();

private:
    [[nodiscard]] QStringList resultsOf(const QStringList &names) const;

    TestFolder m_folder;
};

QStringList TestResultNames::resultsOf(const QStringList &names) const
{
    QStringList documents, results;
    for (const auto &name : names)
        documents << m_folder.path() + QLatin1Char('/') + name;
    for (const auto &place : ResultNames({}).places(documents))
        results << QDir(m_folder.path()).relativeFilePath(place.result());
    return results;
}

void TestResultNames::theResultHasTheDocumentsName_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *document, const char *result) {
        QTest::newRow(document) << QString::fromUtf8(document) << QString::fromUtf8(result);
    };
    row("report.docx", "report.pdf");
    row("REPORT.DOCX", "REPORT.pdf");
    row("report.v2.docx", "report.v2.pdf");
    row("report", "report.pdf");
    row(".docx", ".pdf");
    row("my, report \"1\".docx", "my, report \"1\".pdf");
    row("Übung 文書.odt", "Übung 文書.pdf");
    row("two\nlines.txt", "two\nlines.pdf");
    row("picture.png", "picture.pdf");
    row("job.ps", "job.pdf");
    row("report.pdf", "report (2).pdf"); // or it would take the document's own place
}

void TestResultNames::theResultHasTheDocumentsName()
{
    QFETCH(const QString, document);
    QFETCH(const QString, result);
    QCOMPARE(resultsOf({document}), QStringList{result});
}

void TestResultNames::severalDocumentsOfOneJob_data()
{
    QTest::addColumn<QString>("documents");
    QTest::addColumn<QString>("results");
    const auto row = [](const char *what, const char *documents, const char *results) {
        QTest::newRow(what) << QString::fromUtf8(documents) << QString::fromUtf8(results);
    };
    row("different names", "a.docx|b.docx", "a.pdf|b.pdf");
    row("one base name", "a.docx|a.xlsx", "a.pdf|a.xlsx.pdf");
    row("one base name, other order", "a.xlsx|a.docx", "a.pdf|a.docx.pdf");
    row("three of one base name", "a.docx|a.xlsx|a.pptx", "a.pdf|a.xlsx.pdf|a.pptx.pdf");
    row("the same document twice", "a.docx|a.docx", "a.pdf|a.docx.pdf");
    row("the same document four times", "a.docx|a.docx|a.docx|a.docx",
        "a.pdf|a.docx.pdf|a (2).pdf|a (3).pdf");
    row("a document and its PDF", "a.docx|a.pdf", "a.docx.pdf|a (2).pdf");
    row("a PDF and its document", "a.pdf|a.docx", "a (2).pdf|a.docx.pdf");
    row("the same PDF twice", "a.pdf|a.pdf", "a (2).pdf|a (3).pdf");
    row("PDF whose numbered name is taken", "a.pdf|a (2).pdf|a (2).docx",
        "a (3).pdf|a (2) (2).pdf|a (2).docx.pdf");
    row("full name is a document of the job", "a.docx|a.xlsx|a.xlsx.pdf",
        "a.pdf|a (2).pdf|a.xlsx (2).pdf");
    row("with and without an extension", "a|a.docx", "a.pdf|a.docx.pdf");
    row("PostScript comes first", "a.docx|a.ps", "a.docx.pdf|a.pdf");
    row("PostScript before a PDF", "a.pdf|b.docx|b.ps", "a (2).pdf|b.docx.pdf|b.pdf");
    row("two kinds of PostScript", "a.ps|a.eps", "a.pdf|a.eps.pdf");
    row("names that differ in case", "a.docx|A.docx", "a.pdf|A.pdf");
}

void TestResultNames::severalDocumentsOfOneJob()
{
    QFETCH(const QString, documents);
    QFETCH(const QString, results);
    QCOMPARE(resultsOf(documents.split(QLatin1Char('|'))), results.split(QLatin1Char('|')));
}

void TestResultNames::documentsOfDifferentFoldersDoNotClash()
{
    m_folder.makeFolder("one");
    m_folder.makeFolder("two");
    QCOMPARE(resultsOf({QStringLiteral("one/a.docx"), QStringLiteral("two/a.xlsx")}),
             QStringList({QStringLiteral("one/a.pdf"), QStringLiteral("two/a.pdf")}));
}

void TestResultNames::anOtherSpellingOfThePathIsTheSameFile()
{
    m_folder.makeFolder("one");
    QCOMPARE(resultsOf({QStringLiteral("one/../a.docx"), QStringLiteral("./a.xlsx"),
                        QStringLiteral("one//..//b.pdf"), QStringLiteral("b.docx")}),
             QStringList({QStringLiteral("a.pdf"), QStringLiteral("a.xlsx.pdf"),
                          QStringLiteral("b (2).pdf"), QStringLiteral("b.docx.pdf")}));
}

void TestResultNames::aResultOfAnEarlierRunIsReplaced()
{
    const TestFolder folder;
    folder.write("a.pdf", "an older result");
    const auto places = ResultNames({}).places({folder.path("a.docx")});
    QCOMPARE(places[0].result(), folder.path("a.pdf"));
}

void TestResultNames::postScriptIsItsOwnPrintedFile()
{
    const auto places = ResultNames({}).places({m_folder.path("a.ps"), m_folder.path("b.EPS"),
                                                m_folder.path("c.docx"), m_folder.path("d.pdf")});
    QVERIFY(places[0].inPlace);
    QVERIFY(places[1].inPlace);
    QVERIFY(!places[2].inPlace);
    QVERIFY(!places[3].inPlace);
}

void TestResultNames::postScriptInAFolderThatCannotBeWrittenIsNot()
{
    const OrdinaryUser user;
    const TestFolder locked, documents;
    const auto file = locked.write("a.ps", "%!");
    QVERIFY(QFile::setPermissions(locked.path(), QFile::ReadOwner | QFile::ExeOwner));
    const auto places = ResultNames({documents.path()}).places({file});
    QVERIFY(QFile::setPermissions(locked.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(!places[0].inPlace);
    QCOMPARE(places[0].result(), documents.path("a.pdf"));
}

void TestResultNames::postScriptWhoseResultIsADocumentOfTheJobIsNot()
{
    const auto places = ResultNames({}).places({m_folder.path("a.ps"), m_folder.path("a.pdf")});
    QVERIFY(!places[0].inPlace);
    QCOMPARE(places[0].result(), m_folder.path("a.ps.pdf"));
}

void TestResultNames::theFirstFolderThatCanBeWrittenTakesThePlace()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto readOnly = QFile::ReadOwner | QFile::ExeOwner;
    const auto locked = folder.makeFolder("locked"), documents = folder.makeFolder("documents"),
               home = folder.makeFolder("home");
    QVERIFY(QFile::setPermissions(locked, readOnly));
    const auto file = locked + QStringLiteral("/a.docx");
    const ResultNames first({documents, home});
    QCOMPARE(first.places({file})[0].result(), folder.path("documents/a.pdf"));
    QVERIFY(QFile::setPermissions(documents, readOnly));
    const ResultNames second({documents, home});
    QCOMPARE(second.places({file})[0].result(), folder.path("home/a.pdf"));
    const ResultNames missing({folder.path("no such folder"), QString(), home});
    QCOMPARE(missing.places({file})[0].result(), folder.path("home/a.pdf"));
}

void TestResultNames::documentsOfDifferentFoldersClashInTheirCommonSubstitute()
{
    const ResultNames names({m_folder.path()});
    const auto places =
        names.places({QStringLiteral("/no such folder/a.docx"),
                      QStringLiteral("/no other folder/a.docx"), m_folder.path("a.xlsx")});
    QCOMPARE(places[0].result(), m_folder.path("a.pdf"));
    QCOMPARE(places[1].result(), m_folder.path("a.docx.pdf"));
    QCOMPARE(places[2].result(), m_folder.path("a.xlsx.pdf"));
}

void TestResultNames::noFolderMeansNoPlace()
{
    const ResultNames names({m_folder.path("gone"), QString()});
    const auto places = names.places({QStringLiteral("/no such folder/a.docx")});
    QCOMPARE(places[0].folder, QString());
    QVERIFY(!places[0].inPlace);
}

void TestResultNames::theBaseIsTheNameUpToItsLastPoint_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("base");
    const auto row = [](const char *file, const char *base) {
        QTest::newRow(file) << QString::fromUtf8(file) << QString::fromUtf8(base);
    };
    row("/d/a.ps~", "a");
    row("/d/a.b.ps2~", "a.b");
    row("/d.x/a", "a");
    row("/d/.ps", "");
    row("/d/a.", "a");
    row("/d/a.tar.gz", "a.tar");
}

void TestResultNames::theBaseIsTheNameUpToItsLastPoint()
{
    QFETCH(const QString, file);
    QFETCH(const QString, base);
    QCOMPARE(ResultNames::baseOf(file), base);
}

QTEST_GUILESS_MAIN(TestResultNames)
#include "tst_resultnames.moc"
