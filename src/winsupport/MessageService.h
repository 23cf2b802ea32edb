#pragma once

#include <QString>

namespace Quorlin {

/// The icon of a message box; the numbers are the system's own.
enum class MessageStyle { Plain = 0, Critical = 16, Information = 64 };

/// Shows message boxes. Every message of the program goes through one object of this kind, so
/// that tests can read and answer them.
class MessageService
{
public:
    virtual ~MessageService() = default;

    /// Shows a modal box with an OK button and returns when it was answered.
    virtual void show(const QString &text, MessageStyle style, const QString &title) = 0;

    /// The same with a second paragraph, which tells more than the text; empty for none. A service
    /// that has no place for it shows the text alone.
    virtual void showWithDetail(const QString &text, MessageStyle style, const QString &title,
                                const QString &detail);
};

inline void MessageService::showWithDetail(const QString &text, MessageStyle style,
                                           const QString &title, const QString &)
{
    show(text, style, title);
}

} // namespace Quorlin
