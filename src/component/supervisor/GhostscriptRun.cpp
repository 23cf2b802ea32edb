#include "component/supervisor/GhostscriptRun.h"

#include "component/confinement/DiskRoom.h"
#include "component/supervisor/PdfFile.h"

#include <QProcessEnvironment>
#include <QStandardPaths>

namespace Quorlin {

namespace {

constexpr qint64 LittleRoom = 1024 * 1024; ///< bytes

} // namespace

GhostscriptRun::GhostscriptRun(QObject *parent) : Worker(parent), m_lines(64 * 1024) {}

void GhostscriptRun::prepareProcess(QProcess &process, const QString &folder,
                                    const QStringList &arguments)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), folder);
    // Options smuggled in through the environment could lift SAFER.
    environment.remove(QStringLiteral("GS_OPTIONS"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    // What it complains about comes through the answers; the rest would only fill the log.
    process.setProcessChannelMode(QProcess::MergedChannels);
    // A name that is nowhere fails to start, which says that it is missing.
    const auto found = program();
    process.setProgram(found.isEmpty() ? QStringLiteral("gs") : found);
    process.setArguments(arguments);
}

std::shared_ptr<const Confinement> GhostscriptRun::confinementIn(const QString &folder)
{
    auto boundaries = Boundaries::around(folder);
    boundaries.runnable = {program()};
    return std::make_shared<const Confinement>(boundaries);
}

QString GhostscriptRun::program()
{
    return QStandardPaths::findExecutable(QStringLiteral("gs"));
}

WorkerAnswer GhostscriptRun::failureOf(const QByteArray &errorName)
{
    const auto name = QString::fromLatin1(errorName);
    if (errorName == "VMerror")
        return {Reason::OutOfMemory, {}, {}, true};
    if (errorName == "ioerror")
        return {Reason::NoRoom, tr("the result could not be written"), {}, true};
    if (errorName == "invalidfileaccess")
        return {
            Reason::Damaged, tr("the PostScript tries to reach files (%1)").arg(name), {}, true};
    return {Reason::Damaged, tr("the PostScript is faulty (%1)").arg(name), {}, true};
}

WorkerAnswer GhostscriptRun::badOptions(const QByteArray &errorName)
{
    return {Reason::BadOptions,
            tr("the job-options file is faulty (%1)").arg(QString::fromLatin1(errorName)),
            {},
            true};
}

QString GhostscriptRun::name()
{
    return QStringLiteral("Ghostscript (gs)");
}

void GhostscriptRun::prepare(QProcess &process)
{
    const bool printed = request().value(QLatin1String("printed")).toBool();
    const auto arguments = GhostscriptCommand::oneFile(
        folder(), path(QLatin1String("options")), path(QLatin1String("input")),
        path(QLatin1String("output")),
        printed ? PostScriptOrigin::Printed : PostScriptOrigin::Foreign);
    prepareProcess(process, folder(), arguments);
}

QString GhostscriptRun::path(QLatin1String key) const
{
    return request().value(key).toString();
}

void GhostscriptRun::read(const QByteArray &bytes)
{
    m_lines.append(bytes);
    while (const auto line = m_lines.takeLine())
        handle(*line);
}

void GhostscriptRun::handle(const QByteArray &line)
{
    static const QByteArray pageMark(GhostscriptCommand::PagesMark);
    static const QByteArray errorMark("Error: /");
    if (line.endsWith(GhostscriptCommand::OptionsMark))
        m_optionsRead = true;
    if (line.startsWith(pageMark)) {
        m_pages = line.sliced(pageMark.size()).trimmed().toInt();
    } else if (const auto at = line.indexOf(errorMark); at >= 0 && m_error.isEmpty()) {
        m_error = line.sliced(at + errorMark.size()).split(' ').first();
    }
}

WorkerAnswer GhostscriptRun::exited(int exitCode, QProcess::ExitStatus status)
{
    if (status != QProcess::NormalExit)
        return {Reason::EngineFailed, {}, {}, true};
    if (!m_error.isEmpty() && !m_optionsRead)
        return badOptions(m_error);
    // A program that somebody gave us may fail in this way at files that it may not touch.
    const bool printed = request().value(QLatin1String("printed")).toBool();
    if (!printed && m_error == "ioerror" && !DiskRoom::isShort(folder(), LittleRoom))
        return {Reason::Damaged, tr("the PostScript is faulty (ioerror)"), {}, true};
    if (!m_error.isEmpty())
        return failureOf(m_error);
    if (exitCode != 0)
        return {Reason::EngineFailed, {}, {}, true};
    if (m_pages == 0)
        return {Reason::NothingPrinted, {}, {}, true};
    if (!PdfFile::looksWhole(path(QLatin1String("output"))))
        return {Reason::EngineFailed, {}, {}, true};
    // A program that quits by itself never lets us ask for the pages.
    return {Reason::None,
            {},
            m_pages < 0 ? QJsonObject{} : QJsonObject{{QStringLiteral("pages"), m_pages}},
            true};
}

} // namespace Quorlin
