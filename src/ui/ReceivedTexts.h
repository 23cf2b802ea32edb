#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

namespace Quorlin {

/// The command texts of other starts, from their arrival until the window handles them.
class ReceivedTexts : public QObject
{
    Q_OBJECT

public:
    ReceivedTexts();

    /// Only keeps the text. Texts that come before another one has been handled are joined to it
    /// by ";"; that is kept as it always was.
    void receive(const QString &text);
    /// To be called when the window is shown: what came before is handled then, text by text,
    /// once the program has emptied the list.
    void windowShown();

Q_SIGNALS:
    /// A text is to be handled.
    void due(const QString &text);

private:
    void tFiles_Timer();

    QTimer tFiles;
    QString m_pending;
    QStringList m_early; ///< of the time before the window was shown
    bool m_hasBeenShown = false;
};

} // namespace Quorlin
