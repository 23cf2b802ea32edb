#include "skin/SvgProcess.h"

#include "skin/PointReader.h"
#include "skin/TimedProcess.h"

#include <QFile>
#include <QTemporaryDir>

namespace Quorlin {

SvgProcess::SvgProcess(const QString &program) : SvgProcess(program, Limits{}) {}

SvgProcess::SvgProcess(const QString &program, const Limits &limits)
    : m_program(program), m_limits(limits)
{
}

QImage SvgProcess::render(const QByteArray &svg, const QSize &pixels, Waiting waiting) const
{
    const QTemporaryDir folder;
    QFile in(folder.filePath(QStringLiteral("in.svg")));
    if (!in.open(QIODevice::WriteOnly) || in.write(svg) != svg.size() || !in.flush())
        return {};
    QFile out(folder.filePath(QStringLiteral("out.png")));
    QStringList arguments{in.fileName(), out.fileName()};
    if (!pixels.isEmpty())
        arguments << QString::number(pixels.width()) << QString::number(pixels.height());
    const TimedProcess process{m_program, arguments,
                               waiting == Waiting::WithEvents ? m_limits.withEvents
                                                              : m_limits.still};
    if (!process.run(waiting) || !out.open(QIODevice::ReadOnly))
        return {};
    // A picture without much compression is larger than any file of a skin may be.
    return PointReader::read(out.readAll(), PictureFormat::Png);
}

} // namespace Quorlin
