#pragma once

#include "convert/ComponentObject.h"

#include <QObject>
#include <QStringList>

namespace Quorlin {

class PDFLib;

/// Writes down every event of a component object, in order, as short texts such as "start",
/// "progress 40", "output 1", "failed 2 protected" and "complete true".
class EventRecorder : public QObject
{
    Q_OBJECT

public:
    explicit EventRecorder(ComponentObject &object);

    /// Also records OnOutputFilename.
    explicit EventRecorder(PDFLib &object);

    [[nodiscard]] int completions() const { return m_completions; }
    [[nodiscard]] bool success() const { return m_success; }
    [[nodiscard]] float duration() const { return m_duration; }

    /// OutputFilename of every entry, read within the last OnComplete.
    [[nodiscard]] QStringList outputs() const { return m_outputs; }

    /// File names of OnOutputFilename, in order of arrival.
    [[nodiscard]] QStringList printed() const { return m_printed; }

    /// The percentages of OnProgress.
    [[nodiscard]] QList<qint32> percents() const { return m_percents; }

    [[nodiscard]] QStringList events() const { return m_events; }

    /// The events that begin with this word.
    [[nodiscard]] QStringList events(const char *word) const;

    /// What was told with the failures.
    [[nodiscard]] QStringList failureTexts() const { return m_failureTexts; }

private:
    void record(const QString &event) { m_events.append(event); }
    void complete(const ComponentObject &object, bool success, float duration);

    QStringList m_events;
    QStringList m_outputs;
    QStringList m_printed;
    QStringList m_failureTexts;
    QList<qint32> m_percents;
    int m_completions = 0;
    bool m_success = false;
    float m_duration = -1;
};

} // namespace Quorlin
