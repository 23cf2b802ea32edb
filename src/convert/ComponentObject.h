#pragma once

#include "component/protocol/Reason.h"
#include "convert/Documents.h"
#include "convert/JobLimits.h"
#include "convert/JobListener.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QSet>

namespace Quorlin {

class ComponentClient;

/// What PDFLib, PDFDistiller and PDFMerger have in common: one list of documents, worked on as
/// a whole, with events for what happens.
///
/// Life cycle: idle; Start(); OnStart, any number of OnStateChange and OnProgress; exactly one
/// OnComplete; idle again. Within OnComplete the object is idle already: its list may be read,
/// refilled and started again, and other objects may be started.
///
/// Events are raised in the client's thread from the event loop, one at a time over all
/// objects of a client: a handler runs to its end before the next event. Their arguments are
/// passed by reference, so handlers must be connected directly (the default in one thread).
///
/// Start() with an empty list raises OnStart and OnComplete with Success False.
class ComponentObject : public QObject, private JobListener
{
    Q_OBJECT

public:
    ~ComponentObject() override;

    [[nodiscard]] Quorlin::Documents &Documents() { return m_documents; }
    [[nodiscard]] const Quorlin::Documents &Documents() const { return m_documents; }

    /// Begins to process the list and returns at once. Ignored while the object works.
    void Start();

    [[nodiscard]] bool isRunning() const { return m_running; }

    /// Limits for each document, used from the next Start on.
    void setLimits(const JobLimits &limits) { m_limits = limits; }

Q_SIGNALS:
    void OnStart();
    void OnStateChange(QString &State);

    /// The component's own value, not clamped to 0..100.
    void OnProgress(qint32 &Percent);

    /// @param Duration seconds.
    void OnComplete(bool &Success, float &Duration);

    /// The document at this position (from 1) has no result; at most once per document and
    /// always before OnComplete. Its entry knows the reason from now until the next Start.
    /// @param text for people, in English.
    void documentFailed(qint32 index, Quorlin::Reason reason, const QString &text);

protected:
    /// @param step the job's type in the pipe's language. @param client is not owned.
    ComponentObject(ComponentClient &client, const char *step, QObject *parent);

    /// Members of the request beside its type, documents and limits.
    [[nodiscard]] virtual QJsonObject requestMembers() const { return {}; }

    /// The request's object for one entry.
    [[nodiscard]] virtual QJsonObject documentMembers(const DocumentEntry &entry) const;

    /// The output of the document at this position is known, as the last report for it.
    virtual void outputKnown(qint32 index, const QString &filename);

private:
    void jobReported(const QJsonObject &report) override;
    void jobLost(Reason reason, const QString &text) override;
    void prepare();
    void begin();
    void reportState(const QJsonObject &report);
    void reportProgress(const QJsonObject &report);
    void reportOutput(qint32 index, const QString &filename);
    void reportFailure(qint32 index, Reason reason, const QString &text);
    void complete(const QJsonObject &report);
    void finish(bool success, float duration);
    [[nodiscard]] QJsonObject request() const;
    [[nodiscard]] bool isNewIn(QSet<qint32> &seen, qint32 index) const;

    QPointer<ComponentClient> m_client;
    const char *m_step;
    Quorlin::Documents m_documents;
    JobLimits m_limits;
    QElapsedTimer m_clock;
    QSet<qint32> m_outputs;  ///< positions whose output is known
    QSet<qint32> m_failures; ///< positions whose failure is known
    bool m_running = false;
    bool m_begun = false; ///< OnStart was raised
};

} // namespace Quorlin
