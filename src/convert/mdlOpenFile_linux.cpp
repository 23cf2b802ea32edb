#include "convert/mdlOpenFile.h"

#include <QFileInfo>
#include <QProcess>

namespace Quorlin::mdlOpenFile {

namespace {

/// @param what an absolute path or an address: the program starts in the root folder, and a name
/// that begins with "-" must not become an option.
int open(const QString &what)
{
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({what});
    opener.setWorkingDirectory(QStringLiteral("/"));
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    return opener.startDetached() ? Opened : NoAssociation;
}

} // namespace

int ShellOpenFile(const QString &fileName)
{
    const QFileInfo file(fileName);
    if (!file.exists())
        return FileNotFound;
    return open(file.absoluteFilePath());
}

int ShellOpenAddress(const QString &address)
{
    return open(address);
}

} // namespace Quorlin::mdlOpenFile
