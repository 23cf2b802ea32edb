#pragma once

#include "component/protocol/Reason.h"

#include <QString>

#include <functional>

namespace Quorlin {

class MessageService;
class ReasonTexts;
class TextSource;

/// Brings a finished PDF from the component's temporary file to its final name, and opens it.
/// Nothing is ever sent by mail, whatever the window's option for it says.
class ResultDelivery
{
public:
    /// Copies a file to another name, replacing what is there, and returns when it is done.
    using Copy = std::function<bool(const QString &source, const QString &destination)>;
    /// Opens a file with the program of its type.
    using Open = std::function<void(const QString &fileName)>;

    struct Outcome
    {
        /// A file of the final name exists, be it the new one or one that could not be replaced.
        bool delivered = false;
        bool temporaryRemoved = false;
    };

    /// All services must outlive the object. @param reasons nullptr for English.
    ResultDelivery(Copy copy, Open open, MessageService &messages, const TextSource &texts,
                   const ReasonTexts *reasons = nullptr);

    /// The name of the result made of a converter's input: everything from the name's last "."
    /// replaced by ".pdf". A name without "." stays as it is, so that the result takes its place;
    /// a "." in a folder's name does not count, since the result would leave the folder.
    [[nodiscard]] static QString finalName(const QString &converterInput);

    /// Whether a file of this name is there; a folder is none.
    [[nodiscard]] static bool fileExists(const QString &path);

    /// Copies, opens the result when asked, or tells that there is none, and removes the
    /// temporary file in either case. Copying and telling handle events: the object must not go
    /// before this returns.
    Outcome deliver(const QString &temporary, const QString &finalName, bool showsResult);

private:
    [[nodiscard]] QString copyMessage(const QString &finalName) const;
    [[nodiscard]] static Reason obstacleOf(const QString &temporary, const QString &finalName);
    [[nodiscard]] QString whyNotCopied(const QString &temporary, const QString &finalName) const;

    Copy m_copy;
    Open m_open;
    MessageService &m_messages;
    const TextSource &m_texts;
    const ReasonTexts *m_reasons;
};

} // namespace Quorlin
