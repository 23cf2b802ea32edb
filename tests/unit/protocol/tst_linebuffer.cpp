#include "component/protocol/LineBuffer.h"

#include <QTest>

using namespace Quorlin;

namespace {

constexpr int Limit = 8;

/// All lines that are whole by now.
QList<QByteArray> takeAll(LineBuffer &buffer)
{
    QList<QByteArray> lines;
    while (const auto line = buffer.takeLine())
        lines.append(*line);
    return lines;
}

} // namespace

class TestLineBuffer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void joinsPiecesIntoALine();
    void keepsAnUnfinishedLineUntilItsEndComes();
    void givesSeveralLinesOfOnePiece();
    void takesCarriageReturnAndLineFeedAsOneEnd();
    void takesTheTwoBytesOfALineEndInTwoPieces();
    void keepsCarriageReturnsInsideALine();
    void givesEmptyLines();
    void keepsBytesThatAreNoText();
    void keepsALineAsLongAsTheLimit_data();
    void keepsALineAsLongAsTheLimit();
    void dropsALineThatIsTooLong_data();
    void dropsALineThatIsTooLong();
    void tellsADroppedLineOnce();
    void doesNotStoreALineThatIsTooLong();
    void readsByteByByteAsInOnePiece();
};

void TestLineBuffer::joinsPiecesIntoALine()
{
    LineBuffer buffer(Limit);
    buffer.append("ab");
    buffer.append("cd");
    buffer.append("e\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>{"abcde"});
}

void TestLineBuffer::keepsAnUnfinishedLineUntilItsEndComes()
{
    LineBuffer buffer(Limit);
    buffer.append("one\ntw");
    QCOMPARE(takeAll(buffer), QList<QByteArray>{"one"});
    QCOMPARE(takeAll(buffer), QList<QByteArray>{});
    buffer.append("o\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>{"two"});
}

void TestLineBuffer::givesSeveralLinesOfOnePiece()
{
    LineBuffer buffer(Limit);
    buffer.append("one\ntwo\nthree\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>({"one", "two", "three"}));
}

void TestLineBuffer::takesCarriageReturnAndLineFeedAsOneEnd()
{
    LineBuffer buffer(Limit);
    buffer.append("one\r\ntwo\r\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>({"one", "two"}));
}

void TestLineBuffer::takesTheTwoBytesOfALineEndInTwoPieces()
{
    LineBuffer buffer(Limit);
    buffer.append("one\r");
    QCOMPARE(takeAll(buffer), QList<QByteArray>{});
    buffer.append("\ntwo\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>({"one", "two"}));
}

void TestLineBuffer::keepsCarriageReturnsInsideALine()
{
    LineBuffer buffer(Limit);
    buffer.append("a\rb\r\r\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>{"a\rb\r"});
}

void TestLineBuffer::givesEmptyLines()
{
    LineBuffer buffer(Limit);
    buffer.append("\n\r\n\na\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>({"", "", "", "a"}));
}

void TestLineBuffer::keepsBytesThatAreNoText()
{
    LineBuffer buffer(Limit);
    const QByteArray bytes("\0\xff\x80\n", 4);
    buffer.append(bytes);
    QCOMPARE(takeAll(buffer), QList<QByteArray>{bytes.left(3)});
}

void TestLineBuffer::keepsALineAsLongAsTheLimit_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::addColumn<QByteArray>("rest");
    QTest::newRow("whole") << QByteArray("12345678\n") << QByteArray();
    QTest::newRow("its end comes later") << QByteArray("12345678") << QByteArray("\n");
    QTest::newRow("two bytes as its end") << QByteArray("12345678\r\n") << QByteArray();
    QTest::newRow("two bytes, in pieces") << QByteArray("12345678\r") << QByteArray("\n");
}

void TestLineBuffer::keepsALineAsLongAsTheLimit()
{
    QFETCH(const QByteArray, piece);
    QFETCH(const QByteArray, rest);
    LineBuffer buffer(Limit);
    buffer.append(piece);
    auto lines = takeAll(buffer);
    buffer.append(rest);
    lines += takeAll(buffer);
    QCOMPARE(lines, QList<QByteArray>{"12345678"});
    QVERIFY(!buffer.takeOverflow());
}

void TestLineBuffer::dropsALineThatIsTooLong_data()
{
    QTest::addColumn<QList<QByteArray>>("pieces");
    QTest::newRow("in one piece") << QList<QByteArray>{"123456789\nnext\n"};
    QTest::newRow("its end comes later") << QList<QByteArray>{"123456789", "\nnext\n"};
    QTest::newRow("it goes on and on")
        << QList<QByteArray>{"123456789ab", "cdefghijklmn", "op\nnext\n"};
    QTest::newRow("with two bytes as its end") << QList<QByteArray>{"123456789\r\nnext\r\n"};
}

void TestLineBuffer::dropsALineThatIsTooLong()
{
    QFETCH(const QList<QByteArray>, pieces);
    LineBuffer buffer(Limit);
    QList<QByteArray> lines;
    for (const auto &piece : pieces) {
        buffer.append(piece);
        lines += takeAll(buffer);
    }
    QCOMPARE(lines, QList<QByteArray>{"next"});
    QVERIFY(buffer.takeOverflow());
}

void TestLineBuffer::tellsADroppedLineOnce()
{
    LineBuffer buffer(Limit);
    QVERIFY(!buffer.takeOverflow());
    buffer.append("123456789");
    QCOMPARE(takeAll(buffer), QList<QByteArray>{});
    QVERIFY(buffer.takeOverflow());
    buffer.append("0\nnext\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>{"next"});
    QVERIFY(!buffer.takeOverflow());
}

void TestLineBuffer::doesNotStoreALineThatIsTooLong()
{
    LineBuffer buffer(Limit);
    const QByteArray much(1 << 20, 'x');
    for (int i = 0; i < 4096; ++i) { // four gigabytes would not fit everywhere
        buffer.append(much);
        QVERIFY(!buffer.takeLine());
    }
    buffer.append("\nnext\n");
    QCOMPARE(takeAll(buffer), QList<QByteArray>{"next"});
}

void TestLineBuffer::readsByteByByteAsInOnePiece()
{
    const QByteArray text("{\"a\":1}\r\n\n123456789012\nend\n");
    LineBuffer whole(Limit), pieces(Limit);
    whole.append(text);
    QList<QByteArray> lines;
    for (const char byte : text) {
        pieces.append(QByteArrayView(&byte, 1));
        lines += takeAll(pieces);
    }
    QCOMPARE(lines, takeAll(whole));
    QCOMPARE(lines, QList<QByteArray>({"{\"a\":1}", "", "end"}));
}

QTEST_GUILESS_MAIN(TestLineBuffer)
#include "tst_linebuffer.moc"
