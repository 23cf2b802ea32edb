#include "convert/mdlOpenFile.h"

#include <QFileInfo>
#include <QProcess>

namespace Quorlin::mdlOpenFile {

int ShellOpenFile(const QString &fileName)
{
    const QFileInfo file(fileName);
    if (!file.exists())
        return FileNotFound;
    // An absolute path: the program starts in the root folder, and a name that begins with "-"
    // must not become an option.
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({file.absoluteFilePath()});
    opener.setWorkingDirectory(QStringLiteral("/"));
    opener.setStandardInputFile(QProcess::nullDevice());
    opener.setStandardOutputFile(QProcess::nullDevice());
    opener.setStandardErrorFile(QProcess::nullDevice());
    return opener.startDetached() ? Opened : NoAssociation;
}

} // namespace Quorlin::mdlOpenFile
