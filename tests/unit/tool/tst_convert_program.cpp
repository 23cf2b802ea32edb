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

QTEST_GUILESS_MAIN(tst_convert_program)
#include "tst_convert_program.moc"
