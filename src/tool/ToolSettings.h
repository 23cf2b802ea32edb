#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <optional>

namespace Quorlin {

/// What the tool reads from Quorlin.ini: the printer's name and the job options by name.
///
/// The file is Windows-1252; names count with their case, the first of equal names wins, and a
/// last line without a line end does not count.
class ToolSettings
{
public:
    /// Reads the file of the folder in which the programs lie.
    /// @return nothing when the file cannot be read.
    [[nodiscard]] static std::optional<ToolSettings> load(const QString &programFolder);

    /// "Varnex PDF" when the file names none.
    [[nodiscard]] QString printerName() const;

    /// The names of the job options in the order of the file.
    [[nodiscard]] QStringList qualities() const;

    /// Full path of the job-options file; empty for a name that is not in the file.
    [[nodiscard]] QString jobOptionsFile(const QString &quality) const;

private:
    struct Group
    {
        QString name;
        QList<QPair<QString, QString>> values;
    };

    void takeLine(const QString &line);
    [[nodiscard]] const Group *group(const char *name) const;
    [[nodiscard]] QString value(const char *groupName, const QString &name) const;

    QString m_folder;
    QList<Group> m_groups;
};

} // namespace Quorlin
