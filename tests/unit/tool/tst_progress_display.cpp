#include "tool/ProgressDisplay.h"
#include "unit/tool/KeptConsole.h"

#include <QTest>

using namespace Quorlin;

class tst_progress_display : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTerminalGetsABar();
    void theBarFitsIntoTheTerminal_data();
    void theBarFitsIntoTheTerminal();
    void elsewhereEachStageIsALine();
    void quietShowsNothing();
    void theBarIsTakenAwayOnce();
    void theSameValueIsNotDrawnAgain();
    void controlCharactersDoNotReachTheTerminal();
};

void tst_progress_display::aTerminalGetsABar()
{
    KeptConsole console(80);
    ProgressDisplay display(console, false);
    display.setStage(QStringLiteral("Printing"));
    display.setPercent(50);
    const auto bar = QByteArray(20, '#') + QByteArray(20, '.');
    QVERIFY2(console.error.endsWith("\r[" + bar + "]  50% Printing\x1b[K"), console.error);
    display.setPercent(250);
    QVERIFY(console.error.endsWith("100% Printing\x1b[K"));
}

void tst_progress_display::theBarFitsIntoTheTerminal_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {1, 5, 20, 30, 80, 400})
        QTest::addRow("%d", width) << width;
}

void tst_progress_display::theBarFitsIntoTheTerminal()
{
    QFETCH(int, width);
    KeptConsole console(width);
    ProgressDisplay display(console, false);
    display.setStage(QStringLiteral("Printing documents ..."));
    auto shown = console.error;
    QVERIFY(shown.replace("\r", "").replace("\x1b[K", "").size() < width);
}

void tst_progress_display::elsewhereEachStageIsALine()
{
    KeptConsole console;
    ProgressDisplay display(console, false);
    display.setStage(QStringLiteral("One"));
    display.setPercent(50);
    display.hide();
    display.setStage(QStringLiteral("Two"));
    QCOMPARE(console.error, QByteArray("One\nTwo\n"));
}

void tst_progress_display::quietShowsNothing()
{
    KeptConsole console(80);
    ProgressDisplay display(console, true);
    display.setStage(QStringLiteral("One"));
    display.setPercent(50);
    display.hide();
    QCOMPARE(console.error, QByteArray());
}

void tst_progress_display::theBarIsTakenAwayOnce()
{
    KeptConsole console(80);
    ProgressDisplay display(console, false);
    display.setStage(QStringLiteral("One"));
    console.error.clear();
    display.hide();
    display.hide();
    QCOMPARE(console.error, QByteArray("\r\x1b[K"));
}

void tst_progress_display::theSameValueIsNotDrawnAgain()
{
    KeptConsole console(80);
    ProgressDisplay display(console, false);
    display.setPercent(10);
    const auto before = console.error;
    display.setPercent(10);
    QCOMPARE(console.error, before);
}

void tst_progress_display::controlCharactersDoNotReachTheTerminal()
{
    KeptConsole console;
    console.print(QStringLiteral("a\x1b[2Jb\nc"));
    QCOMPARE(console.output, QByteArray("a?[2Jb?c\n"));
}

QTEST_GUILESS_MAIN(tst_progress_display)
#include "tst_progress_display.moc"
