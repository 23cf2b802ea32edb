#include "component/backends/office/EngineSockets.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QString>

#include <unistd.h>

namespace Quorlin::EngineSockets {

namespace {

/// The inodes of all sockets that the process has open.
QSet<QByteArray> socketsOf(qint64 processId)
{
    QSet<QByteArray> inodes;
    const auto folder = QStringLiteral("/proc/%1/fd/").arg(processId);
    const auto entries = QDir(folder).entryList(QDir::AllEntries | QDir::System);
    for (const auto &entry : entries) {
        QByteArray target(64, '\0');
        const auto count = ::readlink(QFile::encodeName(folder + entry).constData(), target.data(),
                                      static_cast<size_t>(target.size()));
        target.truncate(count > 0 ? count : 0);
        if (target.startsWith("socket:[") && target.endsWith(']'))
            inodes.insert(target.sliced(8, target.size() - 9));
    }
    return inodes;
}

} // namespace

void removeNames(qint64 processId)
{
    const auto inodes = socketsOf(processId);
    QFile table(QStringLiteral("/proc/net/unix"));
    if (!table.open(QIODevice::ReadOnly))
        return;
    // Columns: address, references, protocol, flags, type, state, inode, path
    for (auto line = table.readLine(); !line.isEmpty(); line = table.readLine()) {
        const auto columns = line.simplified().split(' ');
        if (columns.size() == 8 && columns[7].startsWith('/') && inodes.contains(columns[6]))
            ::unlink(columns[7].constData());
    }
}

} // namespace Quorlin::EngineSockets
