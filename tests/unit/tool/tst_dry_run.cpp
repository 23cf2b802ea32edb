#include "support/SystemActions.h"
#include "tool/ConvertTool.h"
#include "unit/tool/KeptConsole.h"
#include "unit/tool/ToolFolder.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

using namespace Quorlin;

/// What a run would do is told, is true, and is not done.
class tst_dry_run : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void itTellsWhatWouldComeWhere_data();
    void itTellsWhatWouldComeWhere();
    void whatIsNotTakenIsToldWithItsReason();
    void targetsThatMayNotBeWrittenAreTold();
    void aFolderThatMayNotBeWrittenIsTold();
    void aWrongCommandLineIsOne();
    void noComponentIsNeeded();

private:
    int run(const Options &options);
    [[nodiscard]] static Options planning(const QList<const char *> &inputs);
    [[nodiscard]] bool complained(const char *text) const
    {
        return m_console->error.contains(text);
    }

    std::unique_ptr<ToolFolder> m_folder;
    std::unique_ptr<KeptConsole> m_console;
    ComponentSettings m_component;
};

void tst_dry_run::init()
{
    qputenv("QUORLIN_FAKE", "");
    m_folder.reset(); // gives the current folder back first
    m_folder = std::make_unique<ToolFolder>();
    m_folder->writeSettings("program");
    m_console = std::make_unique<KeptConsole>();
    m_component.program = QStringLiteral(QUORLIN_FAKE_COMPONENT);
}

Options tst_dry_run::planning(const QList<const char *> &inputs)
{
    Options options;
    for (const auto *input : inputs)
        options.inputs.append(QString::fromUtf8(input));
    options.dryRun = true;
    return options;
}

int tst_dry_run::run(const Options &options)
{
    m_console = std::make_unique<KeptConsole>();
    ConvertTool tool(options, *m_console, m_folder->path("program"), m_component);
    QSignalSpy finished(&tool, &ConvertTool::finished);
    tool.start();
    if (finished.isEmpty() && !finished.wait(20'000))
        return -1;
    return finished.count() == 1 ? finished.first().first().toInt() : -2;
}

void tst_dry_run::itTellsWhatWouldComeWhere_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("merge");
    QTest::addColumn<QByteArray>("plan");
    QTest::newRow("beside the documents")
        << QString() << QString()
        << QByteArray("d/a.odt -> d/a.pdf\nd/a.txt -> d/a.txt.pdf\nd/b9.txt -> d/b9.pdf\n"
                      "d/b10.txt -> d/b10.pdf\nd/sub/a.txt -> d/sub/a.pdf\n"
                      "x.txt -> x.txt.pdf\nx.ps -> x.pdf\ne.pdf -> e (2).pdf\n");
    QTest::newRow("into a folder")
        << QStringLiteral("new/out") << QString()
        << QByteArray("d/a.odt -> new/out/a.pdf\nd/a.txt -> new/out/a.txt.pdf\n"
                      "d/b9.txt -> new/out/b9.pdf\nd/b10.txt -> new/out/b10.pdf\n"
                      "d/sub/a.txt -> new/out/a (2).pdf\nx.txt -> new/out/x.txt.pdf\n"
                      "x.ps -> new/out/x.pdf\ne.pdf -> new/out/e (2).pdf\n");
    QTest::newRow("into one file")
        << QString() << QStringLiteral("all.pdf")
        << QByteArray("d/a.odt -> all.pdf\nd/a.txt -> all.pdf\nd/b9.txt -> all.pdf\n"
                      "d/b10.txt -> all.pdf\nd/sub/a.txt -> all.pdf\nx.txt -> all.pdf\n"
                      "x.ps -> all.pdf\ne.pdf -> all.pdf\n");
}

void tst_dry_run::itTellsWhatWouldComeWhere()
{
    QFETCH(const QString, output);
    QFETCH(const QString, merge);
    for (const auto *name : {"d/a.txt", "d/a.odt", "d/sub/a.txt", "x.txt", "d/b10.txt", "d/b9.txt"})
        m_folder->write(name);
    m_folder->write("x.ps", "%!PS");
    m_folder->write("e.pdf", "%PDF");
    auto options = planning({"d", "x.txt", "x.ps", "e.pdf"});
    options.outputFolder = output;
    options.mergeFile = merge;
    const auto before = m_folder->files();
    QCOMPARE(run(options), 0);
    QTEST(m_console->output, "plan");
    QCOMPARE(m_console->error, QByteArray("8 documents would be converted; nothing was written\n"));
    QCOMPARE(m_folder->files(), before);
    QVERIFY(!QDir(m_folder->path("new")).exists());
}

void tst_dry_run::whatIsNotTakenIsToldWithItsReason()
{
    m_folder->write("a.txt");
    m_folder->write("b.xyz");
    QCOMPARE(run(planning({"a.txt", "b.xyz", "none.txt"})), 1);
    QCOMPARE(m_console->output, QByteArray("a.txt -> a.pdf\n"));
    QVERIFY(complained("quorlin-convert: b.xyz: files of this kind cannot be converted\n"));
    QVERIFY(complained("quorlin-convert: none.txt: there is no such file\n"));
    QVERIFY(complained("3 documents: 1 would be converted, 2 not; nothing was written\n"));
}

void tst_dry_run::targetsThatMayNotBeWrittenAreTold()
{
    m_folder->write("a.txt");
    m_folder->write("a.pdf/in a folder");
    m_folder->write("b.txt");
    QVERIFY(QFile::setPermissions(m_folder->write("b.pdf"), QFile::ReadOwner));
    QCOMPARE(run(planning({"a.txt", "b.txt"})), 1);
    QVERIFY(complained("a.pdf is a folder"));
    QVERIFY(complained("b.pdf is write-protected"));
    QCOMPARE(m_console->output, QByteArray());
}

void tst_dry_run::aFolderThatMayNotBeWrittenIsTold()
{
    const OrdinaryUser user;
    init(); // the folder of an ordinary user
    m_folder->write("a.txt");
    m_folder->write("locked/b.txt");
    const auto locked = m_folder->path("locked");
    QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner));
    auto options = planning({"a.txt"});
    options.outputFolder = QStringLiteral("locked");
    QCOMPARE(run(options), 1);
    QVERIFY(complained("locked may not be written"));
    options.outputFolder = QStringLiteral("locked/new");
    QCOMPARE(run(options), 1);
    QVERIFY(complained("locked/new cannot be made"));
    options.mergeFile = QStringLiteral("all.pdf");
    QCOMPARE(run(options), 1);
    QVERIFY(QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    m_folder.reset();
}

void tst_dry_run::aWrongCommandLineIsOne()
{
    m_folder->write("a.pdf");
    auto options = planning({"a.pdf"});
    options.mergeFile = QStringLiteral("a.pdf");
    QCOMPARE(run(options), 2);
    options = planning({"a.pdf"});
    options.quality = QStringLiteral("Best");
    QCOMPARE(run(options), 2);
}

void tst_dry_run::noComponentIsNeeded()
{
    m_component.program = QStringLiteral("/nowhere/quorlin-pdf");
    m_folder->write("a.txt");
    QCOMPARE(run(planning({"a.txt"})), 0);
}

QTEST_GUILESS_MAIN(tst_dry_run)
#include "tst_dry_run.moc"
