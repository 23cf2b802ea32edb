#pragma once

#include "component/protocol/ResultNames.h"
#include "component/supervisor/Job.h"
#include "component/supervisor/Outputs.h"
#include "component/supervisor/Worker.h"

#include <QList>
#include <QString>

namespace Quorlin {

class WorkFolder;
class Workers;

/// Writes every document of a list as PostScript.
///
/// A document is brought in, exported by the office engine unless it is a PDF, printed, and
/// placed beside the original. Several documents are under way at the same time. One that the
/// engine failed on is tried once more, at the end, in an engine started later and with
/// plainer options.
class PrintJob : public Job
{
    Q_OBJECT

public:
    struct Request
    {
        int number = 0;
        QString printerName;
        QStringList documents; ///< absolute paths
        Limits limits;
    };

    /// Workers, folder and outputs outlive the job.
    PrintJob(const Request &request, Workers &workers, WorkFolder &workFolder, Outputs &outputs,
             QObject *parent = nullptr);

protected:
    void begin() override;
    [[nodiscard]] bool tellsOutputs() const override { return true; }

private:
    struct Document
    {
        QString file;
        ResultNames::Place place;
        QString folder;       ///< its working folder
        QString name;         ///< of the copy inside
        QString exportFolder; ///< where the engine saw the copy
        bool secondTry = false;
        bool printedAgain = false;
        Reason firstReason = Reason::None;
        QString firstText;
    };

    void admitMore();
    void admit(qsizetype index);
    void bringIn(qsizetype index, const QString &name);
    void broughtIn(qsizetype index);
    void useAsItIs(qsizetype index);
    void exportDocument(qsizetype index);
    void exported(qsizetype index, const WorkerAnswer &answer);
    void retryLater(qsizetype index, const WorkerAnswer &answer);
    void retry(qsizetype index);
    void print(qsizetype index);
    [[nodiscard]] QJsonObject exportRequest(qsizetype index, const QString &folder) const;
    [[nodiscard]] QJsonObject printRequest(qsizetype index, const QString &folder) const;
    void printed(qsizetype index, const WorkerAnswer &answer);
    void placeOutput(qsizetype index, const QString &file, const Outputs::Output &properties);
    void give(qsizetype index, const QString &output);
    void refuse(qsizetype index, Reason reason, const QString &text = {});
    void leave();
    [[nodiscard]] WorkerTask taskFor(qsizetype index, int from, int to);
    [[nodiscard]] static QJsonArray rebaseOf(const Document &document);

    Request m_request;
    Workers &m_workers;
    WorkFolder &m_workFolder;
    Outputs &m_outputs;
    QList<Document> m_documents;
    QList<qsizetype> m_failedOnce;
    QList<qsizetype> m_secondTries; ///< those that still wait for theirs
    qsizetype m_nextToAdmit = 0;
    int m_underWay = 0;
    int m_engineGeneration = 0;
};

} // namespace Quorlin
