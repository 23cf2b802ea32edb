#include "component/backends/postscript/PdfToPs.h"

#include <QProcess>

namespace Quorlin {

namespace {

constexpr int Forever = -1;
constexpr qsizetype MaxMessage = 300;

/// The tool's own way of saying why it ended.
Reason reasonOfExit(int code)
{
    constexpr int CannotOpen = 1;
    constexpr int NotPermitted = 3;
    switch (code) {
    case 0:
        return Reason::None;
    case CannotOpen:
        return Reason::Damaged;
    case NotPermitted:
        return Reason::NotPrintable;
    default:
        return Reason::EngineFailed;
    }
}

} // namespace

PdfToPs::PdfToPs(QString program) : m_program(std::move(program)) {}

Reason PdfToPs::run(const QString &pdf, const Sink &sink)
{
    m_detail.clear();
    QProcess process;
    process.setProgram(m_program);
    process.setArguments({QStringLiteral("-level3"), QStringLiteral("-origpagesizes"),
                          QStringLiteral("-rasterize"), QStringLiteral("never"),
                          QStringLiteral("-q"), pdf, QStringLiteral("-")});
    process.start(QIODevice::ReadOnly);
    if (!process.waitForStarted(Forever)) {
        m_detail = QStringLiteral("poppler-utils (pdftops) is not installed");
        return Reason::ProgramMissing;
    }
    while (process.waitForReadyRead(Forever) || process.bytesAvailable() > 0) {
        if (!sink(process.readAllStandardOutput())) {
            process.kill();
            process.waitForFinished(Forever);
            return Reason::Cancelled;
        }
    }
    process.waitForFinished(Forever);
    if (process.exitStatus() != QProcess::NormalExit) {
        m_detail = QStringLiteral("pdftops crashed");
        return Reason::EngineFailed;
    }
    const auto reason = reasonOfExit(process.exitCode());
    if (reason != Reason::None)
        m_detail = QString::fromUtf8(process.readAllStandardError()).trimmed().left(MaxMessage);
    return reason;
}

} // namespace Quorlin
