#pragma once

#include "i18n/TextKey.h"
#include "i18n/TextQuality.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace Quorlin {

class IniFile;

/// The texts that users see, from a language file or built in, and the compression qualities.
///
/// Either all texts of a file are in force or all built-in ones.
class TextTable
{
public:
    enum class Result {
        Loaded,
        NotFound, ///< missing, no ordinary file, too large or unreadable
        Invalid   ///< a text is missing, or two qualities have one key
    };

    /// Holds the built-in texts.
    TextTable();

    /// Puts the built-in texts and qualities in force. They are English; their language is
    /// called "deutsch" all the same.
    void loadDefaults();

    /// Puts the texts of a language file in force, or the built-in ones when that fails.
    /// @param path path of a file in the INI format; see the translators' guide.
    /// @param language the name that the language gets.
    [[nodiscard]] Result load(const QString &path, const QString &language);

    /// Where the file was given up after Invalid: "[GROUP] key". Otherwise empty.
    [[nodiscard]] QString problem() const { return m_problem; }

    [[nodiscard]] QString text(TextKey key) const;
    [[nodiscard]] QString language() const { return m_language; }
    /// In the order of the file; no key twice.
    [[nodiscard]] QList<TextQuality> qualities() const { return m_qualities; }
    /// Empty when there is no such quality. Case counts.
    [[nodiscard]] QString qualityText(const QString &key) const;

private:
    [[nodiscard]] bool read(const IniFile &file);
    [[nodiscard]] bool readTexts(const IniFile &file, const QString &group);
    [[nodiscard]] bool readQualities(const IniFile &file, const QString &group);
    [[nodiscard]] bool isComplete(std::size_t index) const;

    QStringList m_texts;
    QList<TextQuality> m_qualities;
    QString m_language;
    QString m_problem;
};

} // namespace Quorlin
