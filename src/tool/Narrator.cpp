#include "tool/Narrator.h"

#include "tool/Console.h"
#include "tool/ShownPath.h"
#include "tool/Summary.h"

#include <QSaveFile>

#include <cerrno>
#include <system_error>

namespace Quorlin {

Narrator::Narrator(Console &console, const Options &options)
    : m_console(console), m_options(options), m_progress(console, options.quiet)
{
}

void Narrator::complain(const QString &text)
{
    m_progress.hide();
    m_console.complain(text);
}

void Narrator::log(const QString &line)
{
    m_progress.hide();
    m_console.note(QStringLiteral("quorlin-pdf: ") + line);
}

void Narrator::waitForTyping()
{
    if (!m_options.quiet)
        m_console.note(
            QStringLiteral("Names of documents are read from the terminal; Ctrl+D ends them."));
}

void Narrator::tellFailure(const DocumentRecord &document)
{
    complain(QStringLiteral("%1: %2").arg(shownPath(document.input), document.failure()));
    if (m_options.quiet || m_advised.contains(document.reason))
        return;
    m_advised.append(document.reason);
    m_console.note(QStringLiteral("    ") + reasonAdvice(document.reason));
}

void Narrator::tellResult(const DocumentRecord &document)
{
    tell(QStringLiteral("%1 -> %2").arg(shownPath(document.input), shownPath(document.output)));
}

void Narrator::tellMerged(const Report &report)
{
    const auto count = report.documents.size() - report.failures();
    const auto noun = count == 1 ? QStringLiteral("document") : QStringLiteral("documents");
    tell(QStringLiteral("%1 %2 -> %3")
             .arg(QString::number(count), noun, shownPath(report.mergedFile)));
}

void Narrator::tell(const QString &line)
{
    m_progress.hide();
    if (!m_options.quiet && !m_options.summary && !m_options.reportsToOutput())
        m_console.print(line);
}

void Narrator::conclude(const Report &report)
{
    m_progress.hide();
    if (m_options.summary)
        tellTable(report);
    else if (!m_options.quiet && report.documents.size() > 1)
        m_console.note(Summary::totalsOf(report));
}

void Narrator::tellTable(const Report &report)
{
    const bool toError = m_options.reportsToOutput();
    const auto width = toError ? m_console.errorWidth() : m_console.outputWidth();
    for (const auto &line : Summary::linesOf(report, width))
        toError ? m_console.note(line) : m_console.print(line);
}

bool Narrator::everythingArrived()
{
    const auto error = m_console.lostOutput();
    if (!error.isEmpty())
        complain(QStringLiteral("standard output cannot be written: %1").arg(error));
    return error.isEmpty();
}

bool Narrator::writeReport(const Report &report)
{
    const auto bytes = report.toJson();
    m_progress.hide();
    if (!m_options.reportsToOutput())
        return writeReportFile(bytes);
    if (m_console.writeOutput(bytes))
        return true;
    complain(QStringLiteral("the report cannot be written: %1")
                 .arg(QString::fromStdString(std::generic_category().message(errno))));
    return false;
}

bool Narrator::writeReportFile(const QByteArray &bytes)
{
    QSaveFile file(m_options.reportFile);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    complain(QStringLiteral("the report %1 cannot be written: %2")
                 .arg(m_options.reportFile, file.errorString()));
    return false;
}

} // namespace Quorlin
