#include "component/backends/postscript/ContentScanner.h"

#include <QTest>

using namespace Quorlin;

namespace {

QStringList operatorsOf(std::string_view content)
{
    QStringList list;
    ContentScanner scanner(content);
    while (scanner.next())
        list.append(
            QString::fromLatin1(scanner.op().data(), static_cast<int>(scanner.op().size())));
    return list;
}

} // namespace

class TestContentScanner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void operatorsComeInOrderWithTheirOperands()
    {
        ContentScanner scanner("q 1 0 0 +1.5 -.5 20 cm /Im#31 Do");
        QVERIFY(scanner.next());
        QVERIFY(scanner.op() == "q");
        QVERIFY(scanner.next());
        QVERIFY(scanner.op() == "cm");
        QCOMPARE(scanner.number(0), 20.0);
        QCOMPARE(scanner.number(1), -0.5);
        QCOMPARE(scanner.number(2), 1.5);
        QCOMPARE(scanner.number(5), 1.0);
        QVERIFY(scanner.next());
        QVERIFY(scanner.operand(0) == "/Im#31");
        QVERIFY(!scanner.next());
    }

    void stringsAndCommentsHoldNoOperators()
    {
        QCOMPARE(operatorsOf("(a \\) Q (b) Q) Tj % Q q\n<51> Tj [(Q) -2 <51>] TJ"),
                 QStringList({QStringLiteral("Tj"), QStringLiteral("Tj"), QStringLiteral("TJ")}));
    }

    void operatorsMayTouchTheirNeighbours()
    {
        QCOMPARE(operatorsOf("(a)Tj/GS0 gs[]0 d/Span<</ActualText<FEFF>>>BDC EMC"),
                 QStringList({QStringLiteral("Tj"), QStringLiteral("gs"), QStringLiteral("d"),
                              QStringLiteral("BDC"), QStringLiteral("EMC")}));
    }

    void inlineImagesAreSteppedOver()
    {
        QCOMPARE(operatorsOf("q BI /W 4 /H 1 /BPC 8 ID \x01 Q EI\x02 q\nEI Q"),
                 QStringList({QStringLiteral("q"), QStringLiteral("BI"), QStringLiteral("Q")}));
    }

    void brokenContentEndsQuietly_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("open string") << QByteArray("q (never ends");
        QTest::newRow("open hex string") << QByteArray("q <00");
        QTest::newRow("open image") << QByteArray("BI /W 1 ID \x01\x02");
        QTest::newRow("escape at the end") << QByteArray("(a\\");
    }

    void brokenContentEndsQuietly()
    {
        QFETCH(QByteArray, content);
        ContentScanner scanner(
            std::string_view(content.data(), static_cast<std::size_t>(content.size())));
        while (scanner.next()) {
        }
        QVERIFY(scanner.brokenOff());
    }

    void anyBytesAreSurvived()
    {
        std::string bytes;
        unsigned state = 1;
        for (int i = 0; i < 200000; ++i) {
            state = state * 1664525U + 1013904223U;
            bytes.push_back("()<>[]{}/%qQ BIDE\n\\#0."[(state >> 16) % 22]);
        }
        ContentScanner scanner(bytes);
        std::size_t last = 0;
        while (scanner.next()) {
            QVERIFY(scanner.end() > last);
            QVERIFY(scanner.begin() < scanner.end());
            last = scanner.end();
        }
    }
};

QTEST_APPLESS_MAIN(TestContentScanner)
#include "tst_content_scanner.moc"
