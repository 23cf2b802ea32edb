#include "component/protocol/Message.h"

#include <QJsonArray>
#include <QTest>

using namespace Quorlin;

class TestMessage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMessageIsOneLine();
    void comesBackAsItWas();
    void keepsEveryCharacterOfAFileName();
    void takesWhiteSpaceAround();
    void refusesWhatIsNoObject_data();
    void refusesWhatIsNoObject();
    void refusesNestingWithoutEnd();
    void takesNestingWithinReason();
    void theLastOfTwoMembersOfOneNameCounts();
};

void TestMessage::aMessageIsOneLine()
{
    const auto line = Message::encode({{QStringLiteral("text"), QStringLiteral("a\nb\r\nc")}});
    QCOMPARE(line, QByteArray("{\"text\":\"a\\nb\\r\\nc\"}\n"));
}

void TestMessage::comesBackAsItWas()
{
    const QJsonObject message{{QStringLiteral("job"), 7},
                              {QStringLiteral("success"), true},
                              {QStringLiteral("duration"), 1.25},
                              {QStringLiteral("outputs"), QJsonArray{QStringLiteral("/d/a.ps~")}}};
    QCOMPARE(Message::decode(Message::encode(message)), message);
}

void TestMessage::keepsEveryCharacterOfAFileName()
{
    const auto name = QStringLiteral("/d/\"übung\", \\ 文書 \U0001F4C4\t\n\u0001.docx");
    const QJsonObject message{{QStringLiteral("file"), name}};
    const auto back = Message::decode(Message::encode(message));
    QVERIFY(back);
    QCOMPARE(back->value(QLatin1String("file")).toString(), name);
}

void TestMessage::takesWhiteSpaceAround()
{
    const auto message = Message::decode("  {\"a\" : 1 } \t");
    QVERIFY(message);
    QCOMPARE(message->value(QLatin1String("a")).toInt(), 1);
}

void TestMessage::refusesWhatIsNoObject_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("blanks") << QByteArray("   ");
    QTest::newRow("words") << QByteArray("Hello there");
    QTest::newRow("array") << QByteArray("[{\"type\":\"print\"}]");
    QTest::newRow("string") << QByteArray("\"print\"");
    QTest::newRow("number") << QByteArray("42");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("not ended") << QByteArray("{\"type\":\"print\"");
    QTest::newRow("two objects") << QByteArray("{}{}");
    QTest::newRow("text after it") << QByteArray("{} end");
    QTest::newRow("member without a name") << QByteArray("{:1}");
    QTest::newRow("comma at the end") << QByteArray("{\"a\":1,}");
    QTest::newRow("not UTF-8") << QByteArray("{\"file\":\"\xff\xfe\x80\"}");
    QTest::newRow("Latin-1") << QByteArray("{\"file\":\"\xfc.docx\"}");
    QTest::newRow("bytes of value zero") << QByteArray("{\0\0}", 4);
    QTest::newRow("a binary file's beginning") << QByteArray("PK\x03\x04\x14\x00\x06\x00", 8);
}

void TestMessage::refusesWhatIsNoObject()
{
    QFETCH(const QByteArray, line);
    QVERIFY(!Message::decode(line));
}

void TestMessage::refusesNestingWithoutEnd()
{
    constexpr int Deep = 1'000'000;
    QVERIFY(!Message::decode("{\"a\":" + QByteArray(Deep, '[') + QByteArray(Deep, ']') + '}'));
    QVERIFY(!Message::decode(QByteArray("{\"a\":").repeated(Deep)));
}

void TestMessage::takesNestingWithinReason()
{
    constexpr int Deep = 100;
    QVERIFY(Message::decode("{\"a\":" + QByteArray(Deep, '[') + QByteArray(Deep, ']') + '}'));
}

void TestMessage::theLastOfTwoMembersOfOneNameCounts()
{
    const auto message = Message::decode("{\"job\":1,\"job\":2}");
    QVERIFY(message);
    QCOMPARE(message->value(QLatin1String("job")).toInt(), 2);
}

QTEST_GUILESS_MAIN(TestMessage)
#include "tst_message.moc"
