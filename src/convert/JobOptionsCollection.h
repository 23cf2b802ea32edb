#pragma once

#include "convert/clsJobOptions.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace Quorlin {

class CompressionChoice;
class IniFile;

/// The job options in the order of the settings file, each name once.
class JobOptionsCollection
{
public:
    /// Takes the group "JobOptions" of the settings; of two entries with one name the first wins.
    /// Without the group the collection stays empty.
    /// @param settings nullptr reads "Quorlin.ini" of the program's folder; when that cannot be
    /// read, the collection is what was read until then.
    void load(const QString &programFolder, const IniFile *settings = nullptr);

    [[nodiscard]] qsizetype Count() const { return m_entries.size(); }

    /// @param index from 1, as the position in the list of choices plus 1.
    /// @return nullptr for an index that there is none of; valid until the next load or refresh.
    [[nodiscard]] const clsJobOptions *Item(qsizetype index) const;

    /// The entry of this very name; nullptr when there is none.
    [[nodiscard]] const clsJobOptions *Item(const QString &name) const;

    [[nodiscard]] QStringList names() const;

    /// Gives every entry the label of its name, and the choice all labels. The selected position
    /// is kept when it still is inside the list.
    void refresh(CompressionChoice &choice, const std::function<QString(const QString &)> &label);

private:
    QList<clsJobOptions> m_entries;
};

} // namespace Quorlin
