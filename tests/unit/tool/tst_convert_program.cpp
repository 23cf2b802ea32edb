#include "support/SystemActions.h"
#include "unit/tool/ToolFolder.h"

#include <QProcess>
#include <QTest>

using namespace Quorlin;

/// The program itself, in a folder of its own with the fake component beside it.
class tst_convert_program : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void itFindsItsFilesBesideItselfThroughALink();
    void helpAndVersionSucceed();
    void wrongUseEndsWithTwo();
    void withoutAComponentItSaysSo();
    void aSignalEndsItCleanly_data();
    void aSignalEndsItCleanly();
    void namesComeFromStandardInput();
    void aSignalEndsTheWaitForNames();
    void closedStreamsAreErrors_data();
    void closedStreamsAreErrors();
    void namesThatAreNotUtf8MeanNoOtherFile();

private:
    int run(const QStringList &arguments);
    void install(const char *from, const char *name) const;

    std::unique_ptr<ToolFolder> m_folder;
    QByteArray m_output;
    QByteArray m_error;
};

void tst_convert_program::init()
{
    m_folder.reset(); // gives the current folder back first
    m_folder = std::make_unique<ToolFolder>();
    m_folder->writeSettings("program");
    qputenv("QUORLIN_FAKE", "");
    qputenv("QUORLIN_FAKE_LOG", m_folder->path("log").toUtf8());
    install(QUORLIN_BIN_DIR "/quorlin-convert", "quorlin-convert");
    install(QUORLIN_FAKE_COMPONENT, "quorlin-pdf");
    QVERIFY(QFile::link(m_folder->path("program/quorlin-convert"), m_folder->path("convert")));
}

void tst_convert_program::install(const char *from, const char *name) const
{
    const auto target = m_folder->path("program") + QLatin1Char('/') + QString::fromUtf8(name);
    QVERIFY(QFile::copy(QString::fromUtf8(from), target));
}

int tst_convert_program::run(const QStringList &arguments)
{
    QProcess process;
    process.start(m_folder->path("convert"), arguments);
    if (!process.waitForFinished(20'000))
        return -1;
    m_output = process.readAllStandardOutput();
    m_error = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}

void tst_convert_program::itFindsItsFilesBesideItselfThroughALink()
{
    m_folder->write("a.txt");
    QCOMPARE(run({QStringLiteral("-q"), QStringLiteral("High"), QStringLiteral("a.txt")}), 0);
    QCOMPARE(m_output, QByteArray("a.txt -> a.pdf\n"));
    QVERIFY(m_folder->read(QStringLiteral("log")).contains("program/Settings/High.joboptions"));
    QVERIFY(m_folder->read(QStringLiteral("log")).contains("\"printer\":\"Test PDF\""));
}

void tst_convert_program::helpAndVersionSucceed()
{
    QCOMPARE(run({QStringLiteral("--help")}), 0);
    QVERIFY(m_output.startsWith("Usage: quorlin-convert"));
    QCOMPARE(run({QStringLiteral("--version")}), 0);
    QCOMPARE(m_output, QByteArray("quorlin-convert " QUORLIN_VERSION "\n"));
    QCOMPARE(m_error, QByteArray());
}

void tst_convert_program::wrongUseEndsWithTwo()
{
    QCOMPARE(run({}), 2);
    QVERIFY(m_error.contains("--help"));
    QCOMPARE(m_output, QByteArray());
}

void tst_convert_program::withoutAComponentItSaysSo()
{
    QVERIFY(QFile::remove(m_folder->path("program/quorlin-pdf")));
    m_folder->write("a.txt");
    QCOMPARE(run({QStringLiteral("a.txt")}), 1);
    QVERIFY(m_error.contains("program/quorlin-pdf cannot be started"));
}

void tst_convert_program::aSignalEndsItCleanly_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("interrupt") << 2;
    QTest::newRow("terminate") << 15;
}

void tst_convert_program::aSignalEndsItCleanly()
{
    QFETCH(int, number);
    m_folder->write("a.txt");
    m_folder->write("dawdle.txt");
    const auto before = m_folder->files().size();
    QProcess process;
    process.start(m_folder->path("convert"),
                  {QStringLiteral("a.txt"), QStringLiteral("dawdle.txt")});
    QTRY_VERIFY(m_folder->files().contains(QStringLiteral("a.ps~")));
    QVERIFY(QProcess::execute(QStringLiteral("kill"), {QStringLiteral("-%1").arg(number),
                                                       QString::number(process.processId())}) == 0);
    QVERIFY(process.waitForFinished(10'000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 128 + number);
    QVERIFY(m_folder->read(QStringLiteral("log")).endsWith("end\n"));
    QCOMPARE(m_folder->files().size(), before + 1); // the log
}

void tst_convert_program::namesComeFromStandardInput()
{
    m_folder->write("a.txt");
    m_folder->write("-n.txt");
    QProcess process;
    process.start(m_folder->path("convert"), {QStringLiteral("-0T-")});
    QCOMPARE(process.write("-n.txt\0a.txt", 12), 12);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(20'000));
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardOutput(), QByteArray("-n.txt -> -n.pdf\na.txt -> a.pdf\n"));
}

void tst_convert_program::aSignalEndsTheWaitForNames()
{
    m_folder->write("a.txt");
    QProcess process;
    process.start(m_folder->path("convert"), {QStringLiteral("--files-from"), QStringLiteral("-"),
                                              QStringLiteral("--json"), QStringLiteral("report")});
    QVERIFY(process.waitForStarted());
    QCOMPARE(process.write("a.txt\n"), 6);
    QVERIFY(!process.waitForFinished(500)); // it waits for more
    SystemActions::interrupt(process.processId());
    QVERIFY(process.waitForFinished(10'000));
    QCOMPARE(process.exitCode(), 130);
    QVERIFY(m_folder->read(QStringLiteral("report")).contains("\"documents\": 0"));
    QVERIFY(!m_folder->files().contains(QStringLiteral("a.pdf")));
}

void tst_convert_program::closedStreamsAreErrors_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("error");
    const QByteArray full("standard output cannot be written: ");
    QTest::newRow("output is full") << QStringLiteral("./convert a.txt >/dev/full") << 1 << full;
    QTest::newRow("output is closed") << QStringLiteral("./convert a.txt >&-") << 1 << full;
    QTest::newRow("nobody reads") << QStringLiteral("./convert a.txt | true; exit 0") << 0
                                  << QByteArray();
    QTest::newRow("help is lost") << QStringLiteral("./convert --help >/dev/full") << 1 << full;
    QTest::newRow("input is closed") << QStringLiteral("./convert a.txt <&-") << 0 << QByteArray();
    QTest::newRow("no list there") << QStringLiteral("./convert -T - <&-") << 2
                                   << QByteArray("the list on standard input: it cannot be read");
    QTest::newRow("errors are closed")
        << QStringLiteral("./convert a.txt none.txt 2>&-") << 1 << QByteArray();
    QTest::newRow("the report is lost") << QStringLiteral("./convert a.txt --json - >/dev/full")
                                        << 1 << QByteArray("the report cannot be written: ");
}

void tst_convert_program::closedStreamsAreErrors()
{
    QFETCH(const QString, command);
    QFETCH(const QByteArray, error);
    m_folder->write("a.txt");
    QProcess process;
    process.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
    QVERIFY(process.waitForFinished(20'000));
    QTEST(process.exitCode(), "code");
    const auto said = process.readAllStandardError();
    QVERIFY2(said.contains(error), said.constData());
    const bool converts =
        !command.contains(QLatin1String("-T")) && !command.contains(QLatin1String("help"));
    QCOMPARE(m_folder->files().contains(QStringLiteral("a.pdf")), converts);
}

void tst_convert_program::namesThatAreNotUtf8MeanNoOtherFile()
{
    m_folder->write("\xEF\xBF\xBD.txt"); // what the name below is shown as
    QProcess process;
    process.start(QStringLiteral("sh"),
                  {QStringLiteral("-c"), QStringLiteral("./convert \"$(printf '\\377.txt')\"")});
    QVERIFY(process.waitForFinished(20'000));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("its name is not UTF-8"));
}

QTEST_GUILESS_MAIN(tst_convert_program)
#include "tst_convert_program.moc"
