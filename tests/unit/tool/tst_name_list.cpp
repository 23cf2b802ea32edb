#include "tool/FileNames.h"
#include "tool/NameList.h"

#include <QTest>

using namespace Quorlin;
using Separator = NameList::Separator;

class tst_name_list : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesAreTakenApart_data();
    void namesAreTakenApart();
    void aLongNameIsTakenWhole();
    void aNameThatNeverEndsIsRefusedEarly_data();
    void aNameThatNeverEndsIsRefusedEarly();
    void nulInALineIsRefused();
    void linesAreNoListOfNul();
    void namesThatNeverEndAreRefused();
    void namesThatAreNotUtf8AreKept();
};

void tst_name_list::namesAreTakenApart_data()
{
    QTest::addColumn<bool>("nul");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char *what, bool nul, const QByteArray &bytes,
                        const QStringList &names) { QTest::newRow(what) << nul << bytes << names; };
    const QStringList ab{QStringLiteral("a"), QStringLiteral("b")};
    row("nothing", false, "", {});
    row("lines", false, "a\nb\n", ab);
    row("no last line feed", false, "a\nb", ab);
    row("CRLF", false, "a\r\nb\r\n", ab);
    row("CR at the end", false, "a\nb\r", ab);
    row("empty lines", false, "\n\na\n\r\n\nb\n\n", ab);
    row("byte-order mark", false,
        "\xEF\xBB\xBF"
        "a\nb",
        ab);
    row("only a byte-order mark", false, "\xEF\xBB\xBF\n", {});
    row("spaces stay", false, " a \n", {QStringLiteral(" a ")});
    row("no options", false, "-q\n--help\n-\n",
        {QStringLiteral("-q"), QStringLiteral("--help"), QStringLiteral("-")});
    row("other scripts", false, "文書.odt\nÜ.odt",
        {QStringLiteral("文書.odt"), QStringLiteral("Ü.odt")});
    row("NUL", true, QByteArray("a\0b\0", 4), ab);
    row("no last NUL", true, QByteArray("a\0b", 3), ab);
    row("empty names", true, QByteArray("\0\0a\0\0b\0", 7), ab);
    row("NUL keeps all else", true, QByteArray("a\r\n\0\n\0", 6),
        {QStringLiteral("a\r\n"), QStringLiteral("\n")});
}

void tst_name_list::namesAreTakenApart()
{
    QFETCH(const bool, nul);
    QFETCH(const QByteArray, bytes);
    for (const int size : {1, 2, 3, 100}) {
        NameList list(nul ? Separator::Nul : Separator::LineFeed);
        for (qsizetype i = 0; i < bytes.size(); i += size)
            QVERIFY(list.add(bytes.mid(i, size)));
        QVERIFY(list.end());
        QTEST(list.names(), "names");
    }
}

void tst_name_list::aLongNameIsTakenWhole()
{
    NameList list(Separator::LineFeed);
    QVERIFY(list.add(QByteArray(NameList::MostBytes, 'x')));
    QVERIFY(list.end());
    QCOMPARE(list.names().first().size(), NameList::MostBytes);
}

void tst_name_list::aNameThatNeverEndsIsRefusedEarly_data()
{
    QTest::addColumn<bool>("nul");
    QTest::newRow("lines") << false;
    QTest::newRow("NUL") << true;
}

void tst_name_list::aNameThatNeverEndsIsRefusedEarly()
{
    QFETCH(const bool, nul);
    NameList list(nul ? Separator::Nul : Separator::LineFeed);
    int pieces = 0;
    while (pieces < 1000 && list.add(QByteArray(1024, 'x')))
        ++pieces;
    QCOMPARE(pieces, NameList::MostBytes / 1024);
    QVERIFY(list.error().contains(QString::number(NameList::MostBytes)));
    QVERIFY(list.names().isEmpty());
}

void tst_name_list::nulInALineIsRefused()
{
    NameList list(Separator::LineFeed);
    QVERIFY(!list.add(QByteArray("a\0b\n", 4)));
    QVERIFY(list.error().contains(QStringLiteral("--null")));
}

void tst_name_list::linesAreNoListOfNul()
{
    NameList list(Separator::Nul);
    QVERIFY(list.add("a.odt\nb.odt\n"));
    QVERIFY(!list.end());
    QVERIFY(list.error().contains(QStringLiteral("--null")));
}

void tst_name_list::namesThatNeverEndAreRefused()
{
    NameList list(Separator::LineFeed);
    const auto piece = QByteArray("y\n").repeated(10'000);
    int pieces = 0;
    while (pieces < 1000 && list.add(piece))
        ++pieces;
    QCOMPARE(pieces, NameList::MostNames / 10'000);
    QVERIFY(list.error().contains(QStringLiteral("1000000")));
}

void tst_name_list::namesThatAreNotUtf8AreKept()
{
    NameList list(Separator::LineFeed);
    QVERIFY(list.add("\xff.odt\na.odt\n"));
    QCOMPARE(list.names().size(), 2);
    QVERIFY(!FileNames::isUtf8(list.names().first()));
}

QTEST_GUILESS_MAIN(tst_name_list)
#include "tst_name_list.moc"
