#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// The messages that a job or the component sent, in order.
class Reports
{
public:
    void add(const QJsonObject &message) { m_messages.append(message); }
    void clear() { m_messages.clear(); }

    [[nodiscard]] const QList<QJsonObject> &all() const { return m_messages; }
    /// Those of one type, of one job or of all.
    [[nodiscard]] QList<QJsonObject> of(const char *type, int job = -1) const;
    [[nodiscard]] QJsonObject last(const char *type, int job = -1) const;
    [[nodiscard]] bool has(const char *type, int job = -1) const;

    /// The types of all messages, each run of one type told once: "start state progress …".
    [[nodiscard]] QString outline() const;
    /// "INDEX:REASON" of every failure.
    [[nodiscard]] QStringList failures(int job = -1) const;
    /// The outputs that the end of a job names.
    [[nodiscard]] QStringList outputs(int job = -1) const;
    [[nodiscard]] QList<int> percents(int job = -1) const;

private:
    QList<QJsonObject> m_messages;
};

} // namespace Quorlin
