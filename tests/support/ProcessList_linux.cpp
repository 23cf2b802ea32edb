#include "support/ProcessList.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QFileInfo>

namespace Quorlin {

namespace {

bool hasVariable(const QString &folder, const QByteArray &variable)
{
    const auto environment = contentOf(folder + QStringLiteral("/environ"));
    return environment.startsWith(variable + '\0') || environment.contains('\0' + variable + '\0');
}

qint64 parentIn(const QString &folder)
{
    // The parent follows the state, which follows the name in brackets.
    const auto line = contentOf(folder + QStringLiteral("/stat"));
    return line.mid(line.lastIndexOf(')') + 2).split(' ').value(1).toLongLong();
}

RunningProcess look(const QString &folder, qint64 id)
{
    RunningProcess process;
    process.id = id;
    process.parent = parentIn(folder);
    process.name = QFileInfo(QFile::symLinkTarget(folder + QStringLiteral("/exe"))).fileName();
    process.commandLine = contentOf(folder + QStringLiteral("/cmdline"));
    return process;
}

} // namespace

QList<RunningProcess> ProcessList::withVariable(const QByteArray &name, const QByteArray &value)
{
    QList<RunningProcess> found;
    const QDir all(QStringLiteral("/proc"));
    for (const auto &entry : all.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort)) {
        const auto id = entry.toLongLong();
        const auto folder = all.filePath(entry);
        if (id > 1 && hasVariable(folder, name + '=' + value) && SystemActions::isRunning(id))
            found.append(look(folder, id));
    }
    return found;
}

} // namespace Quorlin
