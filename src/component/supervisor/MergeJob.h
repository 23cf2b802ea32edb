#pragma once

#include "component/supervisor/Job.h"
#include "component/supervisor/Outputs.h"
#include "component/supervisor/Worker.h"

#include <QString>
#include <QStringList>

namespace Quorlin {

class WorkFolder;
class Workers;

/// Joins the PDFs of a list into one beside the first of them. All entries have that file as
/// their output, and one that cannot be read fails them all. PDFs that the distilling step
/// made are removed afterwards.
class MergeJob : public Job
{
    Q_OBJECT

public:
    struct Request
    {
        int number = 0;
        QStringList documents; ///< absolute paths
        bool bookmarks = false;
        Limits limits;
    };

    /// Workers, folder and outputs outlive the job.
    MergeJob(const Request &request, Workers &workers, WorkFolder &workFolder, Outputs &outputs,
             QObject *parent = nullptr);

protected:
    void begin() override;
    void concluding() override;

private:
    void bringIn();
    void merge();
    void merged(const WorkerAnswer &answer);
    void placeOutput();
    void succeedAll(const QString &output);
    void failAll(Reason reason, const QString &text = {});
    [[nodiscard]] QJsonObject requestIn(const QString &folder) const;
    [[nodiscard]] QString output() const;
    [[nodiscard]] QStringList inputVersions() const;
    /// The name of a document in the working folder.
    [[nodiscard]] static QString inputName(qsizetype index);

    Request m_request;
    Workers &m_workers;
    WorkFolder &m_workFolder;
    Outputs &m_outputs;
    QString m_folder;
    QStringList m_versions; ///< of the documents when they were brought in
    bool m_secondTry = false;
};

} // namespace Quorlin
