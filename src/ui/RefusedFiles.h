#pragma once

#include <QStringList>

namespace Quorlin {

class MessageService;
class ReasonTexts;
class TextSource;

/// Files that call themselves PostScript and are not. The user is told of them in one message for
/// all that came together, since a folder may be full of them.
class RefusedFiles
{
public:
    /// All must outlive the object. @param reasons say what the user can do; nullptr for nothing.
    RefusedFiles(MessageService &messages, const TextSource &texts,
                 const ReasonTexts *reasons = nullptr);

    void add(const QString &path) { m_paths.append(path); }
    /// Shows the message, and returns when the user has answered; does nothing without files, and
    /// while it is on the screen: what is added meanwhile gets the next one.
    void tell();
    /// The message is on the screen.
    [[nodiscard]] bool isTelling() const { return m_isTelling; }
    /// The user is not told of the files that were added.
    void forget() { m_paths.clear(); }

private:
    void show(const QStringList &paths);
    [[nodiscard]] QString lineOf(const QString &path) const;

    MessageService &m_messages;
    const TextSource &m_texts;
    const ReasonTexts *m_reasons;
    QStringList m_paths;
    bool m_isTelling = false;
};

} // namespace Quorlin
