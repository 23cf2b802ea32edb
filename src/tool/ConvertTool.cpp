#include "tool/ConvertTool.h"

#include "tool/DocumentGatherer.h"
#include "tool/Forecast.h"

#include <QDir>
#include <QFileInfo>

namespace Quorlin {

namespace {

NameList::Separator separatorOf(const Options &options)
{
    return options.listsHoldNul ? NameList::Separator::Nul : NameList::Separator::LineFeed;
}

} // namespace

ConvertTool::ConvertTool(const Options &options, Console &console, const QString &programFolder,
                         const ComponentSettings &component, QObject *parent)
    : QObject(parent), m_options(options), m_programFolder(programFolder),
      m_settings(ConversionSettings::load(programFolder)), m_narrator(console, options),
      m_lists(options.lists, separatorOf(options)), m_client(component)
{
    m_report.quality = options.quality;
    m_report.merges = options.merges();
    m_report.dryRun = options.dryRun;
    connect(&m_lists, &ListReader::waitsForTyping, this, [this] { m_narrator.waitForTyping(); });
    connect(&m_lists, &ListReader::failed, this,
            [this](const QString &text) { giveUp(WrongUse, text); });
    connect(&m_lists, &ListReader::finished, this, [this](const QStringList &names) {
        m_options.inputs.append(names);
        begin();
    });
    if (!options.quiet)
        connect(&m_client, &ComponentClient::noticed, this,
                [this](const QString &text) { m_narrator.complain(text); });
    if (options.verbose)
        connect(&m_client, &ComponentClient::logged, this,
                [this](const QString &line) { m_narrator.log(line); });
}

ConvertTool::~ConvertTool() = default;

void ConvertTool::start()
{
    if (!m_settings)
        giveUp(SomeFailed, QStringLiteral("%1/Quorlin.ini cannot be read").arg(m_programFolder));
    else if (!QFileInfo::exists(QDir::currentPath()))
        giveUp(SomeFailed, QStringLiteral("the current folder is gone or its name is not UTF-8; go "
                                          "to another one first"));
    else if (m_options.lists.isEmpty())
        begin();
    else
        m_lists.start();
}

void ConvertTool::begin()
{
    if (m_over)
        return;
    gather();
    if (const auto error = wrongUse(); !error.isEmpty())
        giveUp(WrongUse, error);
    else if (m_report.documents.isEmpty())
        giveUp(SomeFailed, QStringLiteral("there is nothing to convert"));
    else if (m_options.dryRun)
        forecast();
    else if (const auto obstacle = obstacleToAll(); obstacle.reason != Reason::None)
        giveUpAll(obstacle);
    else
        convert();
}

Delivery::Outcome ConvertTool::obstacleToAll() const
{
    const auto &folder = m_options.outputFolder;
    if (!folder.isEmpty() && !QDir().mkpath(folder))
        return {Reason::NotAllowed, QStringLiteral("the folder %1 cannot be made").arg(folder)};
    if (m_options.merges())
        return Delivery::obstacleAt(m_options.mergeTarget());
    return folder.isEmpty() ? Delivery::Outcome() : Delivery::obstacleIn(folder);
}

void ConvertTool::giveUpAll(const Delivery::Outcome &obstacle)
{
    for (auto &document : m_report.documents) {
        if (document.failed())
            continue;
        document.reason = obstacle.reason;
        document.detail = obstacle.text;
    }
    giveUp(SomeFailed, obstacle.text);
}

void ConvertTool::giveUp(int exitCode, const QString &text)
{
    if (m_over)
        return;
    m_narrator.complain(text);
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
    m_report.documents = gatherer.gather(m_options.inputs, m_options.merges());
    for (const auto &remark : gatherer.remarks())
        m_narrator.complain(remark);
    QStringList inputs;
    for (const auto &document : m_report.documents)
        inputs.append(document.input);
    m_delivery.emplace(m_options.outputFolder, inputs);
}

void ConvertTool::forecast()
{
    Forecast::make(m_report, m_options, *m_delivery);
    for (const auto &document : m_report.documents)
        document.failed() ? m_narrator.tellFailure(document) : m_narrator.tellResult(document);
    conclude();
}

void ConvertTool::convert()
{
    for (const auto &document : m_report.documents) {
        if (document.failed())
            m_narrator.tellFailure(document);
    }
    const ConvertJob::Plan plan{m_settings->printerName,
                                m_settings->jobOptions.Item(m_options.quality)->Filename(),
                                m_options.merges(), m_options.limits};
    m_job = std::make_unique<ConvertJob>(m_client, plan, m_report.documents);
    connect(m_job.get(), &ConvertJob::stageChanged, this,
            [this](const QString &text) { m_narrator.setStage(text); });
    connect(m_job.get(), &ConvertJob::progressed, this,
            [this](int percent) { m_narrator.setPercent(percent); });
    connect(m_job.get(), &ConvertJob::documentFailed, this,
            [this](const DocumentRecord &document) { m_narrator.tellFailure(document); });
    connect(m_job.get(), &ConvertJob::finished, this, &ConvertTool::deliver);
    m_job->start();
}

void ConvertTool::interrupt(int number)
{
    if (m_over)
        return;
    m_narrator.complain(QStringLiteral("interrupted"));
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
    m_report.seconds = m_job->seconds();
    conclude();
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
    m_narrator.tellMerged(m_report);
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
    document.detail = outcome.text;
    if (document.failed()) {
        m_narrator.tellFailure(document);
        return;
    }
    document.output = target;
    m_narrator.tellResult(document);
}

void ConvertTool::failAll(const Delivery::Outcome &outcome)
{
    for (auto &document : m_report.documents) {
        if (document.failed())
            continue;
        document.reason = outcome.reason;
        document.detail = outcome.text;
        m_narrator.tellFailure(document);
    }
}

void ConvertTool::conclude()
{
    m_narrator.conclude(m_report);
    end(m_report.failures() > 0 ? SomeFailed : Done);
}

void ConvertTool::end(int exitCode)
{
    m_over = true;
    m_report.seconds = m_job ? m_job->seconds() : 0;
    const bool wanted = !m_options.reportFile.isEmpty() && exitCode != WrongUse;
    const bool reported = !wanted || m_narrator.writeReport(m_report);
    const bool arrived = m_narrator.everythingArrived();
    if (exitCode == Done && !(reported && arrived))
        exitCode = SomeFailed;
    Q_EMIT finished(exitCode);
}

} // namespace Quorlin
