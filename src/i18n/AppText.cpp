#include "i18n/AppText.h"

#include "i18n/LanguageFolder.h"
#include "i18n/TextRow.h"
#include "i18n/TextTable.h"
#include "winsupport/MessageService.h"

namespace Quorlin::AppText {

namespace {

struct State
{
    TextTable table;
    LanguageFolder folder;
    MessageService *messages = nullptr;
};

State &state()
{
    static State only;
    return only;
}

void showError(const QString &text)
{
    if (auto *const messages = state().messages)
        messages->show(text, MessageStyle::Plain, GetText(TextKey::ErrorWindowTitle));
}

QString around(TextKey first, const QString &middle, TextKey second)
{
    return GetText(first) + QLatin1Char(' ') + middle + QLatin1Char(' ') + GetText(second);
}

} // namespace

void Initialise(const QString &applicationFolder, MessageService &messages)
{
    state().folder = LanguageFolder(applicationFolder);
    state().messages = &messages;
}

void LoadDefaultTexts()
{
    state().table.loadDefaults();
}

void LoadLanguage(const QString &name)
{
    if (GetLanguageList().isEmpty()) {
        LoadDefaultTexts();
        return;
    }
    switch (state().table.load(state().folder.fileOf(name), name)) {
    case TextTable::Result::Loaded:
        break;
    case TextTable::Result::NotFound:
        showError(around(TextKey::ErrorLanguageNotFound1, name, TextKey::ErrorLanguageNotFound2));
        break;
    case TextTable::Result::Invalid:
        // The message does not say it, and who wrote the file wants to know.
        qWarning("%s.slg: %s is missing, empty or there twice", qUtf8Printable(name),
                 qUtf8Printable(state().table.problem()));
        showError(around(TextKey::ErrorLanguageInvalid1, name + QLatin1String(".slg"),
                         TextKey::ErrorLanguageInvalid2));
        break;
    }
}

QString GetLanguage()
{
    return state().table.language();
}

QStringList GetLanguageList()
{
    return state().folder.languages();
}

QString GetQualityText(const QString &key)
{
    return state().table.qualityText(key);
}

QList<TextQuality> GetQualityList()
{
    return state().table.qualities();
}

QString GetText(TextKey key)
{
    return state().table.text(key);
}

QString GetText(const QString &keyName)
{
    const auto *const row = TextRow::find(keyName);
    return row ? GetText(row->key) : QString();
}

} // namespace Quorlin::AppText
