#include "i18n/LanguageFolder.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDirIterator>
#include <QTest>

using namespace Quorlin;

class tst_languagefolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutFolderThereAreNoLanguages();
    void withoutApplicationFolderThereAreNoLanguages();
    void aFileInPlaceOfTheFolderHoldsNoLanguages();
    void aNameEndsAtItsFirstPoint();
    void aNameMayComeTwice();
    void theEndOfTheNameCountsInAnyCase();
    void listsInTheOrderOfTheFileSystem();
    void listsOrdinaryFilesAndLinksToThemOnly();
    void findsAFileWithoutRegardToCaseButTheExactOneFirst();
    void findsNamesBeyondAscii();
    void aFileWithTwoPointsIsFoundByItsWholeNameOnly();
    void aNameDoesNotLeadOutOfTheFolder_data();
    void aNameDoesNotLeadOutOfTheFolder();

private:
    [[nodiscard]] static QStringList sorted(QStringList names);
};

namespace {

LanguageFolder languagesOf(const TestFolder &folder)
{
    return LanguageFolder(folder.path());
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

QStringList tst_languagefolder::sorted(QStringList names)
{
    names.sort();
    return names;
}

void tst_languagefolder::withoutFolderThereAreNoLanguages()
{
    const TestFolder folder;
    QVERIFY(languagesOf(folder).languages().isEmpty());
    QCOMPARE(languagesOf(folder).fileOf(text("fr")), QString());
}

void tst_languagefolder::withoutApplicationFolderThereAreNoLanguages()
{
    QVERIFY(LanguageFolder().languages().isEmpty());
    QCOMPARE(LanguageFolder().fileOf(text("fr")), QString());
}

void tst_languagefolder::aFileInPlaceOfTheFolderHoldsNoLanguages()
{
    const TestFolder folder;
    folder.write("language", "x");
    QVERIFY(languagesOf(folder).languages().isEmpty());
}

void tst_languagefolder::aNameEndsAtItsFirstPoint()
{
    const TestFolder folder;
    folder.write("language/fr.old.slg", {});
    QCOMPARE(languagesOf(folder).languages(), QStringList(text("fr")));
}

void tst_languagefolder::aNameMayComeTwice()
{
    const TestFolder folder;
    folder.write("language/fr.slg", {});
    folder.write("language/fr.old.slg", {});
    QCOMPARE(languagesOf(folder).languages(), QStringList({text("fr"), text("fr")}));
}

void tst_languagefolder::theEndOfTheNameCountsInAnyCase()
{
    const TestFolder folder;
    for (const auto *name : {"language/a.SLG", "language/b.Slg", "language/c.slg",
                             "language/d.slg2", "language/e.txt", "language/fslg"})
        folder.write(name, {});
    QCOMPARE(sorted(languagesOf(folder).languages()),
             QStringList({text("a"), text("b"), text("c")}));
    QCOMPARE(languagesOf(folder).fileOf(text("a")), folder.path("language/a.SLG"));
}

void tst_languagefolder::listsInTheOrderOfTheFileSystem()
{
    const TestFolder folder;
    for (const auto *name : {"z", "b", "y", "a", "x", "c", "m", "k"})
        folder.write((QByteArray("language/") + name + ".slg").constData(), {});
    QStringList order;
    QDirIterator files(folder.path("language"));
    while (files.hasNext()) {
        files.next();
        if (files.fileName().endsWith(text(".slg")))
            order.append(files.fileName().chopped(4));
    }
    QCOMPARE(order.size(), 8);
    QCOMPARE(languagesOf(folder).languages(), order);
}

void tst_languagefolder::listsOrdinaryFilesAndLinksToThemOnly()
{
    const TestFolder folder;
    folder.makeFolder("language/folder.slg");
    QVERIFY(SystemActions::makeFifo(folder.path("language/pipe.slg")));
    QVERIFY(QFile::link(folder.path("language/loop.slg"), folder.path("language/loop.slg")));
    QVERIFY(QFile::link(folder.path("nothing"), folder.path("language/broken.slg")));
    folder.write("language/.slg", {});
    folder.write("language/.#fr.slg", {});
    folder.write("elsewhere", {});
    QVERIFY(QFile::link(folder.path("elsewhere"), folder.path("language/link.slg")));
    folder.write("language/file.slg", {});

    const auto languages = languagesOf(folder);
    QCOMPARE(sorted(languages.languages()), QStringList({text("file"), text("link")}));
    for (const auto *name : {"folder", "pipe", "loop", "broken", ""})
        QCOMPARE(languages.fileOf(text(name)), QString());
}

void tst_languagefolder::findsAFileWithoutRegardToCaseButTheExactOneFirst()
{
    const TestFolder folder;
    folder.write("language/English.slg", {});
    const auto languages = languagesOf(folder);
    QCOMPARE(languages.fileOf(text("english")), folder.path("language/English.slg"));
    folder.write("language/english.slg", {});
    folder.write("language/ENGLISH.slg", {});
    QCOMPARE(languages.fileOf(text("english")), folder.path("language/english.slg"));
    QCOMPARE(languages.fileOf(text("English")), folder.path("language/English.slg"));
    QCOMPARE(languages.fileOf(text("ENGLISH")), folder.path("language/ENGLISH.slg"));
}

void tst_languagefolder::findsNamesBeyondAscii()
{
    const TestFolder folder;
    folder.write("language/français.slg", {});
    folder.write("language/日本語.slg", {});
    const auto languages = languagesOf(folder);
    QCOMPARE(sorted(languages.languages()), QStringList({text("français"), text("日本語")}));
    QCOMPARE(languages.fileOf(text("FRANÇAIS")), folder.path("language/français.slg"));
}

void tst_languagefolder::aFileWithTwoPointsIsFoundByItsWholeNameOnly()
{
    const TestFolder folder;
    folder.write("language/fr.old.slg", {});
    QCOMPARE(languagesOf(folder).fileOf(text("fr")), QString());
    QCOMPARE(languagesOf(folder).fileOf(text("fr.old")), folder.path("language/fr.old.slg"));
}

void tst_languagefolder::aNameDoesNotLeadOutOfTheFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("up") << text("../secret");
    QTest::newRow("far up") << text("../../../../../../../../etc/passwd");
    QTest::newRow("absolute") << text("%1/secret");
    QTest::newRow("down") << text("below/secret");
    QTest::newRow("round about") << text("./fr");
    QTest::newRow("backslash") << text("..\\secret");
    QTest::newRow("resource") << text(":/secret");
    QTest::newRow("zero") << QString::fromLatin1("fr\0", 3);
    QTest::newRow("zero and end") << QString::fromLatin1("fr.slg\0", 7);
    QTest::newRow("line feed") << text("fr\n");
    QTest::newRow("pattern") << text("f*");
    QTest::newRow("long") << QString(1000000, QLatin1Char('x'));
    QTest::newRow("lone surrogate") << QString(QChar(0xD800));
}

void tst_languagefolder::aNameDoesNotLeadOutOfTheFolder()
{
    const TestFolder folder;
    folder.write("secret.slg", {});
    folder.write("language/below/secret.slg", {});
    folder.write("language/fr.slg", {});
    QFETCH(QString, name);
    QCOMPARE(languagesOf(folder).fileOf(name.replace(text("%1"), folder.path())), QString());
}

QTEST_GUILESS_MAIN(tst_languagefolder)
#include "tst_languagefolder.moc"
