#include "component/backends/office/EngineInstallation.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace Quorlin {

namespace {

QString readBuildId(const QString &versionFile)
{
    QFile file(versionFile);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray key("buildid=");
    while (!file.atEnd()) {
        const auto line = file.readLine().trimmed();
        if (line.startsWith(key))
            return QString::fromUtf8(line.sliced(key.size()));
    }
    return {};
}

} // namespace

std::optional<EngineInstallation> EngineInstallation::find()
{
    const auto launcher = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (launcher.isEmpty())
        return std::nullopt;
    EngineInstallation found{QFileInfo(QFileInfo(launcher).canonicalFilePath()).path(), {}};
    const auto rules = found.programFolder + QStringLiteral("/fundamentalrc");
    if (!QFileInfo(found.program()).isExecutable() || !QFileInfo::exists(rules))
        return std::nullopt;
    found.buildId = readBuildId(found.programFolder + QStringLiteral("/versionrc"));
    return found;
}

QString EngineInstallation::program() const
{
    return programFolder + QStringLiteral("/soffice.bin");
}

QString EngineInstallation::bootstrap() const
{
    return QStringLiteral("vnd.sun.star.pathname:%1/fundamentalrc").arg(programFolder);
}

} // namespace Quorlin
