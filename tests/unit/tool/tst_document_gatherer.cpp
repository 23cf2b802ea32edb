#include "tool/DocumentGatherer.h"

#include "convert/FolderWalk.h"
#include "support/SystemActions.h"
#include "unit/tool/ToolFolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Quorlin;

class tst_document_gatherer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFolderIsWalkedInNaturalOrder();
    void aLoopOfLinksEnds();
    void aNamedLinkToAFolderIsFollowed();
    void onlyAcceptedFilesOfAFolderAreTaken();
    void aNamedFileIsKeptWithItsReason();
    void anEarlierResultIsPassedOverUnlessNamed();
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
    QCOMPARE(found.at(2).text, reasonText(Reason::NotFound));
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
    QVERIFY(found.at(1).text.contains(QStringLiteral("UTF-8")));
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
