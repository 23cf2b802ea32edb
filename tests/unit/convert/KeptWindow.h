#pragma once

#include "convert/JobWindow.h"

#include <QStringList>

namespace Quorlin {

/// A window that writes down what is done to it, in order, as short texts.
class KeptWindow : public JobWindow
{
public:
    [[nodiscard]] bool isWorking() const override { return working; }
    void setWorkingMode(bool on) override
    {
        working = on;
        events.append(on ? QStringLiteral("working") : QStringLiteral("idle"));
    }
    [[nodiscard]] QStringList documents() const override { return list; }
    [[nodiscard]] bool merges() const override { return optLink; }
    [[nodiscard]] bool showsResult() const override { return optShow; }
    [[nodiscard]] int compression() const override { return position; }
    void setInfo(const QString &text) override { events.append(text); }
    void setBarValue(int value) override { events.append(QStringLiteral("value %1").arg(value)); }
    void setBarPercent(int percent) override { percents.append(percent); }
    [[nodiscard]] QString askForTarget(const QString &title, const QString &filter,
                                       const QString &proposedName) override
    {
        questions.append(title + QLatin1Char('|') + filter + QLatin1Char('|') + proposedName);
        return answer;
    }

    /// How often something happened.
    [[nodiscard]] qsizetype count(const char *event) const
    {
        return events.count(QLatin1String(event));
    }

    bool working = false;
    QStringList list;
    bool optLink = false;
    bool optShow = false;
    int position = 0;
    QString answer;
    QStringList events;
    QList<int> percents;
    QStringList questions;
};

} // namespace Quorlin
