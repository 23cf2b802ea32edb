#include "support/TestFolder.h"

#include <QFile>
#include <QProcess>
#include <QTest>

using namespace Quorlin;

namespace {

const auto Program = QStringLiteral(QUORLIN_BIN_DIR "/quorlin-settings");
constexpr int Patience = 60'000;

} // namespace

/// The program itself, without a display, on a home and a machine of its own.
class tst_settings_program : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void helpAndVersionSucceed();
    void wrongUseEndsWithTwo();
    void bothLayersLieWhereTheEnvironmentSays();
    void itFindsWhatIsInstalledThroughALink();
    void outputThatIsLostIsAFailure();
    void manyAtOnceLoseNothing();

private:
    int run(const QStringList &arguments, const QString &program = Program);
    void prepare(QProcess &process) const;

    std::unique_ptr<TestFolder> m_folder;
    QByteArray m_output;
    QByteArray m_errors;
};

void tst_settings_program::init()
{
    m_folder = std::make_unique<TestFolder>();
}

void tst_settings_program::prepare(QProcess &process) const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto *const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("HOME"), m_folder->path("home"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder->path("user"));
    environment.insert(QStringLiteral("XDG_CONFIG_DIRS"), m_folder->path("machine"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path("runtime"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    process.setProcessEnvironment(environment);
}

int tst_settings_program::run(const QStringList &arguments, const QString &program)
{
    QProcess process;
    prepare(process);
    process.start(program, arguments);
    if (!process.waitForFinished(Patience))
        return -1;
    m_output = process.readAllStandardOutput();
    m_errors = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}

void tst_settings_program::helpAndVersionSucceed()
{
    QCOMPARE(run({QStringLiteral("--help")}), 0);
    QVERIFY(m_output.startsWith("Usage: quorlin-settings "));
    QCOMPARE(run({QStringLiteral("--version")}), 0);
    QCOMPARE(m_output, QByteArray("quorlin-settings " QUORLIN_VERSION "\n"));
    QCOMPARE(m_errors, QByteArray());
}

void tst_settings_program::wrongUseEndsWithTwo()
{
    QCOMPARE(run({}), 2);
    QCOMPARE(m_output, QByteArray());
    QCOMPARE(m_errors, QByteArray("quorlin-settings: no command given\n"
                                  "Try \"quorlin-settings --help\".\n"));
}

void tst_settings_program::bothLayersLieWhereTheEnvironmentSays()
{
    const QStringList set{QStringLiteral("set"), QStringLiteral("Language"),
                          QStringLiteral("deutsch")};
    QCOMPARE(run(set), 0);
    QVERIFY(QFile::exists(m_folder->path("user/quorlin/registry.db")));
    QCOMPARE(run(QStringList(QStringLiteral("--machine")) + set), 0);
    QVERIFY(QFile::exists(m_folder->path("machine/quorlin/registry.db")));
}

void tst_settings_program::itFindsWhatIsInstalledThroughALink()
{
    m_folder->makeFolder("bin");
    const auto link = m_folder->path("bin/quorlin-settings");
    QVERIFY(QFile::link(Program, link));
    QCOMPARE(run({QStringLiteral("values"), QStringLiteral("Quality")}, link), 0);
    QCOMPARE(m_output, QByteArray("Default\nLow\nMedium\nHigh\n"));
}

void tst_settings_program::outputThatIsLostIsAFailure()
{
    QProcess process;
    prepare(process);
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(Program, {QStringLiteral("list")});
    QVERIFY(process.waitForFinished(Patience));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().startsWith("quorlin-settings: "));
}

void tst_settings_program::manyAtOnceLoseNothing()
{
    const QList<QStringList> wishes{{QStringLiteral("Language"), QStringLiteral("deutsch")},
                                    {QStringLiteral("Quality"), QStringLiteral("2")},
                                    {QStringLiteral("ShowOption"), QStringLiteral("true")},
                                    {QStringLiteral("Position"), QStringLiteral("1,2")}};
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const auto &wish : wishes) {
        processes.push_back(std::make_unique<QProcess>());
        prepare(*processes.back());
        processes.back()->start(Program, QStringList(QStringLiteral("set")) + wish);
    }
    for (const auto &process : processes) {
        QVERIFY(process->waitForFinished(Patience));
        QCOMPARE(process->exitCode(), 0);
    }
    for (const auto &wish : wishes) {
        QCOMPARE(run({QStringLiteral("get"), wish.at(0)}), 0);
        QCOMPARE(QString::fromUtf8(m_output), wish.at(1) + QLatin1Char('\n'));
    }
}

QTEST_GUILESS_MAIN(tst_settings_program)
#include "tst_settings_program.moc"
