#include "convert/Documents.h"

#include <QTest>

using namespace Quorlin;

class tst_documents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFurtherTextsAreKept();
    void anItemIsACopy();
    void clearTellsEvenForAnEmptyList();
    void aLockedListDoesNotChangeAndDoesNotTell();
    void anOutputOutsideTheListIsIgnored();
};

void tst_documents::theFurtherTextsAreKept()
{
    Documents list;
    list.Add(QStringLiteral("a"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"));
    QCOMPARE(list.Item(1).text2(), QStringLiteral("2"));
    QCOMPARE(list.Item(1).text3(), QStringLiteral("3"));
    QCOMPARE(list.Item(1).text4(), QStringLiteral("4"));
}

void tst_documents::anItemIsACopy()
{
    Documents list;
    list.Add(QStringLiteral("a"));
    const auto before = list.Item(1);
    list.setOutputFilename(1, QStringLiteral("b"));
    QCOMPARE(before.OutputFilename(), QString());
    QCOMPARE(list.Item(1).OutputFilename(), QStringLiteral("b"));
    list.Clear();
    QCOMPARE(before.Filename(), QStringLiteral("a"));
}

void tst_documents::clearTellsEvenForAnEmptyList()
{
    int cleared = 0;
    Documents list([&cleared] { ++cleared; });
    list.Clear();
    QCOMPARE(cleared, 1);
}

void tst_documents::aLockedListDoesNotChangeAndDoesNotTell()
{
    int cleared = 0;
    Documents list([&cleared] { ++cleared; });
    list.Add(QStringLiteral("a"));
    list.setLocked(true);
    list.Add(QStringLiteral("b"));
    list.Clear();
    QCOMPARE(list.Count(), 1);
    QCOMPARE(cleared, 0);
    list.setLocked(false);
    list.Clear();
    QCOMPARE(list.Count(), 0);
    QCOMPARE(cleared, 1);
}

void tst_documents::anOutputOutsideTheListIsIgnored()
{
    Documents list;
    list.Add(QStringLiteral("a"));
    list.setOutputFilename(0, QStringLiteral("x"));
    list.setOutputFilename(2, QStringLiteral("x"));
    QCOMPARE(list.Count(), 1);
    QCOMPARE(list.Item(1).OutputFilename(), QString());
}

QTEST_GUILESS_MAIN(tst_documents)
#include "tst_documents.moc"
