#pragma once

#include <QFileInfo>
#include <QString>

#include <functional>
#include <stop_token>

namespace Quorlin {

/// What lies below a folder, in one order for every way in. May be used from any thread; blocks
/// as long as the file system does.
namespace FolderWalk {

using Visitor = std::function<void(const QString &file)>;

/// What a folder holds, in natural order: files and folders, and links to them. Hidden entries,
/// devices, pipes, links that lead nowhere and names that are not UTF-8 are passed over.
/// @return empty for a folder that is not there or may not be read, and after a stop.
[[nodiscard]] QFileInfoList entries(const QString &folder, const std::stop_token &stop = {});

/// Visits every file below a folder with its full path: the files of a folder before those of
/// its sub-folders, depth first. Links to folders are not followed, except `folder` itself.
/// @param stop ends the walk before the next entry.
void walk(const QString &folder, const Visitor &visit, const std::stop_token &stop = {});

} // namespace FolderWalk

} // namespace Quorlin
