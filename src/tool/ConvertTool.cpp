#include "tool/ConvertTool.h"

#include "tool/Console.h"
#include "tool/DocumentGatherer.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace Quorlin {

namespace {

/// A path as people like to read it: relative when it lies below the current folder.
QString shown(const QString &path)
{
    const auto relative = QDir::current().relativeFilePath(path);
    return relative.startsWith(QLatin1String("../")) ? path : relative;
}

} // namespace

ConvertTool::ConvertTool(const Options &options, Console &console, const QString &programFolder,
                         const ComponentSettings &component, QObject *parent)
    : QObject(parent), m_options(options), m_console(console), m_programFolder(programFolder),
      m_settings(ConversionSettings::load(programFolder)), m_progress(console, options.quiet),
      m_client(component)
{
    if (options.verbose) {
        connect(&m_client, &ComponentClient::logged, this, [this](const QString &line) {
            m_progress.hide();
            m_console.note(QStringLiteral("quorlin-pdf: ") + line);
        });
    }
}

ConvertTool::~ConvertTool() = default;

void ConvertTool::start()
{
    if (!m_settings) {
        giveUp(SomeFailed, QStringLiteral("%1/Quorlin.ini cannot be read").arg(m_programFolder));
        return;
    }
    gather();
    const auto &folder = m_options.outputFolder;
    if (const auto error = wrongUse(); !error.isEmpty())
        giveUp(WrongUse, error);
    else if (m_report.documents.isEmpty())
        giveUp(SomeFailed, QStringLiteral("there is nothing to convert"));
    else if (!folder.isEmpty() && !QDir().mkpath(folder))
        giveUp(SomeFailed, QStringLiteral("the folder %1 cannot be made").arg(folder));
    else
        convert();
}

void ConvertTool::giveUp(int exitCode, const QString &text)
{
    m_console.complain(text);
    end(exitCode);
}

QString ConvertTool::wrongUse() const
{
    if (!m_settings->jobOptions.Item(m_options.quality))
        return QStringLiteral("there is no quality \"%1\"; there are: %2")
            .arg(m_options.quality, m_settings->jobOptions.names().join(QStringLiteral(", ")));
    if (m_options.merges() && m_delivery->isInput(m_options.mergeTarget()))
        return QStringLiteral("the merged file would overwrite the document %1")
            .arg(m_options.mergeFile);
    if (!m_options.reportFile.isEmpty() && m_delivery->isInput(m_options.reportFile))
        return QStringLiteral("the report would overwrite the document %1")
            .arg(m_options.reportFile);
    return {};
}

void ConvertTool::gather()
{
    DocumentGatherer gatherer;
    m_report.quality = m_options.quality;
    m_report.merges = m_options.merges();
    m_report.documents = gatherer.gather(m_options.inputs, m_options.merges());
    for (const auto &remark : gatherer.remarks())
        m_console.complain(remark);
    QStringList inputs;
    for (const auto &document : m_report.documents)
        inputs.append(document.input);
    m_delivery.emplace(m_options.outputFolder, inputs);
}

void ConvertTool::convert()
{
    for (const auto &document : m_report.documents) {
        if (document.failed())
            complainAbout(document);
    }
    const ConvertJob::Plan plan{m_settings->printerName,
                                m_settings->jobOptions.Item(m_options.quality)->Filename(),
                                m_options.merges(), m_options.limits};
    m_job = std::make_unique<ConvertJob>(m_client, plan, m_report.documents);
    connect(m_job.get(), &ConvertJob::stageChanged, this,
            [this](const QString &text) { m_progress.setStage(text); });
    connect(m_job.get(), &ConvertJob::progressed, this,
            [this](int percent) { m_progress.setPercent(percent); });
    connect(m_job.get(), &ConvertJob::documentFailed, this, &ConvertTool::complainAbout);
    connect(m_job.get(), &ConvertJob::finished, this, &ConvertTool::deliver);
    m_job->start();
}

void ConvertTool::interrupt(int number)
{
    if (m_over)
        return;
    m_progress.hide();
    m_console.complain(QStringLiteral("interrupted"));
    if (m_job) {
        m_job->cancel();
        m_report.documents = m_job->documents();
    }
    end(InterruptedBase + number);
}

void ConvertTool::deliver()
{
    m_report.documents = m_job->documents();
    if (m_options.merges())
        deliverMerged();
    else
        deliverEach();
    end(m_report.failures() > 0 ? SomeFailed : Done);
}

void ConvertTool::deliverMerged()
{
    const auto file = m_job->mergedFile();
    if (file.isEmpty())
        return;
    const auto target = m_options.mergeTarget();
    const auto outcome = m_delivery->deliver(file, target);
    if (outcome.reason != Reason::None) {
        failAll(outcome);
        return;
    }
    m_report.mergedFile = target;
    for (auto &document : m_report.documents) {
        if (!document.failed())
            document.output = target;
    }
    tell(QStringLiteral("%1 documents -> %2")
             .arg(m_report.documents.size() - m_report.failures())
             .arg(shown(target)));
}

void ConvertTool::deliverEach()
{
    for (auto &document : m_report.documents) {
        if (!document.failed())
            deliverOne(document);
    }
}

void ConvertTool::deliverOne(DocumentRecord &document)
{
    const auto target = m_delivery->reserveName(document.printed);
    const auto outcome = m_delivery->deliver(document.distilled, target);
    document.seconds = m_job->seconds();
    document.reason = outcome.reason;
    document.text = outcome.text;
    if (document.failed()) {
        complainAbout(document);
        return;
    }
    document.output = target;
    tell(QStringLiteral("%1 -> %2").arg(shown(document.input), shown(target)));
}

void ConvertTool::failAll(const Delivery::Outcome &outcome)
{
    for (auto &document : m_report.documents) {
        if (document.failed())
            continue;
        document.reason = outcome.reason;
        document.text = outcome.text;
        complainAbout(document);
    }
}

void ConvertTool::complainAbout(const DocumentRecord &document)
{
    m_progress.hide();
    m_console.complain(QStringLiteral("%1: %2").arg(shown(document.input), document.text));
}

void ConvertTool::tell(const QString &line)
{
    m_progress.hide();
    if (!m_options.quiet && !m_options.reportsToOutput())
        m_console.print(line);
}

void ConvertTool::end(int exitCode)
{
    m_over = true;
    m_progress.hide();
    m_report.seconds = m_job ? m_job->seconds() : 0;
    const bool wanted = !m_options.reportFile.isEmpty() && exitCode != WrongUse;
    if (wanted && !writeReport() && exitCode == Done)
        exitCode = SomeFailed;
    Q_EMIT finished(exitCode);
}

bool ConvertTool::writeReport()
{
    const auto bytes = m_report.toJson();
    if (m_options.reportsToOutput()) {
        if (m_console.writeOutput(bytes))
            return true;
        m_console.complain(QStringLiteral("the report cannot be written"));
        return false;
    }
    QSaveFile file(m_options.reportFile);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    m_console.complain(QStringLiteral("the report %1 cannot be written: %2")
                           .arg(m_options.reportFile, file.errorString()));
    return false;
}

} // namespace Quorlin
