#include "i18n/AppText.h"

#include "ExpectedTexts.h"
#include "LanguageText.h"
#include "RecordedMessages.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QTest>

#include <algorithm>
#include <memory>

using namespace Quorlin;

class tst_apptext : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aFileWithoutAppWindowTitleLoadsAndTheTitleIsEmpty();
    void aPairNeedsOneOfItsTexts();
    void keysInOtherGroupsDoNotCount();
    void namesOfKeysCountCase();
    void afterARefusedFileTheLanguageIsDeutschAndTheTextsAreEnglish();
    void aBackslashAndAnNBreakTheLineInOneTextOnly();
    void aFolderWithoutLanguagesGivesTheBuiltInTextsSilently();

    void tellsThatAFileIsMissing();
    void tellsThatAFileIsIncomplete();
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
    void givesTheQualities();

    void aNameThatLeadsOutOfTheFolderIsNotFound();
    void refusesDamagedFiles_data();
    void refusesDamagedFiles();
    void bearsOddFiles_data();
    void bearsOddFiles();
    void tellsThatAFileIsUnreadable();
    void aFolderPipeOrLoopInPlaceOfAFileIsNotFound();
    void aFileThatIsTooLargeIsNotFound();

private:
    void load(const char *name) { AppText::LoadLanguage(QString::fromUtf8(name)); }
    void write(const char *name, const LanguageText &text) { write(name, text.bytes()); }
    void write(const char *name, const QByteArray &bytes);
    [[nodiscard]] bool isBuiltIn() const;
    [[nodiscard]] QString onlyMessage() const;

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<RecordedMessages> m_messages;
};

namespace {

const QString Corrupted = QStringLiteral("The language file fr.slg is corrupted");
const QString NotFound = QStringLiteral("Can't load fr language : file not found or in use");

} // namespace

void tst_apptext::init()
{
    m_folder = std::make_unique<TestFolder>();
    m_messages = std::make_unique<RecordedMessages>();
    AppText::Initialise(m_folder->path(), *m_messages);
    AppText::LoadDefaultTexts();
}

void tst_apptext::cleanup()
{
    m_folder.reset();
}

void tst_apptext::write(const char *name, const QByteArray &bytes)
{
    m_folder->write((QByteArray("language/") + name).constData(), bytes);
}

bool tst_apptext::isBuiltIn() const
{
    return AppText::GetLanguage() == QStringLiteral("deutsch") &&
           AppText::GetQualityText(QStringLiteral("Medium")) == QStringLiteral("Medium") &&
           AppText::GetQualityList().size() == 4 &&
           std::ranges::all_of(expectedTexts(), [](const auto &expected) {
               return AppText::GetText(QString::fromLatin1(expected.key)) ==
                      QString::fromLatin1(expected.builtIn);
           });
}

/// The text of the message when there was one and it looked as it must.
QString tst_apptext::onlyMessage() const
{
    if (m_messages->all().size() != 1)
        return QStringLiteral("%1 messages").arg(m_messages->all().size());
    const auto &message = m_messages->all().first();
    if (message.style != MessageStyle::Plain)
        return QStringLiteral("an icon");
    return message.title == QStringLiteral("Error") ? message.text : message.title;
}

void tst_apptext::aFileWithoutAppWindowTitleLoadsAndTheTitleIsEmpty()
{
    write("fr.slg", LanguageText().without("AppWindowTitle"));
    load("fr");
    QVERIFY(m_messages->all().isEmpty());
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("fr"));
    QCOMPARE(AppText::GetText(TextKey::AppWindowTitle), QString());
}

void tst_apptext::aPairNeedsOneOfItsTexts()
{
    LanguageText text;
    text.set("ERROR", "ErrorPrintFilename2", "");
    write("fr.slg", text);
    load("fr");
    QVERIFY(m_messages->all().isEmpty());
    QCOMPARE(AppText::GetText(TextKey::ErrorPrintFilename1),
             QStringLiteral("<ErrorPrintFilename1>"));
    QCOMPARE(AppText::GetText(TextKey::ErrorPrintFilename2), QString());

    write("fr.slg", text.set("ERROR", "ErrorPrintFilename1", ""));
    load("fr");
    QCOMPARE(onlyMessage(), Corrupted);
    QVERIFY(isBuiltIn());
}

void tst_apptext::keysInOtherGroupsDoNotCount()
{
    LanguageText text;
    text.renamed("INFO", "other").renamed("MENU", "INFO").renamed("other", "MENU");
    write("fr.slg", text);
    load("fr");
    QCOMPARE(onlyMessage(), Corrupted);
    QVERIFY(isBuiltIn());
}

void tst_apptext::namesOfKeysCountCase()
{
    write("fr.slg", LanguageText().without("TextBtnConvert").set("TEXT", "textbtnconvert", "a"));
    load("fr");
    QCOMPARE(onlyMessage(), Corrupted);
}

/// Deliberate: the built-in English calls itself "deutsch".
void tst_apptext::afterARefusedFileTheLanguageIsDeutschAndTheTextsAreEnglish()
{
    write("fr.slg", LanguageText().without("ErrorInvalidPRNFile1").without("ErrorInvalidPRNFile2"));
    load("fr");
    QCOMPARE(onlyMessage(), Corrupted);
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
    QVERIFY(QFile::remove(m_folder->path("language/fr.slg")));
    write("readme.txt", "x");
    load("fr");
    QVERIFY(m_messages->all().isEmpty());
    QVERIFY(isBuiltIn());
}

void tst_apptext::tellsThatAFileIsMissing()
{
    write("other.slg", LanguageText());
    load("fr");
    QCOMPARE(m_messages->all().size(), 1);
    const auto &message = m_messages->all().first();
    QCOMPARE(message.text, NotFound);
    QCOMPARE(message.style, MessageStyle::Plain);
    QCOMPARE(message.title, QStringLiteral("Error"));
    QVERIFY(isBuiltIn());
}

void tst_apptext::tellsThatAFileIsIncomplete()
{
    write("fr.slg", LanguageText().without("InfoPrint"));
    load("fr");
    QCOMPARE(m_messages->all().size(), 1);
    const auto &message = m_messages->all().first();
    QCOMPARE(message.text, Corrupted);
    QCOMPARE(message.style, MessageStyle::Plain);
    QCOMPARE(message.title, QStringLiteral("Error"));
    QVERIFY(isBuiltIn());
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
    m_messages->setWhileShown([this, &shown] { shown += isBuiltIn() ? 1 : 100; });
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
    QCOMPARE(onlyMessage(), NotFound);
}

void tst_apptext::withoutFolderThereIsNoMessage()
{
    load("fr");
    QVERIFY(m_messages->all().isEmpty());
    QVERIFY(isBuiltIn());
    QVERIFY(AppText::GetLanguageList().isEmpty());
}

void tst_apptext::loadsALanguage()
{
    write("fr.slg", LanguageText());
    load("fr");
    QVERIFY(m_messages->all().isEmpty());
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
    QVERIFY(m_messages->all().isEmpty());
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
    QVERIFY(m_messages->all().isEmpty());
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
    QCOMPARE(onlyMessage(), NotFound);
}

void tst_apptext::givesTextsByTheNamesOfTheirKeys()
{
    QCOMPARE(AppText::GetText(QStringLiteral("ErrorProtectedFilename")),
             QStringLiteral("The file is protected in write, can't overwirte."));
    QCOMPARE(AppText::GetText(QStringLiteral("errorprotectedfilename")), QString());
    QCOMPARE(AppText::GetText(QString()), QString());
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

void tst_apptext::aNameThatLeadsOutOfTheFolderIsNotFound()
{
    write("other.slg", LanguageText());
    m_folder->write("fr.slg", LanguageText().bytes());
    load("../fr");
    QCOMPARE(onlyMessage(), QStringLiteral("Can't load ../fr language : file not found or in use"));
    QVERIFY(isBuiltIn());
}

void tst_apptext::refusesDamagedFiles_data()
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

void tst_apptext::refusesDamagedFiles()
{
    QFETCH(QByteArray, bytes);
    write("fr.slg", bytes);
    load("fr");
    QCOMPARE(onlyMessage(), Corrupted);
    QVERIFY(isBuiltIn());
}

void tst_apptext::bearsOddFiles_data()
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

void tst_apptext::bearsOddFiles()
{
    QFETCH(QByteArray, bytes);
    write("fr.slg", bytes);
    load("fr");
    QVERIFY(m_messages->all().isEmpty());
    QCOMPARE(AppText::GetLanguage(), QStringLiteral("fr"));
    QCOMPARE(AppText::GetText(TextKey::InfoMerge), QStringLiteral("<InfoMerge>"));
    QCOMPARE(AppText::GetText(TextKey::ErrorInvalidPRNFile2),
             QStringLiteral("<ErrorInvalidPRNFile2>"));
}

void tst_apptext::tellsThatAFileIsUnreadable()
{
    write("fr.slg", LanguageText());
    const auto everybody = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                           QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(m_folder->path(), everybody));
    QVERIFY(QFile::setPermissions(m_folder->path("language/fr.slg"), {}));
    {
        const OrdinaryUser user;
        QCOMPARE(AppText::GetLanguageList(), QStringList(QStringLiteral("fr")));
        load("fr");
    }
    QCOMPARE(onlyMessage(), NotFound);
    QVERIFY(isBuiltIn());
}

void tst_apptext::aFolderPipeOrLoopInPlaceOfAFileIsNotFound()
{
    write("other.slg", LanguageText());
    const auto path = m_folder->path("language/fr.slg");
    m_folder->makeFolder("language/fr.slg");
    load("fr");
    QVERIFY(QDir().rmdir(path));
    QVERIFY(SystemActions::makeFifo(path));
    load("fr");
    QVERIFY(QFile::remove(path));
    QVERIFY(QFile::link(path, path));
    load("fr");
    QCOMPARE(m_messages->all().size(), 3);
    for (const auto &message : m_messages->all())
        QCOMPARE(message.text, NotFound);
    QVERIFY(isBuiltIn());
}

void tst_apptext::aFileThatIsTooLargeIsNotFound()
{
    write("fr.slg", LanguageText());
    QFile file(m_folder->path("language/fr.slg"));
    QVERIFY(file.resize(1LL << 40));
    load("fr");
    QCOMPARE(onlyMessage(), NotFound);
    QVERIFY(isBuiltIn());
}

QTEST_GUILESS_MAIN(tst_apptext)
#include "tst_apptext.moc"
