#include "i18n/AppText.h"

#include "i18n/TextRow.h"
#include "settings/IniFile.h"
#include "settings/Windows1252.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QStringDecoder>
#include <QTest>

using namespace Quorlin;

/// The language files that come with the program, and the guide for those who write more.
class tst_languagefiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theThreeLanguagesAreThere();
    void liesBesideTheProgramsUnchanged_data() { languages(); }
    void liesBesideTheProgramsUnchanged();
    void loadsWithoutMessage_data() { languages(); }
    void loadsWithoutMessage();
    void isWindows1252WithProperLineEnds_data() { languages(); }
    void isWindows1252WithProperLineEnds();
    void hasExactlyTheKeysOfTheTableInOrder_data() { languages(); }
    void hasExactlyTheKeysOfTheTableInOrder();
    void hasTheQualitiesOfTheSettings_data() { languages(); }
    void hasTheQualitiesOfTheSettings();
    void textsAreNeatlyWritten_data() { languages(); }
    void textsAreNeatlyWritten();
    void captionsAreShort_data() { languages(); }
    void captionsAreShort();
    void messagesReadWellAroundTheirName_data() { languages(); }
    void messagesReadWellAroundTheirName();
    void theAboutTextHasTwoLines_data() { languages(); }
    void theAboutTextHasTwoLines();
    void isTranslatedButForProperNames_data();
    void isTranslatedButForProperNames();
    void theGuideTellsEveryKeyWithItsEnglishText();

private:
    static void languages();
};

namespace {

const QString DataFolder = QStringLiteral(QUORLIN_SOURCE_DIR "/data");

QString pathOf(const QString &language)
{
    return DataFolder + QLatin1String("/language/") + language + QLatin1String(".slg");
}

IniFile fileOf(const QString &language)
{
    IniFile file;
    if (file.Load(pathOf(language)) != 0)
        qFatal("cannot read %s", qUtf8Printable(pathOf(language)));
    return file;
}

/// "[GROUP]" and keys, line by line.
QStringList outlineOf(const QString &language)
{
    QStringList outline;
    for (const auto &line :
         fromWindows1252(contentOf(pathOf(language))).split(QStringLiteral("\r\n")))
        outline.append(line.section(QStringLiteral(" = "), 0, 0));
    return outline;
}

QStringList qualityNames()
{
    IniFile settings;
    if (settings.Load(DataFolder + QLatin1String("/Quorlin.ini")) != 0)
        qFatal("cannot read Quorlin.ini");
    QStringList names;
    for (const auto &var : settings.GetVars(QStringLiteral("JobOptions")))
        names.append(var->Name);
    return names;
}

void append(QStringList &outline, const char *group)
{
    outline.append(QLatin1Char('[') + QLatin1String(group) + QLatin1Char(']'));
    for (const auto &row : TextRow::all()) {
        if (row.group == QLatin1String(group))
            outline.append(row.name);
    }
}

QStringList namesOf(std::initializer_list<const char *> names)
{
    QStringList all;
    for (const auto *name : names)
        all.append(QString::fromLatin1(name));
    return all;
}

} // namespace

void tst_languagefiles::languages()
{
    QTest::addColumn<QString>("language");
    for (const auto *name : {"english", "français", "deutsch"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void tst_languagefiles::theThreeLanguagesAreThere()
{
    KeptMessages messages;
    AppText::Initialise(DataFolder, messages);
    auto list = AppText::GetLanguageList();
    list.sort();
    QCOMPARE(list, QStringList({QStringLiteral("deutsch"), QStringLiteral("english"),
                                QString::fromUtf8("français")}));
}

void tst_languagefiles::liesBesideTheProgramsUnchanged()
{
    QFETCH(QString, language);
    const auto copy =
        QStringLiteral(QUORLIN_BIN_DIR "/language/") + language + QLatin1String(".slg");
    QVERIFY(QFile::exists(copy));
    QCOMPARE(contentOf(copy), contentOf(pathOf(language)));
}

void tst_languagefiles::loadsWithoutMessage()
{
    QFETCH(QString, language);
    KeptMessages messages;
    AppText::Initialise(DataFolder, messages);
    AppText::LoadLanguage(language);
    QVERIFY(messages.all().isEmpty());
    QCOMPARE(AppText::GetLanguage(), language);
}

void tst_languagefiles::isWindows1252WithProperLineEnds()
{
    QFETCH(QString, language);
    const auto bytes = contentOf(pathOf(language));
    QVERIFY(bytes.endsWith("\r\n"));
    auto rest = QByteArray(bytes).replace("\r\n", "");
    for (const auto byte : rest)
        QVERIFY2(quint8(byte) >= 0x20 && byte != 0x7f, "a control character");
    for (const char unused : {'\x81', '\x8d', '\x8f', '\x90', '\x9d'})
        QVERIFY2(!rest.contains(unused), "a byte without a character");
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString decoded = utf8(bytes);
    QVERIFY2(utf8.hasError(), "looks like UTF-8");
}

void tst_languagefiles::hasExactlyTheKeysOfTheTableInOrder()
{
    QFETCH(QString, language);
    QStringList expected;
    for (const auto *group :
         {"APP", "TEXT", "ABOUT", "DIALOG", "QUALITY", "MENU", "INFO", "ERROR"}) {
        append(expected, group);
        if (qstrcmp(group, "QUALITY") != 0)
            continue;
        for (const auto &name : qualityNames())
            expected.append(QLatin1String("Quality") + name);
    }
    expected.append(QString());
    QCOMPARE(outlineOf(language), expected);
}

void tst_languagefiles::hasTheQualitiesOfTheSettings()
{
    QFETCH(QString, language);
    KeptMessages messages;
    AppText::Initialise(DataFolder, messages);
    AppText::LoadLanguage(language);
    QStringList keys;
    for (const auto &quality : AppText::GetQualityList()) {
        keys.append(quality.key);
        QVERIFY(!quality.text.isEmpty());
    }
    QCOMPARE(keys, qualityNames());
}

void tst_languagefiles::textsAreNeatlyWritten()
{
    QFETCH(QString, language);
    const auto lines = fromWindows1252(contentOf(pathOf(language))).split(QStringLiteral("\r\n"));
    for (const auto &line : lines) {
        if (line.isEmpty() || line.startsWith(QLatin1Char('[')))
            continue;
        const auto equals = line.indexOf(QStringLiteral(" = "));
        QVERIFY2(equals > 0, qPrintable(line));
        const auto text = line.mid(equals + 3);
        QVERIFY2(!text.isEmpty(), qPrintable(line));
        QCOMPARE(text.trimmed(), text);
        QVERIFY2(!text.contains(QStringLiteral("  ")), qPrintable(line));
        QVERIFY2(!text.contains(QLatin1Char('&')), qPrintable(line));
        QVERIFY2(!text.contains(QStringLiteral("...")), qPrintable(line));
        QVERIFY2(!text.contains(QLatin1Char('\'')), qPrintable(line));
    }
}

/// Skins give captions the width of about 22 characters, the button to convert that of 12, the
/// list of qualities that of 14.
void tst_languagefiles::captionsAreShort()
{
    QFETCH(QString, language);
    const auto file = fileOf(language);
    for (const auto &row : TextRow::all()) {
        const auto text = file.GetVar(row.name, row.group);
        if (row.key == TextKey::TextInfoInProgress)
            continue;
        if (row.group == QLatin1String("TEXT") || row.group == QLatin1String("MENU"))
            QVERIFY2(text.size() <= 22, qPrintable(text));
    }
    QVERIFY(file.GetVar(QStringLiteral("TextBtnConvert"), QStringLiteral("TEXT")).size() <= 12);
    for (const auto &var : file.GetVars(QStringLiteral("QUALITY")))
        QVERIFY2(var->Value.size() <= 14, qPrintable(var->Value));
}

void tst_languagefiles::messagesReadWellAroundTheirName()
{
    QFETCH(QString, language);
    const auto file = fileOf(language);
    for (const auto &row : TextRow::all()) {
        if (row.check != TextCheck::PairSecond || !row.name.endsWith(QLatin1Char('2')))
            continue;
        const auto text = file.GetVar(row.name, row.group);
        // These two follow the name without a blank.
        if (row.key == TextKey::ErrorPrintFilename2 || row.key == TextKey::ErrorCopyFilename2)
            QCOMPARE(text, QStringLiteral("."));
        else
            QVERIFY2(text.at(0).isLower(), qPrintable(text));
    }
}

void tst_languagefiles::theAboutTextHasTwoLines()
{
    QFETCH(QString, language);
    const auto text =
        fileOf(language).GetVar(QStringLiteral("AboutAdobeInformations"), QStringLiteral("ABOUT"));
    QCOMPARE(text.count(QStringLiteral("\\n")), 1);
    for (const auto &line : text.split(QStringLiteral("\\n")))
        QVERIFY2(line.size() <= 55, qPrintable(line));
}

void tst_languagefiles::isTranslatedButForProperNames_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("same");
    const auto names = namesOf({"AppWindowTitle", "AboutAdobeTitle", "MenuAppClassic",
                                "MenuAppAdvanced", "ErrorPrintFilename2", "ErrorCopyFilename2"});
    QTest::newRow("deutsch") << QStringLiteral("deutsch") << names;
    QTest::newRow("français") << QString::fromUtf8("français")
                              << names + namesOf({"InfoWindowTitle"});
}

void tst_languagefiles::isTranslatedButForProperNames()
{
    QFETCH(QString, language);
    QFETCH(QStringList, same);
    const auto english = fileOf(QStringLiteral("english"));
    const auto other = fileOf(language);
    QStringList found;
    for (const auto &row : TextRow::all()) {
        if (english.GetVar(row.name, row.group) == other.GetVar(row.name, row.group))
            found.append(row.name);
    }
    found.sort();
    same.sort();
    QCOMPARE(found, same);
    for (const auto &var : english.GetVars(QStringLiteral("QUALITY")))
        QVERIFY(other.GetVar(var->Name, QStringLiteral("QUALITY")) != var->Value);
}

void tst_languagefiles::theGuideTellsEveryKeyWithItsEnglishText()
{
    const auto guide = QString::fromUtf8(
        contentOf(QStringLiteral(QUORLIN_SOURCE_DIR "/docs/translators-guide.md")));
    const auto english = fileOf(QStringLiteral("english"));
    for (const auto &var : english.GetVars()) {
        const auto row = QStringLiteral("\n| `%1` | %2 | ").arg(var->Name, var->Value);
        QVERIFY2(guide.contains(row), qPrintable(row));
    }
}

QTEST_GUILESS_MAIN(tst_languagefiles)
#include "tst_languagefiles.moc"
