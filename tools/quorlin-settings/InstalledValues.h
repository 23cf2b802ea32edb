#pragma once

#include "quorlin-settings/Setting.h"

namespace Quorlin {

/// What a value came to when it was looked at.
struct CheckedValue
{
    QString text;    ///< in the form in which it is kept
    QString problem; ///< why it cannot be set; empty when it can
};

/// What settings can be set to: languages, skins and qualities are those beside the program.
class InstalledValues
{
public:
    /// @param programFolder holds Quorlin.ini and the folders Settings, language and skins.
    explicit InstalledValues(const QString &programFolder) : m_folder(programFolder) {}

    /// Empty where a setting has no list of values.
    [[nodiscard]] QStringList of(const Setting &setting, SettingsLayer layer) const;

    /// Looks whether the program could use a value. Files are read for it; a skin with metafiles
    /// takes some seconds the first time.
    [[nodiscard]] CheckedValue check(const Setting &setting, const QString &text,
                                     SettingsLayer layer) const;

    /// What is wrong with a value that is kept, as far as a quick look tells; empty when nothing
    /// is.
    [[nodiscard]] QString remark(const Setting &setting, const QString &text) const;

    /// A value for people: a quality with its name.
    [[nodiscard]] QString describe(const Setting &setting, const QString &text) const;

    /// Whether a skin's folder is there. The window passes over a user's value otherwise.
    [[nodiscard]] bool hasSkin(const QString &name) const;

private:
    [[nodiscard]] QStringList languages() const;
    [[nodiscard]] QStringList skins() const;
    [[nodiscard]] QStringList qualities() const;
    [[nodiscard]] CheckedValue checkLanguage(const QString &name) const;
    [[nodiscard]] CheckedValue checkQuality(const QString &text) const;
    [[nodiscard]] CheckedValue checkSkin(const QString &name, SettingsLayer layer) const;
    [[nodiscard]] QString problemOfSkin(const QString &name) const;
    [[nodiscard]] QString unknown(const Setting &setting, const QString &text) const;

    QString m_folder;
};

} // namespace Quorlin
