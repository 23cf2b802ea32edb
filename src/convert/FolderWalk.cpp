#include "convert/FolderWalk.h"

#include "convert/NaturalOrder.h"

#include <QDir>
#include <QDirIterator>
#include <QStringList>

#include <algorithm>
#include <utility>
#include <vector>

namespace Quorlin::FolderWalk {

namespace {

/// Visits the files of one folder. @return its sub-folders, the last one first.
QStringList visitFiles(const QString &folder, const Visitor &visit, const std::stop_token &stop)
{
    QStringList subFolders;
    for (const auto &entry : entries(folder, stop)) {
        if (stop.stop_requested())
            return {};
        if (!entry.isDir())
            visit(entry.filePath());
        else if (!entry.isSymLink())
            subFolders.prepend(entry.filePath());
    }
    return subFolders;
}

} // namespace

QFileInfoList entries(const QString &folder, const std::stop_token &stop)
{
    std::vector<std::pair<QString, QFileInfo>> found;
    QDirIterator iterator(folder, QDir::AllEntries | QDir::NoDotAndDotDot);
    while (iterator.hasNext() && !stop.stop_requested()) {
        iterator.next();
        const auto entry = iterator.fileInfo();
        if (entry.isFile() || entry.isDir())
            found.emplace_back(entry.fileName(), entry);
    }
    if (stop.stop_requested())
        return {};
    std::ranges::sort(found, NaturalOrder::less, &std::pair<QString, QFileInfo>::first);
    QFileInfoList sorted;
    sorted.reserve(qsizetype(found.size()));
    for (const auto &entry : found)
        sorted.append(entry.second);
    return sorted;
}

void walk(const QString &folder, const Visitor &visit, const std::stop_token &stop)
{
    QStringList waiting(QDir(folder).absolutePath());
    while (!waiting.isEmpty() && !stop.stop_requested())
        waiting.append(visitFiles(waiting.takeLast(), visit, stop));
}

} // namespace Quorlin::FolderWalk
