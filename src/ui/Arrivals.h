#pragma once

#include "ui/DocumentIntake.h"

#include <QObject>

#include <functional>

namespace Quorlin {

class DocumentList;
class MessageService;
class TextSource;

/// Brings documents into the list, whichever way they come. What arrives while a conversion runs
/// waits for its end, so that the running job keeps the list that it was started with.
///
/// The user is told of files that call themselves PostScript and are not: in one message for all
/// that came together, since a folder may be full of them.
class Arrivals : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the object. @param isWorking whether a conversion runs.
    Arrivals(DocumentList &list, MessageService &messages, const TextSource &texts,
             std::function<bool()> isWorking);

    /// Documents and folders, in this order behind what was added before.
    void add(const QStringList &paths);
    /// Forgets what has not come into the list yet.
    void cancel();
    /// To be called when a conversion has ended.
    void takeWaiting();
    /// Some of what was added has not been looked at yet.
    [[nodiscard]] bool isBusy() const { return m_intake.isBusy(); }

Q_SIGNALS:
    /// Everything that was added has been looked at.
    void settled();

private:
    void take(const QStringList &documents);
    void noteRefusal(const QString &path);
    void tellRefusals();
    [[nodiscard]] QString refusalOf(const QString &path) const;

    DocumentList &m_list;
    MessageService &m_messages;
    const TextSource &m_texts;
    std::function<bool()> m_isWorking;
    DocumentIntake m_intake;
    QStringList m_waiting;
    QStringList m_refused; ///< files of which the user has not been told
    bool m_isTelling = false;
};

} // namespace Quorlin
