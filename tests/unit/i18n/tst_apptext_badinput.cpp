#include "i18n/AppText.h"

#include "AppTextScene.h"
#include "LanguageText.h"
#include "support/SystemActions.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Quorlin;

/// Names and files that nobody should have let in.
class tst_apptext_badinput : public QObject, private AppTextScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aNameThatLeadsOutOfTheFolderIsNotFound();
    void refusesDamagedFiles_data();
    void refusesDamagedFiles();
    void bearsOddFiles_data();
    void bearsOddFiles();
    void tellsThatAFileIsUnreadable();
    void aFolderPipeOrLoopInPlaceOfAFileIsNotFound();
    void aFileThatIsTooLargeIsNotFound();
};

void tst_apptext_badinput::aNameThatLeadsOutOfTheFolderIsNotFound()
{
    write("other.slg", LanguageText());
    folder().write("fr.slg", LanguageText().bytes());
    load("../fr");
    QCOMPARE(onlyMessage(), QStringLiteral("Can't load ../fr language : file not found or in use"));
    QVERIFY(isBuiltIn());
}

void tst_apptext_badinput::refusesDamagedFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto good = LanguageText().bytes();
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no line end at the end, and the last text gone with it")
        << LanguageText().without("ErrorInvalidPRNFile1").bytes().chopped(2);
    QTest::newRow("half") << good.left(good.size() / 2);
    QTest::newRow("two of one quality") << LanguageText().set("QUALITY", "Low", "x").bytes();
    QTest::newRow("empty key") << QByteArray(good).replace("InfoMerge = ", "= ");
    QTest::newRow("groups in other case") << QByteArray(good).replace("[MENU]", "[Menu]");
    QTest::newRow("blank before a group") << QByteArray(good).replace("[MENU]", " [MENU]");
    QTest::newRow("zero in a key")
        << QByteArray(good).replace("InfoMerge =", QByteArray("Info\0Merge =", 12));
    QTest::newRow("a megabyte on one line") << QByteArray(1 << 20, 'x');
    QTest::newRow("a megabyte on one line, ended") << QByteArray(1 << 20, '[') + "\r\n";
    QTest::newRow("zeros") << QByteArray(1 << 16, '\0');
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe[\0A\0P\0P\0]\0\r\0\n\0", 16);
    QTest::newRow("byte-order mark and first group gone")
        << "\xef\xbb\xbf" + QByteArray(good).mid(good.indexOf("[TEXT]"));
}

void tst_apptext_badinput::refusesDamagedFiles()
{
    QFETCH(QByteArray, bytes);
    write("fr.slg", bytes);
    load("fr");
    QCOMPARE(onlyMessage(), corrupted());
    QVERIFY(isBuiltIn());
}

void tst_apptext_badinput::bearsOddFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto good = LanguageText().bytes();
    QTest::newRow("line feeds") << LanguageText().bytes("\n");
    QTest::newRow("lone carriage returns") << LanguageText().bytes("\r");
    QTest::newRow("empty lines") << LanguageText().bytes("\r\n\r\r\n\n");
    QTest::newRow("further groups") << "x=y\r\n[NEW]\r\na=b\r\n" + good;
    QTest::newRow("empty key beside the others")
        << QByteArray(good).replace("InfoMerge = ", "= x\r\n  = y\r\nInfoMerge = ");
    QTest::newRow("zeros in texts")
        << LanguageText().set("APP", "AppWindowTitle", QByteArray("\0\0", 2)).bytes();
    QTest::newRow("a megabyte in a text")
        << LanguageText().set("APP", "AppWindowTitle", QByteArray(1 << 20, 'x')).bytes();
    // The file begins with the title's group, which nothing checks.
    QTest::newRow("byte-order mark") << "\xef\xbb\xbf" + good;
}

void tst_apptext_badinput::bearsOddFiles()
{
    QFETCH(QByteArray, bytes);
    write("fr.slg", bytes);
    load("fr");
    QVERIFY(messages().all().isEmpty());
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("fr"));
    QCOMPARE(AppText::GetText(TextKey::InfoMerge), QStringLiteral("<InfoMerge>"));
    QCOMPARE(AppText::GetText(TextKey::ErrorInvalidPRNFile2),
             QStringLiteral("<ErrorInvalidPRNFile2>"));
}

void tst_apptext_badinput::tellsThatAFileIsUnreadable()
{
    write("fr.slg", LanguageText());
    const auto everybody = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                           QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(folder().path(), everybody));
    QVERIFY(QFile::setPermissions(folder().path("language/fr.slg"), {}));
    {
        const OrdinaryUser user;
        QCOMPARE(AppText::GetLanguageList(), QStringList(QStringLiteral("fr")));
        load("fr");
    }
    QCOMPARE(onlyMessage(), notFound());
    QVERIFY(isBuiltIn());
}

void tst_apptext_badinput::aFolderPipeOrLoopInPlaceOfAFileIsNotFound()
{
    write("other.slg", LanguageText());
    const auto path = folder().path("language/fr.slg");
    folder().makeFolder("language/fr.slg");
    load("fr");
    QVERIFY(QDir().rmdir(path));
    QVERIFY(SystemActions::makeFifo(path));
    load("fr");
    QVERIFY(QFile::remove(path));
    QVERIFY(QFile::link(path, path));
    load("fr");
    QCOMPARE(messages().all().size(), 3);
    for (const auto &message : messages().all())
        QCOMPARE(message.text, notFound());
    QVERIFY(isBuiltIn());
}

void tst_apptext_badinput::aFileThatIsTooLargeIsNotFound()
{
    write("fr.slg", LanguageText());
    QFile file(folder().path("language/fr.slg"));
    QVERIFY(file.resize(1LL << 40));
    load("fr");
    QCOMPARE(onlyMessage(), notFound());
    QVERIFY(isBuiltIn());
}

QTEST_GUILESS_MAIN(tst_apptext_badinput)
#include "tst_apptext_badinput.moc"
