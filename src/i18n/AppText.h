#pragma once

#include "i18n/TextKey.h"
#include "i18n/TextQuality.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace Quorlin {

class MessageService;

/// The one table of texts of the program. It holds the built-in texts until a language is
/// loaded, and lives until the program ends. For the thread of the user interface only.
namespace AppText {

/// Tells where languages lie and who shows messages. Until then there are no languages.
/// @param applicationFolder path of the program's folder; its folder "language" holds them.
/// @param messages not owned; must live until the last call of LoadLanguage.
void Initialise(const QString &applicationFolder, MessageService &messages);

/// Puts the built-in texts and qualities in force. Their language is called "deutsch".
void LoadDefaultTexts();

/// Puts the texts of a language in force. When its file is missing or incomplete, puts the
/// built-in ones in force and says so, in their English; when there is no language file at all,
/// it does not say anything.
void LoadLanguage(const QString &name);

/// Name of the language in force.
[[nodiscard]] QString GetLanguage();

/// Names of the languages that there are, in the order of the file system.
[[nodiscard]] QStringList GetLanguageList();

/// What users see for a quality; empty when there is none of that key.
[[nodiscard]] QString GetQualityText(const QString &key);

/// The qualities, in the order in which the language gives them.
[[nodiscard]] QList<TextQuality> GetQualityList();

[[nodiscard]] QString GetText(TextKey key);

/// By the key's name, in which case counts; empty when there is no such key.
[[nodiscard]] QString GetText(const QString &keyName);

} // namespace AppText

} // namespace Quorlin
