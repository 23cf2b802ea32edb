#include "tool/ToolSettings.h"
#include "unit/tool/ToolFolder.h"

#include <QTest>

using namespace Quorlin;

class tst_tool_settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMissingFileGivesNothing();
    void jobOptionsAreFoundByTheirExactName();
    void thePrinterHasADefault();
    void bytesAreWindows1252();
    void theFirstOfEqualNamesWins();
    void aLastLineWithoutLineEndDoesNotCount();
    void theShippedFileNamesItsQualities();
};

void tst_tool_settings::aMissingFileGivesNothing()
{
    const ToolFolder folder;
    QVERIFY(!ToolSettings::load(folder.path(".")));
}

void tst_tool_settings::jobOptionsAreFoundByTheirExactName()
{
    const ToolFolder folder;
    const auto program = folder.writeSettings();
    const auto settings = ToolSettings::load(program);
    QVERIFY(settings);
    QCOMPARE(settings->qualities(),
             QStringList({QStringLiteral("Default"), QStringLiteral("High")}));
    QCOMPARE(settings->jobOptionsFile(QStringLiteral("High")),
             program + QStringLiteral("/Settings/High.joboptions"));
    QCOMPARE(settings->jobOptionsFile(QStringLiteral("high")), QString());
    QCOMPARE(settings->printerName(), QStringLiteral("Test PDF"));
}

void tst_tool_settings::thePrinterHasADefault()
{
    const ToolFolder folder;
    folder.write("Quorlin.ini", "[Printer]\nName =  \n");
    QCOMPARE(ToolSettings::load(folder.path("."))->printerName(), QStringLiteral("Varnex PDF"));
    folder.write("Quorlin.ini", "");
    QCOMPARE(ToolSettings::load(folder.path("."))->printerName(), QStringLiteral("Varnex PDF"));
    QVERIFY(ToolSettings::load(folder.path("."))->qualities().isEmpty());
}

void tst_tool_settings::bytesAreWindows1252()
{
    const ToolFolder folder;
    folder.write("Quorlin.ini", "[Printer]\r\nName = B\xfcro \x80\x99\r\n");
    QCOMPARE(ToolSettings::load(folder.path("."))->printerName(), QStringLiteral("Büro €\u2122"));
}

void tst_tool_settings::theFirstOfEqualNamesWins()
{
    const ToolFolder folder;
    folder.write("Quorlin.ini", "[Printer]\nName=a=b\nName=c\n[Printer]\nName=d\n");
    QCOMPARE(ToolSettings::load(folder.path("."))->printerName(), QStringLiteral("a=b"));
}

void tst_tool_settings::aLastLineWithoutLineEndDoesNotCount()
{
    const ToolFolder folder;
    folder.write("Quorlin.ini", "[JobOptions]\nA = a\nB = b");
    QCOMPARE(ToolSettings::load(folder.path("."))->qualities(), QStringList(QStringLiteral("A")));
}

void tst_tool_settings::theShippedFileNamesItsQualities()
{
    const auto settings = ToolSettings::load(QStringLiteral(QUORLIN_SOURCE_DIR "/data"));
    QVERIFY(settings);
    QVERIFY(settings->qualities().contains(QStringLiteral("Default")));
    for (const auto &quality : settings->qualities())
        QVERIFY2(QFile::exists(settings->jobOptionsFile(quality)), qPrintable(quality));
}

QTEST_GUILESS_MAIN(tst_tool_settings)
#include "tst_tool_settings.moc"
