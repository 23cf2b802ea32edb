#include "tool/Columns.h"
#include "tool/Report.h"
#include "tool/Summary.h"
#include "unit/tool/ToolFolder.h"

#include <QTest>

using namespace Quorlin;

class tst_summary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyDocumentHasALine();
    void columnsAreInLineInAnyScript();
    void longNamesAreShortenedToTheWidth_data();
    void longNamesAreShortenedToTheWidth();
    void nothingSteersTheTerminal();
    void aDryRunHasNoSizes();
    void aMergeCountsItsFileOnce();
    void totalsAreSentences();

private:
    static void add(Report &report, const QString &input, const QString &output);
    static void addFailure(Report &report, const QString &input, const QString &text);
};

void tst_summary::add(Report &report, const QString &input, const QString &output)
{
    DocumentRecord document;
    document.input = input;
    document.output = output;
    report.documents.append(document);
}

void tst_summary::addFailure(Report &report, const QString &input, const QString &text)
{
    DocumentRecord document;
    document.input = input;
    document.reason = Reason::Protected;
    document.detail = text;
    report.documents.append(document);
}

void tst_summary::everyDocumentHasALine()
{
    const ToolFolder folder;
    folder.write("a.pdf", QByteArray(2048, 'x'));
    Report report;
    report.seconds = 3;
    add(report, folder.path("a.odt"), folder.path("a.pdf"));
    addFailure(report, folder.path("long name.odt"), QStringLiteral("it is locked"));
    QCOMPARE(Summary::linesOf(report, 0),
             QStringList(
                 {QStringLiteral("DOCUMENT          SIZE  RESULT"),
                  QStringLiteral("a.odt          2.0 KiB  a.pdf"),
                  QStringLiteral("long name.odt           failed: the document is protected by a "
                                 "password (it is locked)"),
                  QStringLiteral("2 documents: 1 converted, 1 failed; 2.0 KiB in 3.0 s")}));
}

void tst_summary::columnsAreInLineInAnyScript()
{
    const ToolFolder folder;
    Report report;
    for (const auto *name : {"文書.odt", "u\u0308.odt", "보고서 2.odt", "a.odt", "ที่.odt"})
        add(report, folder.path(name), folder.path("x.pdf"));
    const auto lines = Summary::linesOf(report, 0);
    QCOMPARE(lines.size(), 7);
    for (const auto &line : lines.mid(1, 5)) {
        const auto at = line.indexOf(QLatin1String("x.pdf"));
        QCOMPARE(Columns::widthOf(line.left(at)), lines.first().indexOf(QLatin1String("RESULT")));
    }
}

void tst_summary::longNamesAreShortenedToTheWidth_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {40, 60, 80, 200})
        QTest::addRow("%d", width) << width;
}

void tst_summary::longNamesAreShortenedToTheWidth()
{
    QFETCH(const int, width);
    const ToolFolder folder;
    Report report;
    const auto name = QStringLiteral("文書 with a long name ").repeated(10);
    add(report, folder.path("a.odt"), folder.path("a.pdf"));
    add(report, folder.path(".") + name + QStringLiteral(".odt"),
        folder.path(".") + name + QStringLiteral(".pdf"));
    addFailure(report, folder.path("b.odt"), QStringLiteral("a long reason ").repeated(20));
    const auto lines = Summary::linesOf(report, width);
    for (const auto &line : lines.mid(0, 4))
        QVERIFY2(Columns::widthOf(line) <= width, qPrintable(line));
    QCOMPARE(lines.at(2).count(QStringLiteral("…")), 2);
    QVERIFY(lines.at(3).contains(QLatin1String("failed: th")));
    QVERIFY(lines.at(3).endsWith(QStringLiteral("…")));
    QVERIFY(lines.at(2).endsWith(QLatin1String(".pdf")));
    QVERIFY(lines.at(1).contains(QLatin1String("a.odt ")));
}

void tst_summary::nothingSteersTheTerminal()
{
    const ToolFolder folder;
    Report report;
    addFailure(report, folder.path("a\x1b[31m\n\u202Efdp.odt"), QStringLiteral("b\r\tc"));
    const auto lines = Summary::linesOf(report, 0);
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(1).startsWith(QLatin1String("a?[31m??fdp.odt ")));
    QVERIFY(lines.at(1).endsWith(QLatin1String("(b??c)")));
}

void tst_summary::aDryRunHasNoSizes()
{
    const ToolFolder folder;
    Report report;
    report.dryRun = true;
    add(report, folder.path("a.odt"), folder.path("a.pdf"));
    addFailure(report, folder.path("b.odt"), QStringLiteral("gone"));
    QCOMPARE(
        Summary::linesOf(report, 0),
        QStringList({QStringLiteral("DOCUMENT  RESULT"), QStringLiteral("a.odt     a.pdf"),
                     QStringLiteral("b.odt     failed: the document is protected by a password "
                                    "(gone)"),
                     QStringLiteral("2 documents: 1 would be converted, 1 not; nothing was "
                                    "written")}));
}

void tst_summary::aMergeCountsItsFileOnce()
{
    const ToolFolder folder;
    Report report;
    report.merges = true;
    report.mergedFile = folder.write("all.pdf", QByteArray(1024, 'x'));
    add(report, folder.path("a.odt"), report.mergedFile);
    add(report, folder.path("b.odt"), report.mergedFile);
    const auto lines = Summary::linesOf(report, 0);
    QCOMPARE(lines.at(1), QStringLiteral("a.odt     all.pdf"));
    QCOMPARE(lines.last(), QStringLiteral("2 documents converted; 1.0 KiB in 0.0 s"));
}

void tst_summary::totalsAreSentences()
{
    Report report;
    QCOMPARE(Summary::linesOf(report, 80),
             QStringList(QStringLiteral("0 documents converted; 0 bytes in 0.0 s")));
    addFailure(report, QStringLiteral("/a.odt"), QStringLiteral("gone"));
    QCOMPARE(Summary::totalsOf(report),
             QStringLiteral("1 document: 0 converted, 1 failed; 0 bytes in 0.0 s"));
}

QTEST_GUILESS_MAIN(tst_summary)
#include "tst_summary.moc"
