#include "skin/LeadingNumber.h"

#include <QTest>

using Quorlin::leadingNumber;

class TestLeadingNumber : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheNumberThatATextStartsWith_data();
    void readsTheNumberThatATextStartsWith();
    void readsAVeryLongNumber();
};

void TestLeadingNumber::readsTheNumberThatATextStartsWith_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    const auto row = [](const char *name, const char *text, int number) {
        QTest::newRow(name) << QString::fromLatin1(text) << number;
    };
    row("plain", "421", 421);
    row("leading blanks", " \t 17", 17);
    row("plus", "+17", 17);
    row("minus", "-17", -17);
    row("two signs", "--17", 0);
    row("unit behind", "18px", 18);
    row("second number behind", "18 19", 18);
    row("no number", "px18", 0);
    row("empty", "", 0);
    row("sign alone", "-", 0);
    row("point alone", ".", 0);
    row("comma is no point", "3,9", 3);
    row("point first", ".9", 1);
    row("point last", "9.", 9);
    row("two points", "1.6.9", 2);
    row("half to even, down", "2.5", 2);
    row("half to even, up", "3.5", 4);
    row("negative half to even", "-2.5", -2);
    row("small half is nothing", "0.5", 0);
    row("above half", "2.51", 3);
    row("exponent", "1.5e2", 150);
    row("exponent of the other letter", "15D1", 150);
    row("negative exponent", "1500E-1", 150);
    row("signed exponent", "15e+1", 150);
    row("exponent without digits", "15ex", 15);
    row("exponent with sign alone", "15e-", 15);
    row("largest", "32767", 32767);
    row("smallest", "-32768", -32768);
    row("rounds to the largest", "32767.4", 32767);
    row("rounds out of range", "32767.5", 0);
    row("too large", "32768", 0);
    row("too small", "-32769", 0);
    row("huge exponent", "1e999999999999", 0);
    row("tiny exponent", "1e-999999999999", 0);
    row("words of numbers", "infinity", 0);
    row("not a number", "nan", 0);
    row("hexadecimal is none", "0x10", 0);
    row("other digits", "\xB2", 0);
}

void TestLeadingNumber::readsTheNumberThatATextStartsWith()
{
    QFETCH(const QString, text);
    QTEST(int(leadingNumber(text)), "number");
}

void TestLeadingNumber::readsAVeryLongNumber()
{
    QCOMPARE(leadingNumber(QString(100000, QLatin1Char('9'))), 0);
    QCOMPARE(leadingNumber(QString(100000, QLatin1Char('0')) + QLatin1String("7")), 7);
}

QTEST_GUILESS_MAIN(TestLeadingNumber)
#include "tst_leadingnumber.moc"
