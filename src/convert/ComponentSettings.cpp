#include "convert/ComponentSettings.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace Quorlin {

QString ComponentSettings::programBeside()
{
    const auto name = QStringLiteral("quorlin-pdf");
    const auto folder = QFileInfo(QCoreApplication::applicationFilePath()).canonicalPath();
    const auto found = QStandardPaths::findExecutable(name, {folder});
    return found.isEmpty() ? folder + QLatin1Char('/') + name : found;
}

} // namespace Quorlin
