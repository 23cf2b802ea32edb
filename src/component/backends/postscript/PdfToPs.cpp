#include "component/backends/postscript/PdfToPs.h"

#include "component/confinement/ChildSetUp.h"
#include "component/confinement/Confinement.h"

#include <QProcess>
#include <QStandardPaths>

#include <memory>

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

/// How the tool and the library of its language end when memory cannot be had.
bool ranOutOfMemory(const QByteArray &message)
{
    return message.contains("bad_alloc") || message.contains("Out of memory");
}

void confine(QProcess &process, const QString &pdf)
{
    auto boundaries = Boundaries::around({});
    boundaries.readable << pdf;
    boundaries.writable.clear();
    boundaries.runnable = {process.program()};
    const auto confinement = std::make_shared<const Confinement>(boundaries);
    // Runs in the child between fork and exec: only async-signal-safe calls.
    process.setChildProcessModifier([confinement, parent = ChildSetUp::thisProcess()] {
        ChildSetUp::begin(parent);
        if (!confinement->enter())
            Confinement::abandon();
    });
}

} // namespace

QString PdfToPs::find()
{
    return QStandardPaths::findExecutable(QStringLiteral("pdftops"));
}

PdfToPs::PdfToPs(QString program) : m_program(std::move(program)) {}

Reason PdfToPs::run(const QString &pdf, const Sink &sink)
{
    m_detail.clear();
    QProcess process;
    process.setProgram(m_program);
    process.setArguments({QStringLiteral("-level3"), QStringLiteral("-origpagesizes"),
                          QStringLiteral("-rasterize"), QStringLiteral("never"),
                          QStringLiteral("-q"), pdf, QStringLiteral("-")});
    confine(process, pdf);
    if (!m_program.isEmpty())
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
    const auto message = process.readAllStandardError();
    if (ranOutOfMemory(message))
        return Reason::OutOfMemory;
    if (process.exitStatus() != QProcess::NormalExit) {
        m_detail = QStringLiteral("pdftops crashed");
        return Reason::EngineFailed;
    }
    const auto reason = reasonOfExit(process.exitCode());
    if (reason != Reason::None)
        m_detail = QString::fromUtf8(message).trimmed().left(MaxMessage);
    return reason;
}

} // namespace Quorlin
