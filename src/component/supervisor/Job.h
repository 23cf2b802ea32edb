#pragma once

#include "component/protocol/Reason.h"
#include "component/supervisor/Limits.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// What all three kinds of job have in common: the reports to the driver.
///
/// Documents may be finished in any order; their reports come in the order of the list. After
/// finished() nothing more is reported.
class Job : public QObject
{
    Q_OBJECT

public:
    /// So many documents of a job are under way at the most, whatever the driver wishes. Enough
    /// to keep engines and printers busy, few enough not to fill the disk.
    static constexpr int MostUnderWay = 16;

    /// @param number the driver's number for the job.
    Job(int number, qsizetype count, const Limits &limits, QObject *parent = nullptr);

    /// Reports the start and begins the work; the end is always reported later.
    void start();

Q_SIGNALS:
    void report(const QJsonObject &message);
    void finished();

protected:
    virtual void begin() = 0;
    /// Whether each document's output is reported on its own.
    [[nodiscard]] virtual bool tellsOutputs() const { return false; }
    /// Called when every document has its result, before the end is reported.
    virtual void concluding() {}

    void tell(const QString &state);
    void setPercent(qsizetype index, int percent);
    void succeed(qsizetype index, const QString &output);
    /// @param text empty means the reason's own text.
    /// @param output the name that the output would have; nothing is there.
    void fail(qsizetype index, Reason reason, const QString &text, const QString &output);

    [[nodiscard]] qsizetype count() const { return m_results.size(); }
    [[nodiscard]] const Limits &limits() const { return m_limits; }
    /// So many documents of this job may be under way.
    [[nodiscard]] int mostUnderWay() const;

private:
    struct Result
    {
        bool known = false;
        int percent = 0;
        Reason reason = Reason::None;
        QString text;
        QString output;
    };

    void settle(qsizetype index, Result result);
    void reportProgress();
    void reportResult(qsizetype index);
    void complete();
    void send(const QString &type, QJsonObject message = {});

    int m_number;
    Limits m_limits;
    QList<Result> m_results;
    qsizetype m_reported = 0;
    int m_lastPercent = -1;
    QElapsedTimer m_clock;
};

} // namespace Quorlin
