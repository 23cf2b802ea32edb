#include "contract/EventRecorder.h"

#include "convert/PDFLib.h"

#include <QRegularExpression>

namespace Quorlin {

EventRecorder::EventRecorder(ComponentObject &object)
{
    connect(&object, &ComponentObject::OnStart, this, [this] { record(QStringLiteral("start")); });
    connect(&object, &ComponentObject::OnStateChange, this,
            [this](QString &) { record(QStringLiteral("state")); });
    connect(&object, &ComponentObject::OnProgress, this, [this](qint32 &percent) {
        m_percents.append(percent);
        record(QStringLiteral("progress %1").arg(percent));
        percent = qBound(0, percent, 100);
    });
    connect(&object, &ComponentObject::documentFailed, this,
            [this](qint32 index, Reason reason, const QString &text) {
                m_failureTexts.append(text);
                record(QStringLiteral("failed %1 %2").arg(index).arg(reasonKey(reason)));
            });
    connect(
        &object, &ComponentObject::OnComplete, this,
        [this, &object](bool &success, float &duration) { complete(object, success, duration); });
}

EventRecorder::EventRecorder(PDFLib &object) : EventRecorder(static_cast<ComponentObject &>(object))
{
    connect(&object, &PDFLib::OnOutputFilename, this, [this](qint32 &index, QString &filename) {
        m_printed.append(filename);
        record(QStringLiteral("output %1").arg(index));
    });
}

void EventRecorder::complete(const ComponentObject &object, bool success, float duration)
{
    ++m_completions;
    m_success = success;
    m_duration = duration;
    m_outputs.clear();
    for (qint32 index = 1; index <= object.Documents().Count(); ++index)
        m_outputs.append(object.Documents().Item(index).OutputFilename());
    record(success ? QStringLiteral("complete true") : QStringLiteral("complete false"));
}

QStringList EventRecorder::events(const char *word) const
{
    return m_events.filter(QRegularExpression(QStringLiteral("^") + QLatin1String(word)));
}

} // namespace Quorlin
