#pragma once

#include "component/protocol/LineBuffer.h"
#include "component/supervisor/Journal.h"
#include "component/supervisor/Outputs.h"
#include "component/supervisor/WorkFolder.h"
#include "component/supervisor/Workers.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>

#include <memory>
#include <optional>

namespace Quorlin {

class Job;
struct ComponentRequest;

/// The component as its driver sees it: requests in, reports out.
class Component : public QObject
{
    Q_OBJECT

public:
    struct Folders
    {
        QString programs; ///< where the workers' programs lie
        QString journals; ///< where this user's journals lie
    };

    explicit Component(const Folders &folders, QObject *parent = nullptr);
    ~Component() override;

    /// Removes what earlier components left and makes the working folder.
    /// @return false when there is no place to work in.
    [[nodiscard]] bool prepare();

    /// Greets the driver.
    void greet();

    /// Bytes from the driver, in any pieces.
    void receive(const QByteArray &bytes);

    /// Ends all work and removes everything temporary.
    void shutDown();

Q_SIGNALS:
    /// A message for the driver.
    void send(const QJsonObject &message);

private:
    void handle(const QByteArray &line);
    void startJob(const ComponentRequest &request);
    void clear(Outputs::Step step);
    void complain(const QString &text, std::optional<int> job = std::nullopt);
    [[nodiscard]] std::unique_ptr<Job> makeJob(const ComponentRequest &request);

    Journal m_journal;
    WorkFolder m_workFolder;
    Outputs m_outputs;
    std::unique_ptr<Workers> m_workers;
    QString m_programFolder;
    QHash<Outputs::Step, Job *> m_running;
    LineBuffer m_lines;
};

} // namespace Quorlin
