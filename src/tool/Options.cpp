#include "tool/Options.h"

#include "component/protocol/Acceptance.h"
#include "tool/FileNames.h"

#include <QDir>
#include <QFileInfo>

namespace Quorlin {

namespace {

/// Whether a result under this name would most likely replace somebody's document. Reports may
/// well be called ".txt".
bool isDocument(const QString &name)
{
    const auto entrance = Acceptance::entranceOf(name);
    const auto isText = name.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive);
    return entrance == Entrance::PostScript || (entrance == Entrance::Office && !isText);
}

} // namespace

QString Options::mergeTarget() const
{
    const auto folder =
        outputFolder.isEmpty() ? QDir::currentPath() : FileNames::fullPath(outputFolder);
    return merges() ? FileNames::fullPath(mergeFile, folder) : QString();
}

QString Options::inconsistency() const
{
    if (action != Action::Convert)
        return {};
    for (const auto &name : lists + QStringList{mergeFile, outputFolder, reportFile}) {
        if (!FileNames::isUtf8(name))
            return QStringLiteral("the name %1 is not UTF-8").arg(FileNames::legible(name));
    }
    const auto inNames = wrongNames();
    return inNames.isEmpty() ? wrongTargets() : inNames;
}

QString Options::wrongNames() const
{
    if (inputs.isEmpty() && lists.isEmpty() && QFileInfo::exists(quality))
        return QStringLiteral("no documents given: -q took %1 as the name of a quality; to hear "
                              "less there is --quiet")
            .arg(quality);
    if (inputs.isEmpty() && lists.isEmpty())
        return QStringLiteral("no documents given");
    if (inputs.contains(QString()))
        return QStringLiteral("the name of a document is empty");
    if (inputs.contains(QLatin1String("-")))
        return QStringLiteral("\"-\" is no document; a file of that name is \"./-\", and names on "
                              "standard input are read with \"--files-from -\"");
    if (lists.contains(QString()))
        return QStringLiteral("--files-from needs a value");
    if (lists.count(QStringLiteral("-")) > 1)
        return QStringLiteral("standard input can be read only once");
    if (listsHoldNul && lists.isEmpty())
        return QStringLiteral("--null is about the names of --files-from, which is missing");
    if (quiet && verbose)
        return QStringLiteral("--quiet and --verbose exclude each other");
    return {};
}

QString Options::wrongTargets() const
{
    if (merges() && QFileInfo(mergeTarget()).isDir())
        return QStringLiteral("the merged file %1 is a folder").arg(mergeFile);
    if (merges() && isDocument(mergeFile))
        return QStringLiteral("the merged file %1 has the name of a document; -m needs the name of "
                              "a new PDF first")
            .arg(mergeFile);
    if (isDocument(reportFile) || Acceptance::entranceOf(reportFile) == Entrance::Pdf)
        return QStringLiteral("the report %1 has the name of a document; --json needs the name of "
                              "a report first")
            .arg(reportFile);
    if (!outputFolder.isEmpty() && QFileInfo::exists(outputFolder) &&
        !QFileInfo(outputFolder).isDir())
        return QStringLiteral("the output folder %1 is a file").arg(outputFolder);
    if (merges() && !reportFile.isEmpty() && !reportsToOutput() &&
        FileNames::fullPath(reportFile) == mergeTarget())
        return QStringLiteral("the report and the merged file have the same name");
    return {};
}

} // namespace Quorlin
