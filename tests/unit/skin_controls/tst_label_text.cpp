#include "skin/controls/LabelText.h"
#include "skin/controls/TextBlock.h"

#include "Pixels.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Quorlin;

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

class TestLabelText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheAccessKey_data();
    void findsTheAccessKey();
    void leavesAmpersandsWithoutMnemonics();
    void breaksLinesAtEveryKindOfLineEnd();
    void showsControlCharactersAsSpaces();
    void replacesLoneSurrogates();
    void keepsPairsOfSurrogates();
    void showsTheBeginningOfAVeryLongCaption();
    void neverCutsAPairOfSurrogates();
    void measuresAMegabyteQuickly_data();
    void measuresAMegabyteQuickly();
    void shortensOnlyLinesWithoutRoom();
    void keepsTheAccessKeyOfAShortenedText();
    void losesAnAccessKeyThatIsCutOff();
    void measuresAnEmptyTextAsOneLineOfNoWidth();
};

void TestLabelText::findsTheAccessKey_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("mark");
    QTest::newRow("none") << text("Help") << text("Help") << -1;
    QTest::newRow("first") << text("&Help") << text("Help") << 0;
    QTest::newRow("inside") << text("He&lp") << text("Help") << 2;
    QTest::newRow("doubled") << text("A && B") << text("A & B") << -1;
    QTest::newRow("doubled and key") << text("&&&C") << text("&C") << 1;
    QTest::newRow("first of two") << text("&Save &as") << text("Save as") << 0;
    QTest::newRow("at the end") << text("Save&") << text("Save&") << -1;
    QTest::newRow("before a space") << text("A & B") << text("A & B") << -1;
    QTest::newRow("umlaut") << text("&Öffnen") << text("Öffnen") << 0;
}

void TestLabelText::findsTheAccessKey()
{
    QFETCH(QString, caption);
    QFETCH(int, mark);
    const LabelText label(caption, true);
    QTEST(label.shown(), "shown");
    QCOMPARE(label.mark(), mark);
    QCOMPARE(label.accessKey(), mark < 0 ? QChar() : label.shown().at(mark).toUpper());
}

void TestLabelText::leavesAmpersandsWithoutMnemonics()
{
    const LabelText label(text("&A && B"), false);
    QCOMPARE(label.shown(), text("&A && B"));
    QCOMPARE(label.mark(), -1);
}

void TestLabelText::breaksLinesAtEveryKindOfLineEnd()
{
    const LabelText label(text("a\r\nb\nc\rd\n\re"), false);
    QCOMPARE(label.plain(), text("a\nb\nc\nd\n\ne"));
    QCOMPARE(label.shown().count(QChar::LineSeparator), 5);
}

void TestLabelText::showsControlCharactersAsSpaces()
{
    const LabelText label(QString(QChar()) + text("a\x01\x1B\tb\x7F"), true);
    QCOMPARE(label.shown(), text(" a  \tb "));
}

void TestLabelText::replacesLoneSurrogates()
{
    const QString lone = QString(QChar(0xD83D)) + u'a' + QChar(0xDE00) + QChar(0xD83D);
    const LabelText label(lone, false);
    QCOMPARE(label.shown(), text("\uFFFDa\uFFFD\uFFFD"));
}

void TestLabelText::keepsPairsOfSurrogates()
{
    QCOMPARE(LabelText(text("\U0001F600"), true).shown(), text("\U0001F600"));
    QCOMPARE(LabelText(text("&\U0001F600"), true).mark(), -1);
}

void TestLabelText::showsTheBeginningOfAVeryLongCaption()
{
    const LabelText exact(QString(LabelText::MostCharacters, u'x'), true);
    QCOMPARE(exact.shown(), QString(LabelText::MostCharacters, u'x'));
    const LabelText longer(QString(LabelText::MostCharacters + 1, u'x'), true);
    QCOMPARE(longer.shown(), QString(LabelText::MostCharacters, u'x') + u'\u2026');
}

void TestLabelText::neverCutsAPairOfSurrogates()
{
    const LabelText label(u'x' + text("\U0001F600").repeated(LabelText::MostCharacters), false);
    QVERIFY(label.shown().chopped(1).isValidUtf16());
    QVERIFY(label.shown().size() <= LabelText::MostCharacters + 2);
}

void TestLabelText::measuresAMegabyteQuickly_data()
{
    QTest::addColumn<QString>("piece");
    QTest::newRow("one word") << text("x");
    QTest::newRow("words") << text("lorem ipsum ");
    QTest::newRow("lines") << text("\r\n");
    QTest::newRow("ampersands") << text("&");
    QTest::newRow("NUL") << QString(QChar());
    QTest::newRow("lone surrogates") << QString(QChar(0xDC00));
    QTest::newRow("combining marks") << text("\u0301");
    QTest::newRow("right to left") << text("שלום ");
    QTest::newRow("direction overrides") << text("\u202E");
}

void TestLabelText::measuresAMegabyteQuickly()
{
    QFETCH(QString, piece);
    const auto caption = piece.repeated(1024 * 1024 / piece.size());
    QElapsedTimer timer;
    timer.start();
    const LabelText label(caption, true);
    for (const auto wrap : {false, true}) {
        const TextBlock block(label, Pixels::font(), 200, wrap, LineAlignment::Center);
        QVERIFY(block.size().height() > 0);
        QVERIFY(block.size().width() <= 200);
    }
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
}

void TestLabelText::shortensOnlyLinesWithoutRoom()
{
    const LabelText label(text("fits\na line that has no room at all"), false);
    const TextBlock shortened(label, Pixels::font(), 100, false, LineAlignment::Left);
    QVERIFY(shortened.isElided());
    QVERIFY(shortened.size().width() <= 100);
    const TextBlock whole(label, Pixels::font(), 1000, false, LineAlignment::Left);
    QVERIFY(!whole.isElided());
    QCOMPARE(shortened.size().height(), whole.size().height());
}

void TestLabelText::keepsTheAccessKeyOfAShortenedText()
{
    const TextBlock block(LabelText(text("first\n&second line without room"), true), Pixels::font(),
                          80, false, LineAlignment::Left);
    QVERIFY(block.isElided());
    QCOMPARE(block.mark(), 6);
}

void TestLabelText::losesAnAccessKeyThatIsCutOff()
{
    const TextBlock block(LabelText(text("a line without any &room"), true), Pixels::font(), 80,
                          false, LineAlignment::Left);
    QVERIFY(block.isElided());
    QCOMPARE(block.mark(), -1);
}

void TestLabelText::measuresAnEmptyTextAsOneLineOfNoWidth()
{
    const TextBlock block({}, Pixels::font(), TextBlock::Unlimited, false, LineAlignment::Left);
    QCOMPARE(block.size().width(), 0);
    QCOMPARE(block.size().height(), qCeil(QFontMetricsF(Pixels::font()).height()));
}

QTEST_MAIN(TestLabelText)
#include "tst_label_text.moc"
