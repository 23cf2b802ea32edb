#include "winsupport/DrivePath.h"

#include <QDir>
#include <QStringList>

namespace Quorlin {

namespace {

bool startsOnDriveC(const QString &path)
{
    const auto separator = path.size() > 2 ? path.at(2) : QChar();
    return path.startsWith(QLatin1String("c:"), Qt::CaseInsensitive) &&
           (separator == u'\\' || separator == u'/');
}

/// The names from the root on; ".." above the root leads nowhere.
QStringList namesOf(QString path)
{
    QStringList names;
    const auto parts = path.replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
    for (const auto &part : parts) {
        if (part == QLatin1String("..")) {
            if (!names.isEmpty())
                names.removeLast();
        } else if (part != QLatin1String(".")) {
            names.append(part);
        }
    }
    return names;
}

} // namespace

QString drivePath(const QString &windowsPath)
{
    const auto drive = qEnvironmentVariable("QUORLIN_DRIVE_C");
    if (!startsOnDriveC(windowsPath) || !QDir::isAbsolutePath(drive))
        return {};
    return QDir(drive).filePath(namesOf(windowsPath.mid(3)).join(u'/'));
}

} // namespace Quorlin
