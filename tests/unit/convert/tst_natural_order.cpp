#include "convert/NaturalOrder.h"

#include <QStringList>
#include <QTest>

#include <algorithm>

using namespace Quorlin;

class tst_natural_order : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesAreSortedAsPeopleDo_data();
    void namesAreSortedAsPeopleDo();
    void theOrderIsTotal();
};

void tst_natural_order::namesAreSortedAsPeopleDo_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::newRow("numbers") << QStringLiteral("a2.txt") << QStringLiteral("a10.txt");
    QTest::newRow("case") << QStringLiteral("b") << QStringLiteral("C");
    QTest::newRow("prefix") << QStringLiteral("a") << QStringLiteral("a1");
    QTest::newRow("empty") << QString() << QStringLiteral("a");
    QTest::newRow("huge") << QStringLiteral("99999999999999999998")
                          << QStringLiteral("99999999999999999999");
    QTest::newRow("several") << QStringLiteral("1.9.1") << QStringLiteral("1.10.0");
    QTest::newRow("zeros") << QStringLiteral("a007") << QStringLiteral("a8");
}

void tst_natural_order::namesAreSortedAsPeopleDo()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QVERIFY(NaturalOrder::less(first, second));
    QVERIFY(!NaturalOrder::less(second, first));
}

void tst_natural_order::theOrderIsTotal()
{
    QVERIFY(!NaturalOrder::less(QStringLiteral("a1"), QStringLiteral("a1")));
    QVERIFY(NaturalOrder::less(QStringLiteral("A"), QStringLiteral("a")) !=
            NaturalOrder::less(QStringLiteral("a"), QStringLiteral("A")));
    QVERIFY(NaturalOrder::less(QStringLiteral("a1"), QStringLiteral("a01")) !=
            NaturalOrder::less(QStringLiteral("a01"), QStringLiteral("a1")));
}

QTEST_GUILESS_MAIN(tst_natural_order)
#include "tst_natural_order.moc"
