#include "component/backends/office/EngineBoundaries.h"
#include "component/backends/office/EngineEnvironment.h"
#include "component/backends/office/EngineProcess.h"
#include "component/backends/office/EngineProfile.h"
#include "component/confinement/Confinement.h"
#include "component/supervisor/GhostscriptRun.h"
#include "component/supervisor/ProcessGroup.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QProcess>
#include <QTcpServer>
#include <QTest>
#include <QUrl>

#include <memory>

using namespace Quorlin;

/// The programs behind the workers with their own defences taken away: what stays is the sandbox.
/// Every attack also runs without it, and then succeeds, so that it is known to be one.
class TestConfinedPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void aPostScriptProgramReachesItsFolderOnly_data() { addSandboxColumn(); }
    void aPostScriptProgramReachesItsFolderOnly();
    void jobOptionsReachTheirFolderOnly_data() { addSandboxColumn(); }
    void jobOptionsReachTheirFolderOnly();
    void aMacroReachesTheEnginesFolderOnly_data() { addSandboxColumn(); }
    void aMacroReachesTheEnginesFolderOnly();

private:
    static void addSandboxColumn();
    void checkAttack(bool confined);
    void runGhostscript(bool confined, const QStringList &files) const;
    [[nodiscard]] QByteArray postScriptAttack() const;
    [[nodiscard]] QByteArray macroAttack(quint16 port) const;
    void installMacro(const EngineProfile &profile, const QByteArray &text) const;

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<TestFolder> m_outside;
};

namespace {

/// A macro as the engine keeps it in a user's profile.
QByteArray macroFile(const QByteArray &text)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE script:module PUBLIC "-//OpenOffice.org//DTD OfficeDocument 1.0//EN" "module.dtd">
<script:module xmlns:script="http://openoffice.org/2000/script" script:name="Module1"
 script:language="StarBasic">)" +
           QString::fromUtf8(text).toHtmlEscaped().toUtf8() + "</script:module>\n";
}

constexpr char MacroLibrary[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE library:library PUBLIC "-//OpenOffice.org//DTD OfficeDocument 1.0//EN" "library.dtd">
<library:library xmlns:library="http://openoffice.org/2000/library" library:name="Standard"
 library:readonly="false" library:passwordprotected="false">
 <library:element library:name="Module1"/>
</library:library>
)";

constexpr char MacroLibraries[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE library:libraries PUBLIC "-//OpenOffice.org//DTD OfficeDocument 1.0//EN" "libraries.dtd">
<library:libraries xmlns:library="http://openoffice.org/2000/library"
 xmlns:xlink="http://www.w3.org/1999/xlink">
 <library:library library:name="Standard" xlink:href="$(USER)/basic/Standard/script.xlb/"
  xlink:type="simple" library:link="false"/>
</library:libraries>
)";

/// A profile that lets macros run, as no profile of ours does.
constexpr char CarelessSettings[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Setup/Office"><prop oor:name="ooSetupInstCompleted" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Setup/Product"><prop oor:name="ooSetupLastVersion" oor:op="fuse"><value>9999.0</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="MacroSecurityLevel" oor:op="fuse"><value>0</value></prop></item>
</oor:items>
)";

} // namespace

void TestConfinedPrograms::initTestCase()
{
    if (const auto missing = Confinement::missing(); !missing.isEmpty())
        QSKIP(qPrintable(missing));
}

void TestConfinedPrograms::init()
{
    m_folder = std::make_unique<TestFolder>();
    m_outside = std::make_unique<TestFolder>();
    m_outside->write("secret", "secret words");
    m_outside->write("options", "<< /CompatibilityLevel 1.4 >> setdistillerparams\n");
}

void TestConfinedPrograms::addSandboxColumn()
{
    QTest::addColumn<bool>("confined");
    QTest::newRow("with the sandbox") << true;
    QTest::newRow("without it") << false;
}

/// All attacks read the secret into "stolen" in their own folder, and make "written" and "run"
/// outside; "done" tells that the program got to its end.
void TestConfinedPrograms::checkAttack(bool confined)
{
    QVERIFY2(QFile::exists(m_folder->path("done")), "the attack did not even run");
    QCOMPARE(contentOf(m_folder->path("stolen")).contains("secret words"), !confined);
    QCOMPARE(QFile::exists(m_outside->path("written")), !confined);
    QCOMPARE(QFile::exists(m_outside->path("run")), !confined);
    QCOMPARE(contentOf(m_outside->path("secret")), QByteArray("secret words"));
}

QByteArray TestConfinedPrograms::postScriptAttack() const
{
    const auto outside = QFile::encodeName(m_outside->path());
    return "{ (" + outside +
           "/secret) (r) file 100 string readstring pop\n"
           "  (stolen) (w) file dup 3 -1 roll writestring closefile } stopped clear\n"
           "{ (" +
           outside +
           "/written) (w) file closefile } stopped clear\n"
           "{ (%pipe%touch " +
           outside +
           "/run) (w) file closefile } stopped clear\n"
           "(done) (w) file closefile\n";
}

void TestConfinedPrograms::runGhostscript(bool confined, const QStringList &files) const
{
    QProcess process;
    GhostscriptRun::prepareProcess(
        process, m_folder->path(),
        QStringList{QStringLiteral("-q"), QStringLiteral("-dBATCH"), QStringLiteral("-dNOPAUSE"),
                    QStringLiteral("-dNOSAFER"), QStringLiteral("-sDEVICE=pdfwrite"),
                    QStringLiteral("-sOutputFile=out.pdf")} +
            files);
    ProcessGroup::lead(process, {},
                       confined ? GhostscriptRun::confinementIn(m_folder->path()) : nullptr);
    process.start();
    QVERIFY(process.waitForFinished());
}

void TestConfinedPrograms::aPostScriptProgramReachesItsFolderOnly()
{
    QFETCH(const bool, confined);
    m_folder->write("attack.ps", "%!\n" + postScriptAttack() + "showpage\n");
    runGhostscript(confined, {QStringLiteral("attack.ps")});
    checkAttack(confined);
    QVERIFY(contentOf(m_folder->path("out.pdf")).startsWith("%PDF"));
}

void TestConfinedPrograms::jobOptionsReachTheirFolderOnly()
{
    QFETCH(const bool, confined);
    m_folder->write("a.joboptions",
                    postScriptAttack() + "<< /CompatibilityLevel 1.4 >> setdistillerparams\n");
    m_folder->write("page.ps", "%!\nshowpage\n");
    runGhostscript(confined, {QStringLiteral("a.joboptions"), QStringLiteral("page.ps")});
    checkAttack(confined);
}

QByteArray TestConfinedPrograms::macroAttack(quint16 port) const
{
    const auto quoted = [](const QString &path) { return '"' + QFile::encodeName(path) + '"'; };
    const auto secret = quoted(m_outside->path("secret"));
    return "Sub Attack\n"
           "On Error Resume Next\n"
           "Open " +
           secret +
           " For Input As #1\n"
           "Line Input #1, words\n"
           "Close #1\n"
           "Open " +
           quoted(m_folder->path("stolen")) +
           " For Output As #2\n"
           "Print #2, words\n"
           "Close #2\n"
           "Open " +
           quoted(m_outside->path("written")) +
           " For Output As #3\n"
           "Close #3\n"
           "Shell(\"/usr/bin/touch\", 0, " +
           quoted(m_outside->path("run")) +
           ", True)\n"
           "Dim no()\n"
           "StarDesktop.loadComponentFromURL(\"http://127.0.0.1:" +
           QByteArray::number(port) +
           "/x.txt\", \"_blank\", 0, no())\n"
           "Open " +
           quoted(m_folder->path("done")) +
           " For Output As #4\n"
           "Close #4\n"
           "StarDesktop.terminate()\n"
           "End Sub\n";
}

void TestConfinedPrograms::installMacro(const EngineProfile &profile, const QByteArray &text) const
{
    const auto write = [this](const QString &path, const QByteArray &bytes) {
        m_folder->write(path.mid(m_folder->path().size() + 1).toUtf8().constData(), bytes);
    };
    const auto user = profile.profileFolder() + QStringLiteral("/user");
    write(user + QStringLiteral("/registrymodifications.xcu"), CarelessSettings);
    write(user + QStringLiteral("/basic/script.xlc"), MacroLibraries);
    write(user + QStringLiteral("/basic/Standard/script.xlb"), MacroLibrary);
    write(user + QStringLiteral("/basic/Standard/Module1.xba"), macroFile(text));
}

void TestConfinedPrograms::aMacroReachesTheEnginesFolderOnly()
{
    QFETCH(const bool, confined);
    const auto installation = EngineInstallation::find();
    QVERIFY(installation);
    QTcpServer web;
    QVERIFY(web.listen(QHostAddress::LocalHost));
    // The attack waits for no answer.
    connect(&web, &QTcpServer::newConnection, &web,
            [&web] { web.nextPendingConnection()->disconnectFromHost(); });
    const EngineProfile profile(m_folder->path());
    installMacro(profile, macroAttack(web.serverPort()));
    QVERIFY(profile.prepare(installation->buildId));
    EngineProcess engine;
    if (!confined)
        qputenv("QUORLIN_SANDBOX", "off");
    const auto confinement = std::make_shared<const Confinement>(
        EngineBoundaries::ofEngine(*installation, m_folder->path()));
    qunsetenv("QUORLIN_SANDBOX");
    QVERIFY(engine.start(
        {installation->program(),
         {QStringLiteral("--headless"), QStringLiteral("--norestore"), QStringLiteral("--nologo"),
          QStringLiteral("-env:UserInstallation=") +
              QUrl::fromLocalFile(profile.profileFolder()).toString(),
          QStringLiteral("-env:UNO_SHARED_PACKAGES_CACHE=") +
              QUrl::fromLocalFile(profile.profileFolder()).toString() + QStringLiteral("/shared"),
          QStringLiteral("macro:///Standard.Module1.Attack")},
         EngineEnvironment::make(profile),
         m_folder->path(),
         confinement}));
    bool connected = false;
    connect(&web, &QTcpServer::newConnection, &web, [&connected] { connected = true; });
    QTRY_VERIFY_WITH_TIMEOUT(engine.exitCode().has_value(), 60000);
    checkAttack(confined);
    QCOMPARE(connected, !confined);
}

QTEST_GUILESS_MAIN(TestConfinedPrograms)
#include "tst_confined_programs.moc"
