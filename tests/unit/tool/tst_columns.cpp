#include "tool/Columns.h"

#include <QTest>

using namespace Quorlin;

class tst_columns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void charactersTakeTheirColumns_data();
    void charactersTakeTheirColumns();
    void textsAreFilledUp();
    void longTextsLoseTheirMiddle_data();
    void longTextsLoseTheirMiddle();
    void sentencesLoseTheirEnd();
    void nothingIsWiderThanItsRoom();
    void marksStayWithTheirLetters();
};

void tst_columns::charactersTakeTheirColumns_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    const auto row = [](const char *what, const char *text, int width) {
        QTest::newRow(what) << QString::fromUtf8(text) << width;
    };
    row("nothing", "", 0);
    row("letters", "report.odt", 10);
    row("Chinese", "文書", 4);
    row("Korean", "보고서", 6);
    row("fullwidth", "Ａ１", 4);
    row("halfwidth", "ｱｲ", 2);
    row("combining mark", "u\u0308ber", 4);
    row("composed", "über", 4);
    row("Thai", "ที่", 1);
    row("emoji", "📄", 2);
}

void tst_columns::charactersTakeTheirColumns()
{
    QFETCH(const QString, text);
    QTEST(Columns::widthOf(text), "width");
}

void tst_columns::textsAreFilledUp()
{
    QCOMPARE(Columns::padded(QStringLiteral("文"), 4), QStringLiteral("文  "));
    QCOMPARE(Columns::padded(QStringLiteral("u\u0308"), 2), QStringLiteral("u\u0308 "));
    QCOMPARE(Columns::padded(QStringLiteral("long"), 2), QStringLiteral("long"));
}

void tst_columns::longTextsLoseTheirMiddle_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("room");
    QTest::addColumn<QString>("shortened");
    const auto row = [](const char *text, int room, const char *shortened) {
        QTest::newRow(shortened) << QString::fromUtf8(text) << room << QString::fromUtf8(shortened);
    };
    row("report.odt", 10, "report.odt");
    row("a long report.odt", 10, "a lon….odt");
    row("文書文書文書.odt", 10, "文書….odt");
    row("文書文書文書文書", 7, "文書…書");
    row("ab", 1, "…");
}

void tst_columns::longTextsLoseTheirMiddle()
{
    QFETCH(const QString, text);
    QFETCH(const int, room);
    QTEST(Columns::shortened(text, room), "shortened");
}

void tst_columns::sentencesLoseTheirEnd()
{
    QCOMPARE(Columns::cut(QStringLiteral("it is gone"), 10), QStringLiteral("it is gone"));
    QCOMPARE(Columns::cut(QStringLiteral("it is gone"), 6), QStringLiteral("it is…"));
    QCOMPARE(Columns::cut(QStringLiteral("文書文書"), 6), QStringLiteral("文書…"));
}

void tst_columns::nothingIsWiderThanItsRoom()
{
    const auto text = QString::fromUtf8("a文u\u0308b보📄c書d").repeated(3);
    for (int room = 1; room < 50; ++room)
        QVERIFY(Columns::widthOf(Columns::shortened(text, room)) <= room &&
                Columns::widthOf(Columns::cut(text, room)) <= room);
}

void tst_columns::marksStayWithTheirLetters()
{
    const auto text = QString::fromUtf8("u\u0308").repeated(10);
    for (int room = 3; room < 10; ++room) {
        const auto halves = Columns::shortened(text, room).split(QStringLiteral("…"));
        QCOMPARE(halves.size(), 2);
        for (const auto &half : halves)
            QCOMPARE(half, QString::fromUtf8("u\u0308").repeated(half.size() / 2));
    }
}

QTEST_GUILESS_MAIN(tst_columns)
#include "tst_columns.moc"
