#include "skin/OfficeMetafiles.h"

#include "skin/PointReader.h"
#include "skin/TimedProcess.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

namespace Quorlin {

OfficeMetafiles::OfficeMetafiles(const QString &program, std::chrono::milliseconds limit)
    : m_program(program), m_limit(limit)
{
}

QByteArray OfficeMetafiles::render(const QByteArray &content, PictureFormat format) const
{
    const auto program =
        m_program.isEmpty() ? QStandardPaths::findExecutable(QStringLiteral("soffice")) : m_program;
    const QTemporaryDir folder;
    QFile in(folder.filePath(QLatin1String("picture.") + QLatin1String(readerName(format))));
    if (program.isEmpty() || !in.open(QIODevice::WriteOnly) ||
        in.write(content) != content.size() || !in.flush())
        return {};
    const auto profile = QUrl::fromLocalFile(folder.filePath(QStringLiteral("profile")))
                             .toString(QUrl::FullyEncoded);
    const TimedProcess process{program,
                               {QLatin1String("-env:UserInstallation=") + profile,
                                QStringLiteral("--headless"), QStringLiteral("--norestore"),
                                QStringLiteral("--nolockcheck"), QStringLiteral("--convert-to"),
                                QStringLiteral("png"), QStringLiteral("--outdir"), folder.path(),
                                in.fileName()},
                               m_limit};
    QFile out(folder.filePath(QStringLiteral("picture.png")));
    if (!process.run(Waiting::WithEvents) || !out.open(QIODevice::ReadOnly))
        return {};
    return out.read(PointReader::MostBytes);
}

} // namespace Quorlin
