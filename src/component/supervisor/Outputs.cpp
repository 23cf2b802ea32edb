#include "component/supervisor/Outputs.h"

#include "component/supervisor/FolderRemoval.h"
#include "component/supervisor/Journal.h"
#include "component/supervisor/OutputNames.h"

#include <QFile>
#include <QMutexLocker>

namespace Quorlin {

Outputs::Outputs(Journal &journal) : m_journal(journal) {}

Outputs::Placed Outputs::place(const QString &from, const QString &folder, const QString &base,
                               const QString &extension, const Output &properties)
{
    constexpr int MostNames = 10'000;
    for (int number = 0; number < MostNames; ++number) {
        const auto path = OutputNames::hiddenName(folder, base, extension, number);
        if (!ExclusiveFile::identityOf(path).isEmpty())
            continue;
        m_journal.planFile(path, from);
        const auto result = ExclusiveFile::publish(from, path, [&] { m_journal.madeFile(path); });
        if (result == ExclusiveFile::Result::Exists)
            continue;
        if (result == ExclusiveFile::Result::Done) {
            auto output = properties;
            output.identity = ExclusiveFile::identityOf(path);
            output.version = ExclusiveFile::versionOf(path);
            output.kept = from;
            const QMutexLocker lock(&m_mutex);
            m_outputs.insert(path, output);
        }
        return {result, path};
    }
    return {ExclusiveFile::Result::Exists, {}};
}

std::optional<Outputs::Output> Outputs::find(const QString &path) const
{
    const QMutexLocker lock(&m_mutex);
    const auto output = m_outputs.constFind(path);
    if (output == m_outputs.cend() || output->version != ExclusiveFile::versionOf(path))
        return std::nullopt;
    return *output;
}

void Outputs::remove(const QString &path)
{
    const QMutexLocker lock(&m_mutex);
    const auto output = m_outputs.constFind(path);
    if (output == m_outputs.cend())
        return;
    // A folder that cannot be written at the moment may let it go later.
    if (output->identity == ExclusiveFile::identityOf(path) && !QFile::remove(path))
        return;
    if (!output->kept.isEmpty())
        QFile::remove(output->kept);
    if (!output->folder.isEmpty())
        FolderRemoval::remove(output->folder);
    m_outputs.erase(output);
}

QStringList Outputs::pathsOf(Step step) const
{
    const QMutexLocker lock(&m_mutex);
    QStringList paths;
    for (auto output = m_outputs.cbegin(); output != m_outputs.cend(); ++output)
        if (output->step == step)
            paths << output.key();
    return paths;
}

void Outputs::clear(Step step)
{
    for (const auto &path : pathsOf(step))
        remove(path);
}

void Outputs::clearAll()
{
    for (const auto step : {Step::Print, Step::Distil, Step::Merge})
        clear(step);
}

} // namespace Quorlin
