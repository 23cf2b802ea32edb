#include "component/confinement/Confinement.h"

#include "component/confinement/FontPlaces.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QProcess>
#include <QTcpServer>
#include <QTest>

#include <memory>

using namespace Quorlin;

/// Each action succeeds without a sandbox, or fails there in another way, and is refused inside.
class TestConfinement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void filesOutsideAreOutOfReach_data();
    void filesOutsideAreOutOfReach();
    void filesInsideAreReachedAsUsual_data();
    void filesInsideAreReachedAsUsual();
    void nothingThatLeadsElsewhereIsMadeInside_data();
    void nothingThatLeadsElsewhereIsMadeInside();
    void theSystemsLibrariesAndFontsAreRead();
    void noConnectionIsMade_data();
    void noConnectionIsMade();
    void otherProcessesAreOutOfReach_data();
    void otherProcessesAreOutOfReach();
    void noProcessIsStarted();
    void aStarterStartsWhatItIsMeantToOnly();
    void noProcessLeavesItsGroup_data();
    void noProcessLeavesItsGroup();
    void theWayIntoTheKernelIsNarrow_data();
    void theWayIntoTheKernelIsNarrow();
    void anEngineHearsThatItMayNotWriteElsewhere();
    void withoutFileRulesTheFilterStillHolds();
    void withoutFiltersTheProgramRunsAsItIs();
    void whatIsMissingIsSaid();
    void theEnvironmentSwitchesItOff();

private:
    [[nodiscard]] QByteArray run(const QStringList &arguments) const;
    [[nodiscard]] QByteArray attempt(const char *kind, const QByteArray &action,
                                     const QString &target) const;
    void addRefusal(const char *action, const QString &target, const char *error) const;
    void checkRefusal();

    std::unique_ptr<TestFolder> m_inside;
    std::unique_ptr<TestFolder> m_outside;
};

namespace {

constexpr char ProgramPath[] = QUORLIN_CONFINED_PROGRAM;

void addColumns()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QByteArray>("error");
}

} // namespace

void TestConfinement::initTestCase()
{
    if (const auto missing = Confinement::missing(); !missing.isEmpty())
        QSKIP(qPrintable(missing));
}

void TestConfinement::init()
{
    m_inside = std::make_unique<TestFolder>();
    m_outside = std::make_unique<TestFolder>();
    m_inside->write("file", "content");
    m_outside->write("file", "content");
}

QByteArray TestConfinement::run(const QStringList &arguments) const
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(QLatin1String(ProgramPath), arguments);
    program.waitForFinished();
    return program.readAllStandardOutput().trimmed();
}

QByteArray TestConfinement::attempt(const char *kind, const QByteArray &action,
                                    const QString &target) const
{
    return run({QLatin1String(kind), m_inside->path(), QLatin1String(action), target});
}

void TestConfinement::addRefusal(const char *action, const QString &target, const char *error) const
{
    QTest::newRow(action) << QByteArray(action) << target << QByteArray(error);
}

/// Targets are names in the folder outside, or complete.
void TestConfinement::checkRefusal()
{
    QFETCH(const QByteArray, action);
    QFETCH(const QString, target);
    QFETCH(const QByteArray, error);
    const auto path = m_outside->path(target.toUtf8().constData());
    QCOMPARE(attempt("confined", action, path), error);
    QCOMPARE(contentOf(m_outside->path("file")), QByteArray("content"));
    QCOMPARE(m_outside->names(), QStringList(QStringLiteral("file")));
    QCOMPARE(attempt("free", action, path), QByteArray("ok"));
}

void TestConfinement::filesOutsideAreOutOfReach_data()
{
    addColumns();
    for (const char *action : {"read", "write", "remove"})
        addRefusal(action, QStringLiteral("file"), "EACCES");
    addRefusal("second-name", QStringLiteral("file"), "EXDEV");
    for (const char *action : {"permissions", "owner", "times", "truncate", "empty"})
        addRefusal(action, QStringLiteral("file"), "EPERM");
    for (const char *action : {"create", "make-folder"})
        addRefusal(action, QStringLiteral("new"), "EACCES");
    addRefusal("list", QString(), "EACCES");
}

void TestConfinement::filesOutsideAreOutOfReach()
{
    checkRefusal();
}

void TestConfinement::filesInsideAreReachedAsUsual_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QByteArray>("name");
    for (const char *action : {"read", "write", "remove"})
        QTest::newRow(action) << QByteArray(action) << QByteArray("file");
    for (const char *action : {"create", "make-folder", "listen-local"})
        QTest::newRow(action) << QByteArray(action) << QByteArray("new");
}

void TestConfinement::filesInsideAreReachedAsUsual()
{
    QFETCH(const QByteArray, action);
    QFETCH(const QByteArray, name);
    QCOMPARE(attempt("confined", action, m_inside->path(name.constData())), QByteArray("ok"));
}

void TestConfinement::nothingThatLeadsElsewhereIsMadeInside_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::newRow("link") << QByteArray("link");
    QTest::newRow("pipe") << QByteArray("make-pipe");
}

void TestConfinement::nothingThatLeadsElsewhereIsMadeInside()
{
    QFETCH(const QByteArray, action);
    QCOMPARE(attempt("confined", action, m_inside->path("new")), QByteArray("EPERM"));
    QCOMPARE(attempt("free", action, m_inside->path("new")), QByteArray("ok"));
}

void TestConfinement::theSystemsLibrariesAndFontsAreRead()
{
    QCOMPARE(attempt("confined", "list", QStringLiteral("/usr/lib")), QByteArray("ok"));
    int folders = 0;
    for (const auto &place : FontPlaces::readable()) {
        if (!QFileInfo(place).isDir())
            continue;
        QCOMPARE(attempt("confined", "list", place), QByteArray("ok"));
        ++folders;
    }
    QVERIFY(folders > 0);
}

void TestConfinement::noConnectionIsMade_data()
{
    QTest::addColumn<QByteArray>("action");
    for (const char *action :
         {"connect-tcp", "packet-socket", "local-packets", "kernel-socket", "connect-local"})
        QTest::newRow(action) << QByteArray(action);
}

void TestConfinement::noConnectionIsMade()
{
    QFETCH(const QByteArray, action);
    QTcpServer web;
    QLocalServer local;
    QVERIFY(web.listen(QHostAddress::LocalHost));
    QVERIFY(local.listen(m_inside->path("socket")));
    const auto target =
        action == "connect-tcp" ? QString::number(web.serverPort()) : local.fullServerName();
    QCOMPARE(attempt("confined", action, target), QByteArray("EACCES"));
    QVERIFY(!web.waitForNewConnection(100));
    QCOMPARE(attempt("free", action, target), QByteArray("ok"));
    if (action == "connect-tcp")
        QVERIFY(web.waitForNewConnection(5000));
}

void TestConfinement::otherProcessesAreOutOfReach_data()
{
    QTest::addColumn<QByteArray>("action");
    for (const char *action : {"signal", "trace", "limits-of-another"})
        QTest::newRow(action) << QByteArray(action);
}

void TestConfinement::otherProcessesAreOutOfReach()
{
    QFETCH(const QByteArray, action);
    QProcess other;
    other.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    QVERIFY(other.waitForStarted());
    const auto target = QString::number(other.processId());
    QCOMPARE(attempt("confined", action, target), QByteArray("EPERM"));
    QCOMPARE(attempt("free", action, target), QByteArray("ok"));
    other.kill();
    other.waitForFinished();
}

void TestConfinement::noProcessIsStarted()
{
    QCOMPARE(attempt("confined", "process", QString()), QByteArray("EPERM"));
    QCOMPARE(attempt("free", "process", QString()), QByteArray("ok"));
    QCOMPARE(attempt("confined", "thread", QString()), QByteArray("ok"));
}

void TestConfinement::aStarterStartsWhatItIsMeantToOnly()
{
    QCOMPARE(attempt("starter", "process", QString()), QByteArray("ok"));
    // What runs in its place says nothing.
    QCOMPARE(attempt("starter", "run", QStringLiteral("/usr/bin/true")), QByteArray());
    QCOMPARE(attempt("starter", "run", QStringLiteral("/usr/bin/false")), QByteArray("EACCES"));
    QCOMPARE(attempt("free", "run", QStringLiteral("/usr/bin/false")), QByteArray());
}

void TestConfinement::noProcessLeavesItsGroup_data()
{
    QTest::addColumn<QByteArray>("action");
    for (const char *action : {"session", "group", "survive-parent"})
        QTest::newRow(action) << QByteArray(action);
}

void TestConfinement::noProcessLeavesItsGroup()
{
    QFETCH(const QByteArray, action);
    QCOMPARE(attempt("confined", action, QString()), QByteArray("EPERM"));
    QCOMPARE(attempt("free", action, QString()), QByteArray("ok"));
}

void TestConfinement::theWayIntoTheKernelIsNarrow_data()
{
    QTest::addColumn<QByteArray>("action");
    for (const char *action : {"namespace", "shared-memory", "ring"})
        QTest::newRow(action) << QByteArray(action);
}

void TestConfinement::theWayIntoTheKernelIsNarrow()
{
    QFETCH(const QByteArray, action);
    QCOMPARE(attempt("confined", action, QString()), QByteArray("EPERM"));
    QVERIFY(attempt("free", action, QString()) != "EPERM" || action == "namespace");
}

void TestConfinement::anEngineHearsThatItMayNotWriteElsewhere()
{
    QCOMPARE(attempt("engine", "write-probe", QDir::tempPath()), QByteArray("EACCES"));
    QCOMPARE(attempt("confined", "write-probe", QDir::tempPath()), QByteArray("ok"));
}

void TestConfinement::withoutFileRulesTheFilterStillHolds()
{
    const auto attemptThere = [this](const char *action, const QString &target) {
        return run({QStringLiteral("without-file-rules"), QLatin1String(ProgramPath),
                    QStringLiteral("confined"), m_inside->path(), QLatin1String(action), target});
    };
    QCOMPARE(attemptThere("read", m_outside->path("file")), QByteArray("ok"));
    QCOMPARE(attemptThere("connect-tcp", QStringLiteral("1")), QByteArray("EACCES"));
    QCOMPARE(attemptThere("process", QString()), QByteArray("EPERM"));
    QCOMPARE(attemptThere("permissions", m_outside->path("file")), QByteArray("EPERM"));
}

void TestConfinement::withoutFiltersTheProgramRunsAsItIs()
{
    QCOMPARE(run({QStringLiteral("without-call-filters"), QLatin1String(ProgramPath),
                  QStringLiteral("confined"), m_inside->path(), QStringLiteral("read"),
                  m_outside->path("file")}),
             QByteArray("ok"));
}

void TestConfinement::whatIsMissingIsSaid()
{
    const auto missingIn = [this](const QStringList &how) {
        return run(how + QStringList{QLatin1String(ProgramPath), QStringLiteral("missing"), {}});
    };
    QVERIFY(missingIn({QStringLiteral("without-file-rules")}).contains("no Landlock"));
    QVERIFY(missingIn({QStringLiteral("without-call-filters")}).contains("no filters"));
    QCOMPARE(run({QStringLiteral("missing"), QString()}), QByteArray());
}

void TestConfinement::theEnvironmentSwitchesItOff()
{
    qputenv("QUORLIN_SANDBOX", "off");
    const auto free = attempt("confined", "read", m_outside->path("file"));
    const auto missing = Confinement::missing();
    qunsetenv("QUORLIN_SANDBOX");
    QCOMPARE(free, QByteArray("ok"));
    QVERIFY(missing.contains(QStringLiteral("QUORLIN_SANDBOX")));
    QCOMPARE(attempt("confined", "read", m_outside->path("file")), QByteArray("EACCES"));
}

QTEST_GUILESS_MAIN(TestConfinement)
#include "tst_confinement.moc"
