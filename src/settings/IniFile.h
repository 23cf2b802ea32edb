#pragma once

#include "settings/IniGroup.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

class QIODevice;

namespace Quorlin {

/// The one reader and writer of files with groups of keys and values: the settings file, the
/// language files, the descriptions of skins.
///
/// Text is Windows-1252. Groups and variables keep their order, and equal names stay side by
/// side; every lookup counts case and takes the first. There are no comments, quotes or escapes:
/// a line that starts with ";" is a variable like any other.
class IniFile
{
public:
    IniFile() = default;
    // A copy would share its groups with the original.
    IniFile(const IniFile &) = delete;
    IniFile &operator=(const IniFile &) = delete;
    IniFile(IniFile &&) = default;
    IniFile &operator=(IniFile &&) = default;
    ~IniFile() = default;

    /// Files above this size are not settings; reading them fails.
    static constexpr qint64 MostBytes = 2 * 1024 * 1024;

    /// Reads a file and appends what it holds. Of what was loaded before, only the last group
    /// stays, in front of the new ones. A last line without a line end does not count.
    /// @return 0 when the whole file was read; 1 when it is missing, no ordinary file, too large
    /// or unreadable. What was read before the failure stays.
    [[nodiscard]] int Load(const QString &Filename);

    /// Replaces a file with all groups, in order; lines end in CR LF. A character that
    /// Windows-1252 does not have becomes "?".
    /// @return 0 when the file was written; 1 when writing failed. The file then holds what was
    /// written so far.
    [[nodiscard]] int Save(const QString &Filename) const;

    /// Makes sure that there is a group of this name.
    void SetGroup(const QString &GroupName);

    /// Sets a variable of the first group of this name, making both when they are missing.
    /// Without a value, an old one stays and a new one is empty.
    void SetVar(const QString &varName, const QString &GroupName = {},
                const std::optional<QVariant> &Value = {});

    /// The value of a variable; empty when there is none. Without a group's name every group is
    /// searched, with one only the first of that name.
    [[nodiscard]] QString GetVar(const QString &varName, const QString &GroupName = {}) const;

    /// The variables of the first group of this name, or of all groups when no name is given.
    /// The list is new, the variables are the file's own.
    [[nodiscard]] QList<std::shared_ptr<IniVar>> GetVars(const QString &GroupName = {}) const;

private:
    void ClearGroups();
    [[nodiscard]] bool readLines(QIODevice &file);
    [[nodiscard]] bool writeLines(QIODevice &file) const;
    void ParseLine(const QString &line);
    [[nodiscard]] const IniGroup *findGroup(const QString &GroupName) const;
    [[nodiscard]] IniGroup &groupFor(const QString &GroupName);

    QList<std::shared_ptr<IniGroup>> m_groups;
};

} // namespace Quorlin
