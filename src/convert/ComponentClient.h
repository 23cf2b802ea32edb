#pragma once

#include "component/protocol/Reason.h"
#include "convert/ComponentSettings.h"
#include "convert/EventQueue.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>

#include <functional>

namespace Quorlin {

class ComponentProcess;
class JobListener;

/// Owns the component's process and hands its reports to the objects that wait for them.
///
/// The process is started by the first job or by warm(), and anew by the next job after it has
/// ended. No call blocks, and no listener is called before the call has returned. One client
/// serves all component objects of a program; it must outlive them, or their running jobs end
/// as lost.
///
/// Destruction closes the component's input, waits for at most the farewell time of the
/// settings (2 seconds) for its end and then kills it: no process is left behind.
class ComponentClient : public QObject
{
    Q_OBJECT

public:
    /// Uses the program beside this one.
    explicit ComponentClient(QObject *parent = nullptr);
    explicit ComponentClient(const ComponentSettings &settings, QObject *parent = nullptr);
    ~ComponentClient() override;

    /// Starts the process now and lets it prepare an office engine.
    void warm();

    /// Asks for a job; the request needs no number. The listener hears of it until it is
    /// complete or lost, or until it is forgotten.
    void submit(QJsonObject request, JobListener *listener);

    /// No more reports to this listener. Its job may go on unheard.
    void forget(const JobListener *listener);

    /// Removes what is left of a step's outputs; nothing to do when no process runs.
    void clear(const QString &step);

    /// Runs this from the event loop, between the reports, never while another handler runs.
    void post(std::function<void()> event);

Q_SIGNALS:
    /// Something that people should know of the component, such as that it has no sandbox here.
    /// Told once, however often the process is started anew.
    void noticed(const QString &text);

    /// For developers: the component's standard error, and what was wrong on its pipe.
    void logged(const QString &line);

protected:
    /// A process that has not been started; the client owns it.
    [[nodiscard]] virtual ComponentProcess *makeProcess();

private:
    struct Job
    {
        JobListener *listener = nullptr;
        int process = 0; ///< the serial number of the process that has it
    };

    ComponentProcess *process();
    void deliver(const QJsonObject &report);
    void connectProcess(int serial);
    void onLost(int serial, Reason reason, const QString &text);
    void loseJobs(int serial, Reason reason, const QString &text);
    void loseJob(int number, Reason reason, const QString &text);

    ComponentSettings m_settings;
    EventQueue m_events;
    QHash<int, Job> m_jobs;
    ComponentProcess *m_process = nullptr;
    int m_serial = 0; ///< of the newest process
    int m_lastNumber = 0;
    QString m_notice; ///< told last
};

} // namespace Quorlin
