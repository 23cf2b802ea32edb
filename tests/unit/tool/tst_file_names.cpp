#include "tool/FileNames.h"

#include <QTest>

using namespace Quorlin;

class tst_file_names : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void utf8IsReadAsItIs_data();
    void utf8IsReadAsItIs();
    void otherBytesAreKeptApart_data();
    void otherBytesAreKeptApart();
    void differentBytesAreDifferentNames();
    void aNameCountsFromItsFolder_data();
    void aNameCountsFromItsFolder();
};

void tst_file_names::aNameCountsFromItsFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    QTest::newRow("relative") << "a.odt"
                              << "/d/a.odt";
    QTest::newRow("upwards") << "../a.odt"
                             << "/a.odt";
    QTest::newRow("full") << "/e//a.odt"
                          << "/e/a.odt";
    QTest::newRow("colon") << ":a.odt"
                           << "/d/:a.odt";
    QTest::newRow("colon and slash") << ":/a.odt"
                                     << "/d/:/a.odt";
}

void tst_file_names::aNameCountsFromItsFolder()
{
    QFETCH(const QString, name);
    QFETCH(const QString, path);
    QCOMPARE(FileNames::fullPath(name, QStringLiteral("/d")), path);
}

void tst_file_names::utf8IsReadAsItIs_data()
{
    QTest::addColumn<QString>("name");
    for (const auto *name :
         {"", "a.odt", "Übung 文書.odt", "👩‍👩‍👧.odt", "\uFFFD.odt", "two\nlines"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void tst_file_names::utf8IsReadAsItIs()
{
    QFETCH(const QString, name);
    QCOMPARE(FileNames::fromBytes(name.toUtf8()), name);
    QVERIFY(FileNames::isUtf8(name));
    QCOMPARE(FileNames::legible(name), name);
}

void tst_file_names::otherBytesAreKeptApart_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("legible");
    QTest::newRow("Latin-1") << QByteArray("b\xfc"
                                           "cher.odt")
                             << QStringLiteral("b\uFFFDcher.odt");
    QTest::newRow("cut off") << QByteArray("\xe6\x96") << QStringLiteral("\uFFFD\uFFFD");
    QTest::newRow("overlong") << QByteArray("\xc0\xaf") << QStringLiteral("\uFFFD\uFFFD");
    QTest::newRow("surrogate") << QByteArray("\xed\xb0\x80") << QString(3, QChar(0xFFFD));
}

void tst_file_names::otherBytesAreKeptApart()
{
    QFETCH(const QByteArray, bytes);
    const auto name = FileNames::fromBytes(bytes);
    QVERIFY(!FileNames::isUtf8(name));
    QTEST(FileNames::legible(name), "legible");
}

void tst_file_names::differentBytesAreDifferentNames()
{
    QVERIFY(FileNames::fromBytes("\xff.odt") != FileNames::fromBytes("\xfe.odt"));
    QVERIFY(FileNames::fromBytes("\xff.odt") != FileNames::fromBytes("\xef\xbf\xbd.odt"));
}

QTEST_GUILESS_MAIN(tst_file_names)
#include "tst_file_names.moc"
