#include "tool/Options.h"

#include <QDir>
#include <QFileInfo>

namespace Quorlin {

QString Options::mergeTarget() const
{
    const QDir folder(outputFolder.isEmpty() ? QDir::currentPath() : outputFolder);
    return merges() ? QDir::cleanPath(QDir(folder.absolutePath()).absoluteFilePath(mergeFile))
                    : QString();
}

QString Options::inconsistency() const
{
    if (action != Action::Convert)
        return {};
    if (inputs.isEmpty())
        return QStringLiteral("no documents given");
    if (merges() && QFileInfo(mergeTarget()).isDir())
        return QStringLiteral("the merged file %1 is a folder").arg(mergeFile);
    if (!outputFolder.isEmpty() && QFileInfo::exists(outputFolder) &&
        !QFileInfo(outputFolder).isDir())
        return QStringLiteral("the output folder %1 is a file").arg(outputFolder);
    if (merges() && !reportFile.isEmpty() && !reportsToOutput() &&
        QDir::cleanPath(QDir::current().absoluteFilePath(reportFile)) == mergeTarget())
        return QStringLiteral("the report and the merged file have the same name");
    if (quiet && verbose)
        return QStringLiteral("--quiet and --verbose exclude each other");
    return {};
}

} // namespace Quorlin
