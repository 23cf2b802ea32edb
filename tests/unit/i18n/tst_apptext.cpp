#include "i18n/AppText.h"
#include "i18n/AppTextSource.h"

#include "AppTextScene.h"
#include "LanguageText.h"

#include <QFile>
#include <QTest>

using namespace Quorlin;

class tst_apptext : public QObject, private AppTextScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aFileWithoutAppWindowTitleLoadsAndTheTitleIsEmpty();
    void aPairNeedsOneOfItsTexts();
    void keysInOtherGroupsDoNotCount();
    void namesOfKeysCountCase();
    void afterARefusedFileTheLanguageIsDeutschAndTheTextsAreEnglish();
    void aBackslashAndAnNBreakTheLineInOneTextOnly();
    void aFolderWithoutLanguagesGivesTheBuiltInTextsSilently();

    void tellsThatAFileIsMissing();
    void tellsThatAFileIsIncomplete();
    void namesTheFirstBadTextInTheLog();
    void messagesShowTheNameAsItWasGiven();
    void messagesAreShownWhenTheBuiltInTextsAreBack();
    void messagesAreInBuiltInEnglishWhateverWasLoadedBefore();

    void withoutFolderThereIsNoMessage();
    void loadsALanguage();
    void loadsTheLanguageInForceOnceMore();
    void loadsOneLanguageAfterTheOther();
    void theNameOfTheLanguageIsTheOneThatWasAskedFor();
    void listsTheLanguages();
    void aListedNameMayHaveNoFile();
    void givesTextsByTheNamesOfTheirKeys();
    void givesTextsToThoseWhoDoNotKnowTheTable();
    void givesTheQualities();
};

void tst_apptext::aFileWithoutAppWindowTitleLoadsAndTheTitleIsEmpty()
{
    write("fr.slg", LanguageText().without("AppWindowTitle"));
    load("fr");
    QVERIFY(messages().all().isEmpty());
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("fr"));
    QCOMPARE(AppText::GetText(TextKey::AppWindowTitle), QString());
}

void tst_apptext::aPairNeedsOneOfItsTexts()
{
    LanguageText text;
    text.set("ERROR", "ErrorPrintFilename2", "");
    write("fr.slg", text);
    load("fr");
    QVERIFY(messages().all().isEmpty());
    QCOMPARE(AppText::GetText(TextKey::ErrorPrintFilename1),
             QStringLiteral("<ErrorPrintFilename1>"));
    QCOMPARE(AppText::GetText(TextKey::ErrorPrintFilename2), QString());

    write("fr.slg", text.set("ERROR", "ErrorPrintFilename1", ""));
    load("fr");
    QCOMPARE(onlyMessage(), corrupted());
    QVERIFY(isBuiltIn());
}

void tst_apptext::keysInOtherGroupsDoNotCount()
{
    LanguageText text;
    text.renamed("INFO", "other").renamed("MENU", "INFO").renamed("other", "MENU");
    write("fr.slg", text);
    load("fr");
    QCOMPARE(onlyMessage(), corrupted());
    QVERIFY(isBuiltIn());
}

void tst_apptext::namesOfKeysCountCase()
{
    write("fr.slg", LanguageText().without("TextBtnConvert").set("TEXT", "textbtnconvert", "a"));
    load("fr");
    QCOMPARE(onlyMessage(), corrupted());
}

/// Deliberate: the built-in English calls itself "deutsch".
void tst_apptext::afterARefusedFileTheLanguageIsDeutschAndTheTextsAreEnglish()
{
    write("fr.slg", LanguageText().without("ErrorInvalidPRNFile1").without("ErrorInvalidPRNFile2"));
    load("fr");
    QCOMPARE(onlyMessage(), corrupted());
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("deutsch"));
    QCOMPARE(AppText::GetText(TextKey::TextBtnConvert), QStringLiteral("Convert"));
    QVERIFY(isBuiltIn());
}

void tst_apptext::aBackslashAndAnNBreakTheLineInOneTextOnly()
{
    write("fr.slg", LanguageText()
                        .set("ABOUT", "AboutAdobeInformations", "\\na\\n\\nb\\N\\\\nc")
                        .set("ABOUT", "AboutAdobeTrademarks", "a\\nb")
                        .set("QUALITY", "QualityLow", "a\\nb"));
    load("fr");
    QCOMPARE(AppText::GetText(TextKey::AboutAdobeInformations),
             QStringLiteral("\r\na\r\n\r\nb\\N\\\r\nc"));
    QCOMPARE(AppText::GetText(TextKey::AboutAdobeTrademarks), QStringLiteral("a\\nb"));
    QCOMPARE(AppText::GetQualityText(QStringLiteral("Low")), QStringLiteral("a\\nb"));
}

void tst_apptext::aFolderWithoutLanguagesGivesTheBuiltInTextsSilently()
{
    write("fr.slg", LanguageText());
    load("fr");
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("fr"));
    QVERIFY(QFile::remove(folder().path("language/fr.slg")));
    write("readme.txt", "x");
    load("fr");
    QVERIFY(messages().all().isEmpty());
    QVERIFY(isBuiltIn());
}

void tst_apptext::tellsThatAFileIsMissing()
{
    write("other.slg", LanguageText());
    load("fr");
    QCOMPARE(messages().all().size(), 1);
    const auto &message = messages().all().first();
    QCOMPARE(message.text, notFound());
    QCOMPARE(message.style, MessageStyle::Plain);
    QCOMPARE(message.title, QStringLiteral("Error"));
    QVERIFY(isBuiltIn());
}

void tst_apptext::tellsThatAFileIsIncomplete()
{
    write("fr.slg", LanguageText().without("InfoPrint"));
    load("fr");
    QCOMPARE(messages().all().size(), 1);
    const auto &message = messages().all().first();
    QCOMPARE(message.text, corrupted());
    QCOMPARE(message.style, MessageStyle::Plain);
    QCOMPARE(message.title, QStringLiteral("Error"));
    QVERIFY(isBuiltIn());
}

void tst_apptext::namesTheFirstBadTextInTheLog()
{
    write("fr.slg", LanguageText().without("InfoPrint").without("ErrorWindowTitle"));
    QTest::ignoreMessage(QtWarningMsg, "fr.slg: [INFO] InfoPrint is missing, empty or there twice");
    load("fr");
    QVERIFY(!onlyMessage().isEmpty());
}

void tst_apptext::messagesShowTheNameAsItWasGiven()
{
    write("français.slg", LanguageText().without("InfoPrint"));
    load("FRANÇAIS");
    QCOMPARE(onlyMessage(), QString::fromUtf8("The language file FRANÇAIS.slg is corrupted"));
}

void tst_apptext::messagesAreShownWhenTheBuiltInTextsAreBack()
{
    int shown = 0;
    messages().setWhileShown([this, &shown] { shown += isBuiltIn() ? 1 : 100; });
    write("fr.slg", LanguageText().without("ErrorMergeFile1").without("ErrorMergeFile2"));
    load("fr");
    load("none");
    QCOMPARE(shown, 2);
}

void tst_apptext::messagesAreInBuiltInEnglishWhateverWasLoadedBefore()
{
    write("de.slg", LanguageText());
    load("de");
    load("fr");
    QCOMPARE(onlyMessage(), notFound());
}

void tst_apptext::withoutFolderThereIsNoMessage()
{
    load("fr");
    QVERIFY(messages().all().isEmpty());
    QVERIFY(isBuiltIn());
    QVERIFY(AppText::GetLanguageList().isEmpty());
}

void tst_apptext::loadsALanguage()
{
    write("fr.slg", LanguageText());
    load("fr");
    QVERIFY(messages().all().isEmpty());
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("fr"));
    QCOMPARE(AppText::GetText(TextKey::MenuLstMove), QStringLiteral("<MenuLstMove>"));
    AppText::LoadDefaultTexts();
    QVERIFY(isBuiltIn());
}

void tst_apptext::loadsTheLanguageInForceOnceMore()
{
    write("fr.slg", LanguageText());
    load("fr");
    AppText::LoadLanguage(AppText::GetLanguage());
    QVERIFY(messages().all().isEmpty());
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("fr"));
}

void tst_apptext::loadsOneLanguageAfterTheOther()
{
    write("a.slg", LanguageText());
    write("b.slg", LanguageText().without("AppWindowTitle").cleared("QUALITY"));
    load("a");
    load("b");
    QCOMPARE(AppText::GetText(TextKey::AppWindowTitle), QString());
    QVERIFY(AppText::GetQualityList().isEmpty());
    load("a");
    QCOMPARE(AppText::GetText(TextKey::AppWindowTitle), QStringLiteral("<AppWindowTitle>"));
    QCOMPARE(AppText::GetQualityList().size(), 2);
}

void tst_apptext::theNameOfTheLanguageIsTheOneThatWasAskedFor()
{
    write("English.SLG", LanguageText());
    load("english");
    QVERIFY(messages().all().isEmpty());
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("english"));
}

void tst_apptext::listsTheLanguages()
{
    write("a.slg", QByteArray());
    write("b.old.slg", QByteArray());
    auto list = AppText::GetLanguageList();
    list.sort();
    QCOMPARE(list, QStringList({QStringLiteral("a"), QStringLiteral("b")}));
}

/// A file fr.old.slg is listed as fr, and fr.slg is what then gets loaded.
void tst_apptext::aListedNameMayHaveNoFile()
{
    write("fr.old.slg", LanguageText());
    QCOMPARE(AppText::GetLanguageList(), QStringList(QStringLiteral("fr")));
    load("fr");
    QCOMPARE(onlyMessage(), notFound());
}

void tst_apptext::givesTextsByTheNamesOfTheirKeys()
{
    QCOMPARE(AppText::GetText(QStringLiteral("ErrorProtectedFilename")),
             QStringLiteral("The file is protected in write, can't overwirte."));
    QCOMPARE(AppText::GetText(QStringLiteral("errorprotectedfilename")), QString());
    QCOMPARE(AppText::GetText(QString()), QString());
}

void tst_apptext::givesTextsToThoseWhoDoNotKnowTheTable()
{
    const AppTextSource source;
    QCOMPARE(source.text(QStringLiteral("ErrorWindowTitle")), QStringLiteral("Error"));
    QCOMPARE(source.text(QStringLiteral("Unknown")), QString());
}

void tst_apptext::givesTheQualities()
{
    write("fr.slg", LanguageText());
    load("fr");
    QCOMPARE(AppText::GetQualityList(),
             QList<TextQuality>({{QStringLiteral("Low"), QStringLiteral("<Low>")},
                                 {QStringLiteral("High"), QStringLiteral("<High>")}}));
    QCOMPARE(AppText::GetQualityText(QStringLiteral("High")), QStringLiteral("<High>"));
    QCOMPARE(AppText::GetQualityText(QStringLiteral("Medium")), QString());
}

QTEST_GUILESS_MAIN(tst_apptext)
#include "tst_apptext.moc"
