#include "tool/DocumentGatherer.h"

#include "convert/FolderWalk.h"
#include "support/SystemActions.h"
#include "unit/tool/ToolFolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Quorlin;

namespace {

/// The end of a PDF as the distiller writes it.
constexpr char Distilled[] = "%PDF-1.4\n2 0 obj\n<</Producer(GPL Ghostscript 10.00.0)\n>>endobj\n"
                             "xref\n0 1\ntrailer\n<</Info 2 0 R>>\nstartxref\n66\n%%EOF\n";

} // namespace

class tst_document_gatherer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFolderIsWalkedInNaturalOrder();
    void aLoopOfLinksEnds();
    void aNamedLinkToAFolderIsFollowed();
    void onlyAcceptedFilesOfAFolderAreTaken();
    void aNamedFileIsKeptWithItsReason();
    void aNameMayBeginWithAColon();
    void anEarlierResultIsPassedOverUnlessNamed();
    void earlierResultsAreToldByTheirNames_data();
    void earlierResultsAreToldByTheirNames();
    void anOriginalWithTheNameOfAResultIsKept();
    void repeatsAreDroppedUnlessWanted();
    void theOrderIsThatOfTheWindow();
    void namesThatAreNotUtf8AreTold();
    void anEmptyFolderIsRemarked();
    void aPipeIsRefusedWithoutBlocking();

private:
    [[nodiscard]] static QStringList names(const QList<DocumentRecord> &documents);
};

QStringList tst_document_gatherer::names(const QList<DocumentRecord> &documents)
{
    QStringList names;
    for (const auto &document : documents)
        names.append(QDir::current().relativeFilePath(document.input));
    return names;
}

void tst_document_gatherer::aFolderIsWalkedInNaturalOrder()
{
    const ToolFolder folder;
    for (const auto *name : {"d/a10.txt", "d/a2.txt", "d/b10/c.odt", "d/b9/d10.odt", "d/b9/d9.odt",
                             "d/b9/a/e.odt", "d/B1.doc", "d/z.pdf"})
        folder.write(name);
    const auto found = DocumentGatherer().gather({QStringLiteral("d")}, false);
    QCOMPARE(names(found),
             QStringList({QStringLiteral("d/a2.txt"), QStringLiteral("d/a10.txt"),
                          QStringLiteral("d/B1.doc"), QStringLiteral("d/z.pdf"),
                          QStringLiteral("d/b9/d9.odt"), QStringLiteral("d/b9/d10.odt"),
                          QStringLiteral("d/b9/a/e.odt"), QStringLiteral("d/b10/c.odt")}));
    QVERIFY(QDir::isAbsolutePath(found.first().input));
}

void tst_document_gatherer::aLoopOfLinksEnds()
{
    const ToolFolder folder;
    folder.write("d/sub/a.txt");
    QVERIFY(QFile::link(folder.path("d"), folder.path("d/sub/loop")));
    QVERIFY(QFile::link(folder.path("d/sub/a.txt"), folder.path("d/link.txt")));
    QCOMPARE(names(DocumentGatherer().gather({QStringLiteral("d")}, false)),
             QStringList({QStringLiteral("d/link.txt"), QStringLiteral("d/sub/a.txt")}));
}

void tst_document_gatherer::aNamedLinkToAFolderIsFollowed()
{
    const ToolFolder folder;
    folder.write("d/a.txt");
    QVERIFY(QFile::link(folder.path("d"), folder.path("link")));
    QCOMPARE(names(DocumentGatherer().gather({QStringLiteral("link")}, false)),
             QStringList(QStringLiteral("link/a.txt")));
}

void tst_document_gatherer::onlyAcceptedFilesOfAFolderAreTaken()
{
    const ToolFolder folder;
    folder.write("d/a.txt");
    folder.write("d/empty.txt", "");
    folder.write("d/a.xyz");
    folder.write("d/false.ps", "no PostScript");
    folder.write("d/~$a.docx");
    folder.write("d/.hidden.txt");
    folder.write("d/.folder/b.txt");
    DocumentGatherer gatherer;
    QCOMPARE(names(gatherer.gather({QStringLiteral("d")}, false)),
             QStringList(QStringLiteral("d/a.txt")));
    QVERIFY(gatherer.remarks().isEmpty());
}

void tst_document_gatherer::aNamedFileIsKeptWithItsReason()
{
    const ToolFolder folder;
    folder.write("a.xyz");
    folder.write("false.ps", "no PostScript");
    const auto found = DocumentGatherer().gather(
        {QStringLiteral("a.xyz"), QStringLiteral("false.ps"), QStringLiteral("none.txt")}, false);
    QCOMPARE(found.size(), 3);
    QCOMPARE(found.at(0).reason, Reason::UnknownFormat);
    QCOMPARE(found.at(1).reason, Reason::NotPostScript);
    QCOMPARE(found.at(2).reason, Reason::NotFound);
    QCOMPARE(found.at(2).failure(), reasonText(Reason::NotFound));
}

void tst_document_gatherer::aNameMayBeginWithAColon()
{
    const ToolFolder folder;
    const auto path = folder.path("") + QStringLiteral("/:a.txt");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("x") == 1);
    file.close();
    const auto found = DocumentGatherer().gather({QStringLiteral(":a.txt")}, false);
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first().reason, Reason::None);
    QCOMPARE(found.first().input, QDir::cleanPath(path));
}

void tst_document_gatherer::anEarlierResultIsPassedOverUnlessNamed()
{
    const ToolFolder folder;
    folder.write("d/report.odt");
    folder.write("d/report.pdf");
    folder.write("d/other.pdf");
    QCOMPARE(names(DocumentGatherer().gather({QStringLiteral("d")}, false)),
             QStringList({QStringLiteral("d/other.pdf"), QStringLiteral("d/report.odt")}));
    QCOMPARE(DocumentGatherer().gather({QStringLiteral("d/report.pdf")}, false).size(), 1);
}

void tst_document_gatherer::earlierResultsAreToldByTheirNames_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("documents");
    const auto row = [](const char *name, const char *files, const char *documents) {
        QTest::newRow(name) << QString::fromLatin1(files).split(QLatin1Char('|'))
                            << QString::fromLatin1(documents).split(QLatin1Char('|'));
    };
    row("the plain name", "a.odt|a.pdf", "a.odt");
    row("the full name", "a.odt|a.odt.pdf|b.odt.pdf", "a.odt|b.odt.pdf");
    row("all names", "a.odt|a.xlsx|a.pdf|a.odt.pdf|a.xlsx.pdf|a (2).pdf", "a.odt|a.xlsx");
    row("of a PDF", "a.pdf|a (2).pdf|a (17).pdf", "a.pdf");
    row("nothing of that name", "a (2).pdf|b.odt", "a (2).pdf|b.odt");
    row("not taken", "a (2).pdf|a.xyz|a.xyz.pdf", "a (2).pdf|a.xyz.pdf");
    row("no number of ours", "a.odt|a (1).pdf|a (02).pdf|a(2).pdf|a (2)b.pdf",
        "a (1).pdf|a (2)b.pdf|a (02).pdf|a.odt|a(2).pdf");
    row("a chain", "a.pdf|a (2).pdf|a (2) (2).pdf|a (2) (3).pdf", "a.pdf");
    row("a chain with a gap", "a.pdf|a (2) (2).pdf", "a (2) (2).pdf|a.pdf");
    row("a chain of its own", "a (2).pdf|a (2) (2).pdf", "a (2).pdf");
    row("a document with a number", "a (2).odt|a.odt|a (2).pdf", "a (2).odt|a.odt");
    row("an unusual ending", "UPPER.PDF|UPPER.pdf|UPPER (2).pdf", "UPPER.PDF");
    row("another case", "Report.ODT|REPORT.pdf|report.odt.PDF|rePort (2).pdf", "Report.ODT");
    row("no document", "a.pdf|A.odt.pdf|b.pdf", "a.pdf|A.odt.pdf|b.pdf");
}

void tst_document_gatherer::earlierResultsAreToldByTheirNames()
{
    QFETCH(const QStringList, files);
    QFETCH(QStringList, documents);
    const ToolFolder folder;
    for (const auto &file : files)
        folder.write(qUtf8Printable(QStringLiteral("d/") + file), Distilled);
    // One in another folder explains nothing.
    folder.write("d/z/a (2).pdf", Distilled);
    QStringList found;
    for (const auto &name : names(DocumentGatherer().gather({QStringLiteral("d")}, false)))
        found.append(name.mid(2));
    documents.append(QStringLiteral("z/a (2).pdf"));
    found.sort();
    documents.sort();
    QCOMPARE(found, documents);
    const auto last = QStringLiteral("d/") + files.last();
    QCOMPARE(names(DocumentGatherer().gather({last}, false)), QStringList(last));
}

/// The result of another document would take its place.
void tst_document_gatherer::anOriginalWithTheNameOfAResultIsKept()
{
    const ToolFolder folder;
    for (const auto *name : {"d/a (2).pdf", "d/a (3).pdf", "d/a.pdf", "d/U.PDF", "d/U.pdf"})
        folder.write(name, "%PDF-1.4\n<</Producer(another)>>\nxref\nstartxref\n30\n%%EOF\n");
    folder.write("d/a (4).pdf", "GPL Ghostscript, but no end");
    folder.write("d/a (5).pdf", "GPL Ghostscript startxref\n99999\n%%EOF\n");
    QCOMPARE(DocumentGatherer().gather({QStringLiteral("d")}, false).size(), 7);
}

void tst_document_gatherer::repeatsAreDroppedUnlessWanted()
{
    const ToolFolder folder;
    folder.write("d/a.txt");
    const QStringList inputs{QStringLiteral("d/a.txt"), QStringLiteral("d"),
                             QStringLiteral("./d/../d/a.txt")};
    QCOMPARE(DocumentGatherer().gather(inputs, false).size(), 1);
    QCOMPARE(DocumentGatherer().gather(inputs, true).size(), 3);
}

void tst_document_gatherer::theOrderIsThatOfTheWindow()
{
    const ToolFolder folder;
    for (const auto *name :
         {"d/10.txt", "d/9.txt", "d/5/1.txt", "d/Ä.txt", "d/a/2/x.txt", "d/a/x.txt", "d/11/y.txt"})
        folder.write(name);
    QStringList walked;
    FolderWalk::walk(folder.path("d"), [&](const QString &file) {
        walked.append(QDir::current().relativeFilePath(file));
    });
    QCOMPARE(names(DocumentGatherer().gather({QStringLiteral("d")}, false)), walked);
}

void tst_document_gatherer::namesThatAreNotUtf8AreTold()
{
    const ToolFolder folder;
    folder.write("d/a.txt");
    const auto base = folder.path("d").toUtf8();
    for (const auto *name : {"/\xff.txt", "/\xff.xyz", "/.\xff.txt"})
        QVERIFY(SystemActions::makeFile(base + name));
    DocumentGatherer gatherer;
    const auto found = gatherer.gather({QStringLiteral("d")}, false);
    QCOMPARE(found.size(), 2);
    QCOMPARE(found.at(1).reason, Reason::NotReadable);
    QVERIFY(found.at(1).detail.contains(QStringLiteral("UTF-8")));
}

void tst_document_gatherer::anEmptyFolderIsRemarked()
{
    const ToolFolder folder;
    QVERIFY(QDir().mkpath(folder.path("d/sub")));
    DocumentGatherer gatherer;
    QVERIFY(gatherer.gather({QStringLiteral("d")}, false).isEmpty());
    QCOMPARE(gatherer.remarks().size(), 1);
}

void tst_document_gatherer::aPipeIsRefusedWithoutBlocking()
{
    const auto found = DocumentGatherer().gather({QStringLiteral("/dev/null")}, false);
    QCOMPARE(found.at(0).reason, Reason::NotRegular);
}

QTEST_GUILESS_MAIN(tst_document_gatherer)
#include "tst_document_gatherer.moc"
