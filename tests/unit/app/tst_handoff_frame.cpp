#include "app/FrameReader.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Quorlin;
using State = FrameReader::State;

class HandoffFrameTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasTagThreeAndCountsTheZeroByte();
    void cutsToTheFirst2048Characters();
    void leavesNoHalfOfASurrogatePair();
    void keepsASurrogatePairThatFits();
    void keepsTextsThatAreNotAscii();
    void carriesTheLongestTextInEveryScript_data();
    void carriesTheLongestTextInEveryScript();
    void cutsATextAtItsFirstZero();
    void cutsWhatAForeignSenderMadeTooLong();
    void readsAFrameInPiecesOfAnySize();
    void dropsWhatFollowsAFrame();
    void doesNotLookAtTheTag();
    void refusesGarbageAtItsFirstByte();
    void refusesHeadsThatDoNotHold_data();
    void refusesHeadsThatDoNotHold();
    void staysIncompleteForHalfAFrame();
    void bearsRandomBytes();
    void leavesOutTokensThatCannotBeOne_data();
    void leavesOutTokensThatCannotBeOne();
};

namespace {

QByteArray withByte(QByteArray bytes, qsizetype position, char byte)
{
    bytes[position] = byte;
    return bytes;
}

State stateOf(const QByteArray &bytes)
{
    FrameReader reader;
    return reader.add(bytes.constData(), bytes.size());
}

/// What arrives of a text.
QString sent(const QString &text)
{
    const auto bytes = HandoffFrame::ofText(text).encoded();
    FrameReader reader;
    reader.add(bytes.constData(), bytes.size());
    return reader.state() == State::Complete ? reader.frame().text() : QStringLiteral("(broken)");
}

} // namespace

void HandoffFrameTest::hasTagThreeAndCountsTheZeroByte()
{
    const auto bytes = HandoffFrame::ofText(QStringLiteral("a.doc")).encoded();
    QCOMPARE(bytes, QByteArray("QRLN\1\0\1\0\3\0\0\0\6\0\0\0a.doc\0", 22));
}

void HandoffFrameTest::cutsToTheFirst2048Characters()
{
    QString text;
    for (int index = 0; index < 3000; ++index)
        text.append(QChar(u'a' + index % 26));
    QCOMPARE(sent(text), text.left(2048));
    QCOMPARE(sent(text.left(2048)), text.left(2048));
}

void HandoffFrameTest::leavesNoHalfOfASurrogatePair()
{
    const auto text = QString(2047, QLatin1Char('a')) + QStringLiteral("😀b");
    QCOMPARE(sent(text), QString(2047, QLatin1Char('a')));
}

void HandoffFrameTest::keepsASurrogatePairThatFits()
{
    const auto text = QString(2046, QLatin1Char('a')) + QStringLiteral("😀");
    QCOMPARE(sent(text + QStringLiteral("b")), text);
}

void HandoffFrameTest::keepsTextsThatAreNotAscii()
{
    const auto text = QStringLiteral("/d/Übersicht, 第一章 😀.doc");
    QCOMPARE(sent(text), text);
}

void HandoffFrameTest::carriesTheLongestTextInEveryScript_data()
{
    QTest::addColumn<QString>("letter");
    QTest::newRow("one byte") << "a";
    QTest::newRow("two bytes") << QStringLiteral("é");
    QTest::newRow("three bytes") << QStringLiteral("第");
    QTest::newRow("four bytes") << QStringLiteral("😀");
    QTest::newRow("half a pair") << QString(QChar(0xD83D));
}

void HandoffFrameTest::carriesTheLongestTextInEveryScript()
{
    QFETCH(const QString, letter);
    const auto text = letter.repeated(3000);
    const auto arrived = sent(text);
    QCOMPARE(arrived.size(), 2048);
    QCOMPARE(arrived, QString::fromUtf8(text.left(2048).toUtf8()));
}

void HandoffFrameTest::cutsATextAtItsFirstZero()
{
    QCOMPARE(sent(QStringLiteral("a.doc") + QChar(0) + QStringLiteral("b.doc")),
             QStringLiteral("a.doc"));
    QCOMPARE(sent(QString(1, QChar(0))), QString());
}

void HandoffFrameTest::cutsWhatAForeignSenderMadeTooLong()
{
    const HandoffFrame frame{HandoffFrame::Kind::Text, 3, QByteArray(6000, 'x')};
    const auto bytes = frame.encoded();
    FrameReader reader;
    QCOMPARE(reader.add(bytes.constData(), bytes.size()), State::Complete);
    QCOMPARE(reader.frame().text(), QString(2048, QLatin1Char('x')));
}

void HandoffFrameTest::readsAFrameInPiecesOfAnySize()
{
    const auto bytes = HandoffFrame::ofText(QStringLiteral("/d/ä.doc,/d/b.doc")).encoded();
    for (qsizetype piece = 1; piece <= bytes.size(); ++piece) {
        FrameReader reader;
        for (qsizetype from = 0; from < bytes.size(); from += piece) {
            QCOMPARE(reader.state(), State::Incomplete);
            reader.add(bytes.constData() + from, std::min(piece, bytes.size() - from));
        }
        QCOMPARE(reader.state(), State::Complete);
        QCOMPARE(reader.frame().text(), QStringLiteral("/d/ä.doc,/d/b.doc"));
    }
}

void HandoffFrameTest::dropsWhatFollowsAFrame()
{
    const auto one = HandoffFrame::ofText(QStringLiteral("a")).encoded();
    const auto bytes = one + HandoffFrame::ofText(QStringLiteral("b")).encoded();
    FrameReader reader;
    QCOMPARE(reader.add(bytes.constData(), bytes.size()), State::Complete);
    QCOMPARE(reader.add(bytes.constData(), bytes.size()), State::Complete);
    QCOMPARE(reader.frame().text(), QStringLiteral("a"));
}

/// The tag says nothing to a receiver, although every sender writes 3.
void HandoffFrameTest::doesNotLookAtTheTag()
{
    const auto bytes = withByte(HandoffFrame::ofText(QStringLiteral("a")).encoded(), 8, 99);
    FrameReader reader;
    QCOMPARE(reader.add(bytes.constData(), bytes.size()), State::Complete);
    QCOMPARE(reader.frame().tag, 99U);
    QCOMPARE(reader.frame().text(), QStringLiteral("a"));
}

void HandoffFrameTest::refusesGarbageAtItsFirstByte()
{
    QCOMPARE(stateOf("G"), State::Garbage);
    QCOMPARE(stateOf("QRLX"), State::Garbage);
    QCOMPARE(stateOf("QRLN"), State::Incomplete);
    FrameReader reader;
    QCOMPARE(reader.add("GET / HTTP/1.1", 14), State::Garbage);
    QCOMPARE(reader.add("QRLN", 4), State::Garbage);
}

void HandoffFrameTest::refusesHeadsThatDoNotHold_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto good = HandoffFrame::ofText(QStringLiteral("a")).encoded();
    QTest::newRow("version 0") << withByte(good, 4, 0);
    QTest::newRow("version 2") << withByte(good, 4, 2);
    QTest::newRow("version 257") << withByte(good, 5, 1);
    QTest::newRow("kind 0") << withByte(good, 6, 0);
    QTest::newRow("kind 3") << withByte(good, 6, 3);
    QTest::newRow("count 0") << withByte(good, 12, 0);
    QTest::newRow("count 6146") << withByte(withByte(good, 12, 0x02), 13, 0x18);
    QTest::newRow("count 2 GB") << withByte(good, 15, 0x7F);
    QTest::newRow("count 4 GB") << good.left(12) + QByteArray(4, '\xFF');
    QTest::newRow("token of 6145 bytes") << withByte(withByte(good, 6, 2), 13, 0x18);
}

void HandoffFrameTest::refusesHeadsThatDoNotHold()
{
    QFETCH(const QByteArray, bytes);
    QCOMPARE(stateOf(bytes.left(HandoffFrame::HeadBytes)), State::Garbage);
}

void HandoffFrameTest::staysIncompleteForHalfAFrame()
{
    const auto bytes = HandoffFrame::ofText(QStringLiteral("a.doc")).encoded();
    for (qsizetype size = 0; size < bytes.size(); ++size)
        QCOMPARE(stateOf(bytes.left(size)), State::Incomplete);
}

void HandoffFrameTest::bearsRandomBytes()
{
    QRandomGenerator random(1);
    int complete = 0;
    for (int round = 0; round < 20000; ++round) {
        auto bytes = HandoffFrame::ofText(QString(random.bounded(8), QLatin1Char('x'))).encoded();
        for (auto changes = random.bounded(4); changes > 0; --changes)
            bytes[random.bounded(bytes.size())] = static_cast<char>(random.bounded(256));
        FrameReader reader;
        complete += reader.add(bytes.constData(), bytes.size()) == State::Complete ? 1 : 0;
        QVERIFY(reader.frame().bytes.size() <= 6145);
        QVERIFY(reader.frame().text().size() <= HandoffFrame::MostCharacters);
    }
    QVERIFY2(complete > 100 && complete < 19900, "the bytes were not near enough to frames");
}

void HandoffFrameTest::leavesOutTokensThatCannotBeOne_data()
{
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<QByteArray>("kept");
    QTest::newRow("none") << QByteArray("") << QByteArray("");
    QTest::newRow("usual") << QByteArray("gnome-shell/a-1_TIME42")
                           << QByteArray("gnome-shell/a-1_TIME42");
    QTest::newRow("longest") << QByteArray(256, 'a') << QByteArray(256, 'a');
    QTest::newRow("too long") << QByteArray(257, 'a') << QByteArray("");
    QTest::newRow("control character") << QByteArray("a\nb") << QByteArray("");
    QTest::newRow("not ASCII") << QByteArray("\xC3\xA9") << QByteArray("");
    QTest::newRow("space") << QByteArray("a b") << QByteArray("");
}

void HandoffFrameTest::leavesOutTokensThatCannotBeOne()
{
    QFETCH(const QByteArray, token);
    QFETCH(const QByteArray, kept);
    QCOMPARE(HandoffFrame::ofActivation(token).token(), kept);
    const HandoffFrame foreign{HandoffFrame::Kind::Activate, 0, token + '\0'};
    QCOMPARE(foreign.token(), kept);
}

QTEST_GUILESS_MAIN(HandoffFrameTest)
#include "tst_handoff_frame.moc"
