#include "tool/ConvertTool.h"

#include "support/SystemActions.h"
#include "unit/tool/KeptConsole.h"
#include "unit/tool/ToolFolder.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

using namespace Quorlin;

namespace {

/// What the fake component's failures are told as.
const QByteArray Damage = "the document is damaged or not what its name says (it is damaged)";

} // namespace

/// Whole runs of the tool with the fake component.
class tst_convert_tool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void resultsLieBesideTheirDocuments();
    void resultsOfOneNameAreNumberedInTheOutputFolder();
    void aDocumentIsNeverOverwritten();
    void failuresAreNamedWithTheirReasons();
    void aMergeWritesOneFile();
    void aMergeTellsHowManyDocumentsItHas();
    void aMergeOverADocumentIsWrongUse();
    void anUnknownQualityIsWrongUseAndListsTheNames();
    void missingSettingsAreAnError();
    void aMissingComponentIsAnError();
    void aDeadComponentIsAnError();
    void nothingToConvertIsAnError();
    void aCurrentFolderThatIsGoneIsAnError();
    void namesOfListsFollowThoseOfTheCommandLine();
    void aListThatIsMissingIsWrongUse();
    void aNameThatIsNotUtf8CostsOnlyItself();
    void anInterruptionEndsTheWaitForNames();
    void aTableTakesThePlaceOfLines();
    void theTableGivesWayToTheReport();
    void manyDocumentsEndWithTheirTotals();
    void outputThatIsLostIsAnError();
    void anOutputFolderThatCannotBeMadeIsAnError();
    void theReportGoesToOutputAlone();
    void theReportGoesToAFile();
    void aReportThatCannotBeWrittenIsAnError();
    void quietLeavesOnlyFailures();
    void whatToDoIsToldOnceForEachReason();
    void anInterruptionCancelsAndReports();

private:
    int run(const Options &options);
    [[nodiscard]] static Options converting(const QStringList &inputs);
    [[nodiscard]] bool complained(const char *text) const
    {
        return m_console->error.contains(text);
    }

    std::unique_ptr<ToolFolder> m_folder;
    std::unique_ptr<KeptConsole> m_console;
    ComponentSettings m_component;
};

void tst_convert_tool::init()
{
    qputenv("QUORLIN_FAKE", "");
    m_folder.reset(); // gives the current folder back first
    m_folder = std::make_unique<ToolFolder>();
    m_folder->writeSettings("program");
    m_console = std::make_unique<KeptConsole>();
    m_component.program = QStringLiteral(QUORLIN_FAKE_COMPONENT);
}

Options tst_convert_tool::converting(const QStringList &inputs)
{
    Options options;
    options.inputs = inputs;
    return options;
}

int tst_convert_tool::run(const Options &options)
{
    ConvertTool tool(options, *m_console, m_folder->path("program"), m_component);
    QSignalSpy finished(&tool, &ConvertTool::finished);
    tool.start();
    if (finished.isEmpty() && !finished.wait(20'000))
        return -1;
    return finished.count() == 1 ? finished.first().first().toInt() : -2;
}

void tst_convert_tool::resultsLieBesideTheirDocuments()
{
    m_folder->write("d/a.txt", "A");
    m_folder->write("d/sub/b.ps", "%!PS B");
    QCOMPARE(run(converting({QStringLiteral("d")})), 0);
    QCOMPARE(m_folder->files().filter(QStringLiteral("d/")),
             QStringList({QStringLiteral("d/a.pdf"), QStringLiteral("d/a.txt"),
                          QStringLiteral("d/sub/b.pdf"), QStringLiteral("d/sub/b.ps")}));
    QVERIFY(m_folder->read(QStringLiteral("d/a.pdf")).endsWith("A"));
    QCOMPARE(m_console->output, QByteArray("d/a.txt -> d/a.pdf\nd/sub/b.ps -> d/sub/b.pdf\n"));
}

void tst_convert_tool::resultsOfOneNameAreNumberedInTheOutputFolder()
{
    m_folder->write("d/a.txt", "A");
    m_folder->write("e/a.txt", "B");
    auto options = converting({QStringLiteral("d"), QStringLiteral("e")});
    options.outputFolder = QStringLiteral("o/p");
    QCOMPARE(run(options), 0);
    QVERIFY(m_folder->read(QStringLiteral("o/p/a.pdf")).endsWith("A"));
    QVERIFY(m_folder->read(QStringLiteral("o/p/a (2).pdf")).endsWith("B"));
    QCOMPARE(m_folder->files().filter(QStringLiteral("/a")).size(), 4);
}

void tst_convert_tool::aDocumentIsNeverOverwritten()
{
    m_folder->write("a.pdf", "%PDF original");
    m_folder->write("b.ps", "%!PS");
    m_folder->write("b.pdf", "%PDF another");
    QCOMPARE(
        run(converting({QStringLiteral("a.pdf"), QStringLiteral("b.ps"), QStringLiteral("b.pdf")})),
        0);
    QCOMPARE(m_folder->read(QStringLiteral("a.pdf")), QByteArray("%PDF original"));
    QCOMPARE(m_folder->read(QStringLiteral("b.pdf")), QByteArray("%PDF another"));
    QVERIFY(m_folder->files().contains(QStringLiteral("a (2).pdf")));
    QVERIFY(m_folder->files().contains(QStringLiteral("b (2).pdf")));
}

void tst_convert_tool::failuresAreNamedWithTheirReasons()
{
    for (const auto *name : {"a.txt", "protected.txt", "b.xyz"})
        m_folder->write(name);
    QCOMPARE(run(converting({QStringLiteral("a.txt"), QStringLiteral("protected.txt"),
                             QStringLiteral("b.xyz"), QStringLiteral("none.txt")})),
             1);
    QVERIFY(complained("quorlin-convert: protected.txt: the document is protected by a password "
                       "(it is protected)\n"));
    QVERIFY(complained("quorlin-convert: b.xyz: files of this kind cannot be converted\n"));
    QVERIFY(complained("quorlin-convert: none.txt: there is no such file\n"));
    QVERIFY(m_folder->files().contains(QStringLiteral("a.pdf")));
}

void tst_convert_tool::aMergeWritesOneFile()
{
    for (const auto *name : {"a10.txt", "a9.txt", "fail.txt"})
        m_folder->write(QByteArray("d/") + name, name);
    auto options = converting({QStringLiteral("d")});
    options.mergeFile = QStringLiteral("all.pdf");
    QCOMPARE(run(options), 1);
    const auto merged = m_folder->read(QStringLiteral("all.pdf"));
    QVERIFY(merged.contains("a9.txt") && merged.indexOf("a9.txt") < merged.indexOf("a10.txt"));
    QCOMPARE(m_folder->files().filter(QStringLiteral("d/")).size(), 3);
}

void tst_convert_tool::aMergeTellsHowManyDocumentsItHas()
{
    auto options = converting({m_folder->write("a.txt", "a")});
    options.mergeFile = QStringLiteral("z.pdf");
    QCOMPARE(run(options), 0);
    QCOMPARE(m_console->output, QByteArray("1 document -> z.pdf\n"));
    m_console->output.clear();
    options.inputs.append(m_folder->write("b.txt", "b"));
    QCOMPARE(run(options), 0);
    QCOMPARE(m_console->output, QByteArray("2 documents -> z.pdf\n"));
}

void tst_convert_tool::aMergeOverADocumentIsWrongUse()
{
    m_folder->write("a.pdf", "%PDF");
    auto options = converting({QStringLiteral("a.pdf")});
    options.mergeFile = QStringLiteral("a.pdf");
    QCOMPARE(run(options), 2);
    QCOMPARE(m_folder->read(QStringLiteral("a.pdf")), QByteArray("%PDF"));
}

void tst_convert_tool::anUnknownQualityIsWrongUseAndListsTheNames()
{
    m_folder->write("a.txt");
    auto options = converting({QStringLiteral("a.txt")});
    options.quality = QStringLiteral("Best");
    options.reportFile = QStringLiteral("report.json");
    QCOMPARE(run(options), 2);
    QVERIFY(complained("\"Best\"; there are: Default, High\n"));
    QVERIFY(!m_folder->files().contains(QStringLiteral("report.json")));
}

void tst_convert_tool::missingSettingsAreAnError()
{
    QVERIFY(QFile::remove(m_folder->path("program/Quorlin.ini")));
    m_folder->write("a.txt");
    QCOMPARE(run(converting({QStringLiteral("a.txt")})), 1);
    QVERIFY(complained("Quorlin.ini cannot be read"));
}

void tst_convert_tool::aMissingComponentIsAnError()
{
    m_component.program = QStringLiteral("/nowhere/quorlin-pdf");
    m_folder->write("a.txt");
    QCOMPARE(run(converting({QStringLiteral("a.txt")})), 1);
    QVERIFY(complained("a.txt: a program that is needed is not installed (the PDF component "
                       "/nowhere/quorlin-pdf cannot be started"));
}

void tst_convert_tool::aDeadComponentIsAnError()
{
    m_folder->write("die.txt");
    QCOMPARE(run(converting({QStringLiteral("die.txt")})), 1);
    QVERIFY(complained("die.txt: the converter failed on this document (the PDF component ended "
                       "with code 9)"));
}

void tst_convert_tool::nothingToConvertIsAnError()
{
    m_folder->write("d/a.xyz");
    QCOMPARE(run(converting({QStringLiteral("d")})), 1);
    QVERIFY(complained("no documents in this folder"));
    QVERIFY(complained("there is nothing to convert"));
}

void tst_convert_tool::aCurrentFolderThatIsGoneIsAnError()
{
    QVERIFY(QDir().mkdir(QStringLiteral("gone")) && QDir::setCurrent(QStringLiteral("gone")));
    QVERIFY(QDir().rmdir(m_folder->path("gone")));
    QCOMPARE(run(converting({QStringLiteral(".")})), 1); // which would be the whole disk
    QVERIFY(complained("the current folder is gone"));
    QVERIFY(QDir::setCurrent(m_folder->path(".")));
}

void tst_convert_tool::namesOfListsFollowThoseOfTheCommandLine()
{
    for (const auto *name : {"a.txt", "b.txt", "d/c.txt", "-q.txt"})
        m_folder->write(name);
    m_folder->write("list", "b.txt\r\n\n-q.txt\nd");
    auto options = converting({QStringLiteral("a.txt")});
    options.lists = QStringList{QStringLiteral("list")};
    QCOMPARE(run(options), 0);
    QCOMPARE(m_console->output, QByteArray("a.txt -> a.pdf\nb.txt -> b.pdf\n-q.txt -> -q.pdf\n"
                                           "d/c.txt -> d/c.pdf\n"));
}

void tst_convert_tool::aListThatIsMissingIsWrongUse()
{
    m_folder->write("a.txt");
    auto options = converting({QStringLiteral("a.txt")});
    options.lists = QStringList{QStringLiteral("gone")};
    QCOMPARE(run(options), 2);
    QVERIFY(complained("the list gone: it cannot be read: No such file or directory\n"));
    QVERIFY(!m_folder->files().contains(QStringLiteral("a.pdf")));
}

void tst_convert_tool::aNameThatIsNotUtf8CostsOnlyItself()
{
    m_folder->write("a.txt");
    m_folder->write("list", QByteArray("\xff.txt\0a.txt", 11));
    auto options = converting({});
    options.lists = QStringList{QStringLiteral("list")};
    options.listsHoldNul = true;
    QCOMPARE(run(options), 1);
    QVERIFY(complained("\xEF\xBF\xBD.txt: the file may not be read (its name is not UTF-8"));
    QCOMPARE(m_console->output, QByteArray("a.txt -> a.pdf\n"));
}

void tst_convert_tool::anInterruptionEndsTheWaitForNames()
{
    QVERIFY(SystemActions::makeFifo(m_folder->path("pipe")));
    auto options = converting({});
    options.lists = QStringList{QStringLiteral("pipe")};
    options.reportFile = QStringLiteral("-");
    ConvertTool tool(options, *m_console, m_folder->path("program"), m_component);
    QSignalSpy finished(&tool, &ConvertTool::finished);
    tool.start();
    QVERIFY(!finished.wait(100));
    tool.interrupt(2);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toInt(), 130);
    QVERIFY(m_console->output.contains("\"documents\": [\n    ]"));
}

void tst_convert_tool::aTableTakesThePlaceOfLines()
{
    m_folder->write("a.txt");
    m_folder->write("fail.txt");
    auto options = converting({QStringLiteral("a.txt"), QStringLiteral("fail.txt")});
    options.summary = true;
    options.quiet = true;
    QCOMPARE(run(options), 1);
    const auto lines = m_console->output.split('\n');
    QCOMPARE(lines.size(), 5);
    QVERIFY(lines.at(0).startsWith("DOCUMENT "));
    QVERIFY(lines.at(1).startsWith("a.txt ") && lines.at(1).endsWith(" a.pdf"));
    QVERIFY(lines.at(2).startsWith("fail.txt ") && lines.at(2).endsWith("failed: " + Damage));
    QVERIFY(lines.at(3).startsWith("2 documents: 1 converted, 1 failed; "));
    QCOMPARE(m_console->error, "quorlin-convert: fail.txt: " + Damage + '\n');
}

void tst_convert_tool::theTableGivesWayToTheReport()
{
    m_folder->write("a.txt");
    auto options = converting({QStringLiteral("a.txt")});
    options.summary = true;
    options.reportFile = QStringLiteral("-");
    QCOMPARE(run(options), 0);
    QVERIFY(!QJsonDocument::fromJson(m_console->output).isNull());
    QVERIFY(complained("DOCUMENT "));
}

void tst_convert_tool::manyDocumentsEndWithTheirTotals()
{
    m_folder->write("a.txt");
    m_folder->write("b.txt");
    QCOMPARE(run(converting({QStringLiteral("a.txt"), QStringLiteral("b.txt")})), 0);
    QVERIFY(complained("\n2 documents converted; "));
    QCOMPARE(m_console->output, QByteArray("a.txt -> a.pdf\nb.txt -> b.pdf\n"));
    m_console = std::make_unique<KeptConsole>();
    QCOMPARE(run(converting({QStringLiteral("a.txt")})), 0);
    QVERIFY(!complained("1 document"));
}

void tst_convert_tool::outputThatIsLostIsAnError()
{
    m_folder->write("a.txt");
    m_folder->write("b.txt");
    m_console->outputFails = true;
    QCOMPARE(run(converting({QStringLiteral("a.txt"), QStringLiteral("b.txt")})), 1);
    QCOMPARE(m_console->error.count("standard output cannot be written"), 1);
    QVERIFY(m_folder->files().contains(QStringLiteral("b.pdf")));
}

void tst_convert_tool::anOutputFolderThatCannotBeMadeIsAnError()
{
    m_folder->write("a.txt");
    auto options = converting({QStringLiteral("a.txt")});
    options.outputFolder = QStringLiteral("a.txt/out");
    QCOMPARE(run(options), 1);
    QVERIFY(complained("cannot be made"));
}

void tst_convert_tool::theReportGoesToOutputAlone()
{
    m_folder->write("a.txt");
    auto options = converting({QStringLiteral("a.txt")});
    options.reportFile = QStringLiteral("-");
    QCOMPARE(run(options), 0);
    const auto report = QJsonDocument::fromJson(m_console->output).object();
    const auto document = report.value(QStringLiteral("documents")).toArray().at(0).toObject();
    QCOMPARE(document.value(QStringLiteral("output")).toString(), m_folder->path("a.pdf"));
    QCOMPARE(document.value(QStringLiteral("status")).toString(), QStringLiteral("converted"));
}

void tst_convert_tool::theReportGoesToAFile()
{
    m_folder->write("fail.txt");
    auto options = converting({QStringLiteral("fail.txt")});
    options.reportFile = QStringLiteral("report.json");
    QCOMPARE(run(options), 1);
    const auto bytes = m_folder->read(QStringLiteral("report.json"));
    const auto totals =
        QJsonDocument::fromJson(bytes).object().value(QStringLiteral("totals")).toObject();
    QCOMPARE(totals.value(QStringLiteral("failed")).toInt(), 1);
}

void tst_convert_tool::aReportThatCannotBeWrittenIsAnError()
{
    m_folder->write("a.txt");
    auto options = converting({QStringLiteral("a.txt")});
    options.reportFile = QStringLiteral("none/report.json");
    QCOMPARE(run(options), 1);
    QVERIFY(complained("none/report.json cannot be written"));
    QVERIFY(m_folder->files().contains(QStringLiteral("a.pdf")));
}

void tst_convert_tool::quietLeavesOnlyFailures()
{
    m_folder->write("a.txt");
    m_folder->write("fail.txt");
    auto options = converting({QStringLiteral("a.txt"), QStringLiteral("fail.txt")});
    options.quiet = true;
    QCOMPARE(run(options), 1);
    QCOMPARE(m_console->output, QByteArray());
    QCOMPARE(m_console->error, "quorlin-convert: fail.txt: " + Damage + '\n');
}

void tst_convert_tool::whatToDoIsToldOnceForEachReason()
{
    for (const auto *name : {"fail.txt", "damaged.txt", "protected.txt"})
        m_folder->write(name);
    QCOMPARE(run(converting({QStringLiteral("fail.txt"), QStringLiteral("damaged.txt"),
                             QStringLiteral("protected.txt"), QStringLiteral("none.txt")})),
             1);
    for (const auto reason : {Reason::Damaged, Reason::Protected, Reason::NotFound}) {
        const auto line = "\n    " + reasonAdvice(reason).toUtf8() + '\n';
        QCOMPARE(m_console->error.count(line), 1);
    }
    QVERIFY(m_console->error.contains("fail.txt: " + Damage + "\n    Open it in its program"));
}

void tst_convert_tool::anInterruptionCancelsAndReports()
{
    m_folder->write("dawdle.txt");
    auto options = converting({QStringLiteral("dawdle.txt")});
    options.reportFile = QStringLiteral("-");
    ConvertTool tool(options, *m_console, m_folder->path("program"), m_component);
    QSignalSpy finished(&tool, &ConvertTool::finished);
    tool.start();
    QTRY_VERIFY(m_console->error.contains("Printing"));
    tool.interrupt(15);
    tool.interrupt(15);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toInt(), 143);
    QVERIFY(m_console->output.contains("\"reason\": \"cancelled\""));
}

QTEST_GUILESS_MAIN(tst_convert_tool)
#include "tst_convert_tool.moc"
