#include "component/backends/ghostscript/GhostscriptCommand.h"

#include <QTest>

#include <algorithm>

using namespace Quorlin;

namespace {

const auto Folder = QStringLiteral("/w/my folder");

QStringList oneFile(PostScriptOrigin origin)
{
    return GhostscriptCommand::oneFile(Folder, Folder + QStringLiteral("/o.joboptions"),
                                       Folder + QStringLiteral("/in.ps"),
                                       Folder + QStringLiteral("/out.pdf"), origin);
}

QList<QStringList> allCommands()
{
    return {oneFile(PostScriptOrigin::Ours), oneFile(PostScriptOrigin::Printed),
            oneFile(PostScriptOrigin::Foreign), GhostscriptCommand::server(Folder)};
}

} // namespace

class TestGhostscriptCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCommandIsSafe();
    void onlyTheFolderIsPermitted();
    void everyCommandWritesPdfWithoutTurningPages();
    void optionsComeBeforeTheDocument();
    void foreignPostScriptGetsNoTransparency();
    void theServerReadsItsStatementsFromItsInput();
};

void TestGhostscriptCommand::everyCommandIsSafe()
{
    for (const auto &arguments : allCommands()) {
        QVERIFY(arguments.contains(QStringLiteral("-dSAFER")));
        QVERIFY(!arguments.contains(QStringLiteral("-dNOSAFER")));
        QVERIFY(arguments.contains(QStringLiteral("-dNOPAUSE")));
    }
}

void TestGhostscriptCommand::onlyTheFolderIsPermitted()
{
    for (const auto &arguments : allCommands())
        QCOMPARE(arguments.filter(QStringLiteral("--permit")),
                 QStringList{QStringLiteral("--permit-file-all=/w/my folder/*")});
}

void TestGhostscriptCommand::everyCommandWritesPdfWithoutTurningPages()
{
    for (const auto &arguments : allCommands()) {
        QVERIFY(arguments.contains(QStringLiteral("-sDEVICE=pdfwrite")));
        QVERIFY(arguments.contains(QStringLiteral("-dAutoRotatePages=/None")));
    }
}

void TestGhostscriptCommand::optionsComeBeforeTheDocument()
{
    const auto arguments = oneFile(PostScriptOrigin::Foreign);
    const auto options = arguments.indexOf(QStringLiteral("/w/my folder/o.joboptions"));
    const auto input = arguments.indexOf(QStringLiteral("/w/my folder/in.ps"));
    QVERIFY(options > 0);
    QVERIFY(input > options);
    QVERIFY(arguments.contains(QStringLiteral("-sOutputFile=/w/my folder/out.pdf")));
    QVERIFY(arguments.contains(QStringLiteral("-dBATCH")));
}

void TestGhostscriptCommand::foreignPostScriptGetsNoTransparency()
{
    const auto transparency = QStringLiteral("-dALLOWPSTRANSPARENCY");
    QVERIFY(oneFile(PostScriptOrigin::Ours).contains(transparency));
    QVERIFY(oneFile(PostScriptOrigin::Printed).contains(transparency));
    QVERIFY(!oneFile(PostScriptOrigin::Foreign).contains(transparency));
}

void TestGhostscriptCommand::theServerReadsItsStatementsFromItsInput()
{
    const auto arguments = GhostscriptCommand::server(Folder);
    QVERIFY(!arguments.contains(QStringLiteral("-dBATCH")));
    QVERIFY(arguments.contains(QStringLiteral("-dNOPROMPT")));
    QVERIFY(std::ranges::all_of(arguments, [](const auto &word) { return word.startsWith(u'-'); }));
}

QTEST_GUILESS_MAIN(TestGhostscriptCommand)
#include "tst_ghostscriptcommand.moc"
