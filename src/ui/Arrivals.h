#pragma once

#include "ui/DocumentIntake.h"

#include <QObject>

#include <functional>

namespace Quorlin {

class DocumentList;
class RefusedFiles;

/// Brings documents into the list, whichever way they come. What arrives while a conversion runs
/// waits for its end, so that the running job keeps the list that it was started with.
class Arrivals : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the object. @param isHeldBack the list must stay as it is for now.
    Arrivals(DocumentList &list, RefusedFiles &refused, std::function<bool()> isHeldBack);

    /// Documents and folders, in this order behind what was added before.
    void add(const QStringList &paths);
    /// Forgets what has not come into the list yet.
    void cancel();
    /// To be called when the list may change again.
    void takeWaiting();
    /// Some of what was added has not been looked at yet.
    [[nodiscard]] bool isBusy() const { return m_intake.isBusy(); }

Q_SIGNALS:
    /// Everything that was added has been looked at.
    void settled();

private:
    void take(const QStringList &documents);

    DocumentList &m_list;
    RefusedFiles &m_refused;
    std::function<bool()> m_isHeldBack;
    DocumentIntake m_intake;
    QStringList m_waiting;
};

} // namespace Quorlin
