#include "tool/ShownPath.h"

#include <QDir>

namespace Quorlin {

QString shownPath(const QString &path)
{
    const auto relative = QDir::current().relativeFilePath(path);
    return relative.startsWith(QLatin1String("../")) ? path : relative;
}

} // namespace Quorlin
