#pragma once

#include <QString>

namespace Quorlin::mdlOpenFile {

/// Opens a file with the program that the desktop has for its type: in the root folder, in a
/// window of ordinary size, without waiting for it.
/// @param fileName a path, never an address or an option of a program.
/// @return above 32 when opening was begun; 2 when there is no such file, 31 when this desktop
/// has no way to open files. What the opened program does with it is not known.
int ShellOpenFile(const QString &fileName);

/// Opens a web page with the desktop's browser, in the same way.
/// @param address of a page, never a path or an option of a program; it is handed on as it is.
/// @return above 32 when opening was begun; 31 when this desktop has no way to open pages.
int ShellOpenAddress(const QString &address);

/// The answers, in the numbers that a shell gives.
enum ShellResult { FileNotFound = 2, NoAssociation = 31, Opened = 42 };

} // namespace Quorlin::mdlOpenFile
