#pragma once

#include <QByteArray>
#include <QString>

namespace Quorlin {

/// What one instance sends to another: a block of bytes behind a head that says what it is.
///
/// The head has 16 bytes: "QRLN", version and kind (16 bits each), tag and count of the bytes
/// (32 bits each), all numbers with the least byte first. The bytes are UTF-8 and end with a
/// zero byte, which counts.
struct HandoffFrame
{
    enum class Kind : quint16 { Text = 1, Activate = 2 };

    static constexpr quint16 Version = 1;
    static constexpr qsizetype HeadBytes = 16;
    /// Sent by whoever writes a text; no reader looks at it.
    static constexpr quint32 TextTag = 3;
    /// A text is cut to so many UTF-16 units.
    static constexpr qsizetype MostCharacters = 2048;
    /// A desktop's token that is longer is left out.
    static constexpr qsizetype MostTokenBytes = 256;
    /// What a receiver answers when it has kept a text.
    static constexpr char Acknowledged = 6;

    Kind kind = Kind::Text;
    quint32 tag = TextTag;
    QByteArray bytes;

    /// The text's beginning, as much of it as is sent; no half of a surrogate pair at its end.
    [[nodiscard]] static QString cut(const QString &text);
    [[nodiscard]] static HandoffFrame ofText(const QString &text);
    /// Asks for the receiver's window.
    /// @param token what the desktop gave the sender so that the window may come to the front.
    [[nodiscard]] static HandoffFrame ofActivation(const QByteArray &token);

    /// The most bytes that a frame of this kind may announce; 0 when there is no such kind.
    [[nodiscard]] static quint32 mostBytes(Kind kind);

    /// The bytes up to the first zero byte, as text.
    [[nodiscard]] QString text() const;
    /// The bytes up to the first zero byte if they can be a desktop's token, else nothing.
    [[nodiscard]] QByteArray token() const;

    [[nodiscard]] QByteArray encoded() const;
};

} // namespace Quorlin
