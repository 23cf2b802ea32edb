#pragma once

#include "component/supervisor/Job.h"
#include "component/supervisor/Outputs.h"
#include "component/supervisor/Worker.h"

#include <QHash>
#include <QList>
#include <QString>

namespace Quorlin {

class WorkFolder;
class Workers;

/// Turns every PostScript file of a list into a PDF beside it.
///
/// Files that the printing step made from documents of the engine share warm processes; any
/// other PostScript gets a process of its own. The step fails as a whole when a job-options
/// file cannot be read. PostScript that the printing step made is removed when its document is
/// done, well or badly.
class DistilJob : public Job
{
    Q_OBJECT

public:
    struct Document
    {
        QString file;    ///< absolute path
        QString options; ///< absolute path of the job-options file
    };
    struct Request
    {
        int number = 0;
        QList<Document> documents;
        Limits limits;
    };

    /// Workers, folder and outputs outlive the job.
    DistilJob(const Request &request, Workers &workers, WorkFolder &workFolder, Outputs &outputs,
              QObject *parent = nullptr);

protected:
    void begin() override;

private:
    /// What is known of one document on its way.
    struct Work
    {
        QString folder; ///< holds its input and output, and its options when it is alone
        QString options;
        int pages = 0; ///< 0 when nobody knows
        PostScriptOrigin origin = PostScriptOrigin::Foreign;
        bool secondTry = false;

        [[nodiscard]] bool isWarm() const { return origin == PostScriptOrigin::Ours; }
    };

    [[nodiscard]] bool bringInOptions();
    void admitMore();
    void admit(qsizetype index);
    [[nodiscard]] bool prepare(qsizetype index, PostScriptOrigin origin);
    void bringIn(qsizetype index, const QString &from);
    void distil(qsizetype index);
    void distilled(qsizetype index, const WorkerAnswer &answer);
    void retryAlone(qsizetype index);
    void placeOutput(qsizetype index);
    void refuse(qsizetype index, Reason reason, const QString &text = {});
    void leave(qsizetype index);
    [[nodiscard]] static bool lacksPages(const Work &work, const WorkerAnswer &answer);
    [[nodiscard]] QJsonObject requestIn(const QString &folder, const Work &work) const;

    Request m_request;
    Workers &m_workers;
    WorkFolder &m_workFolder;
    Outputs &m_outputs;
    QList<Work> m_work;
    QHash<QString, QString> m_options; ///< job-options files and their copies
    qsizetype m_nextToAdmit = 0;
    int m_underWay = 0;
};

} // namespace Quorlin
