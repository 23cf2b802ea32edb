#pragma once

#include <QString>

#include <functional>

namespace Quorlin {

class MessageService;
class TextSource;

/// Brings a finished PDF from the component's temporary file to its final name, and opens it.
class ResultDelivery
{
public:
    /// Copies a file to another name, replacing what is there, and returns when it is done.
    using Copy = std::function<bool(const QString &source, const QString &destination)>;
    /// Opens a file with the program of its type.
    using Open = std::function<void(const QString &fileName)>;

    /// The options of the window that concern a delivery.
    struct Options
    {
        bool showsResult = false;
        /// Shown and kept by the window, but nothing is ever sent.
        bool sendsByMail = false;
    };

    struct Outcome
    {
        /// A file of the final name exists, be it the new one or one that could not be replaced.
        bool delivered = false;
        bool temporaryRemoved = false;
    };

    /// The services must outlive the object.
    ResultDelivery(Copy copy, Open open, MessageService &messages, const TextSource &texts);

    /// The name of the result made of a converter's input: everything from the name's last "."
    /// replaced by ".pdf". A name without "." stays as it is, so that the result takes its place.
    [[nodiscard]] static QString finalName(const QString &converterInput);

    /// Copies, opens the result when asked, or tells that there is none, and removes the
    /// temporary file in either case.
    Outcome deliver(const QString &temporary, const QString &finalName, const Options &options);

private:
    [[nodiscard]] QString copyMessage(const QString &finalName) const;

    Copy m_copy;
    Open m_open;
    MessageService &m_messages;
    const TextSource &m_texts;
};

} // namespace Quorlin
