#include "convert/JobOptionsCollection.h"

#include "convert/CompressionChoice.h"
#include "settings/IniFile.h"

#include <algorithm>

namespace Quorlin {

void JobOptionsCollection::load(const QString &programFolder, const IniFile *settings)
{
    IniFile own;
    if (!settings) {
        // An unreadable file is the caller's to report; what was read of it counts.
        static_cast<void>(own.Load(programFolder + QStringLiteral("/Quorlin.ini")));
        settings = &own;
    }
    m_entries.clear();
    for (const auto &var : settings->GetVars(QStringLiteral("JobOptions"))) {
        const auto file = programFolder + QStringLiteral("/Settings/") + var->Value;
        if (!Item(var->Name))
            m_entries.append(clsJobOptions(var->Name, file));
    }
}

const clsJobOptions *JobOptionsCollection::Item(qsizetype index) const
{
    return index < 1 || index > m_entries.size() ? nullptr : &m_entries.at(index - 1);
}

const clsJobOptions *JobOptionsCollection::Item(const QString &name) const
{
    const auto found = std::ranges::find_if(
        m_entries, [&name](const clsJobOptions &entry) { return entry.name() == name; });
    return found == m_entries.end() ? nullptr : &*found;
}

QStringList JobOptionsCollection::names() const
{
    QStringList all;
    for (const auto &entry : m_entries)
        all.append(entry.name());
    return all;
}

void JobOptionsCollection::refresh(CompressionChoice &choice,
                                   const std::function<QString(const QString &)> &label)
{
    const auto selected = choice.position();
    choice.clear();
    for (auto &entry : m_entries) {
        entry.Libelle(label(entry.name()));
        choice.add(entry.Libelle());
    }
    if (selected >= 0 && selected < m_entries.size())
        choice.select(selected);
}

} // namespace Quorlin
