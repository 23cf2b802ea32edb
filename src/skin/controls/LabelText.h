#pragma once

#include <QString>

namespace Quorlin {

/// A caption as it is shown: lines set apart, what cannot be drawn replaced, the access key
/// found.
///
/// CR LF, CR and LF end a line. Other control characters are shown as spaces, halves of
/// surrogate pairs as U+FFFD. Of very long captions only the beginning is shown.
class LabelText
{
public:
    /// Longer captions end in an ellipsis here, so that measuring stays quick.
    static constexpr qsizetype MostCharacters = 4096;

    LabelText() = default;
    /// @param useMnemonic "&x" makes x the access key and "&&" an ampersand. An ampersand with
    /// nothing visible behind it stays.
    LabelText(const QString &caption, bool useMnemonic);

    /// The text, its lines separated by U+2028.
    [[nodiscard]] const QString &shown() const { return m_shown; }
    /// The text, its lines separated by line feeds.
    [[nodiscard]] QString plain() const;
    /// Where the access key stands in the text shown; -1 when there is none.
    [[nodiscard]] qsizetype mark() const { return m_mark; }
    /// The access key in upper case; null when there is none.
    [[nodiscard]] QChar accessKey() const;

    bool operator==(const LabelText &) const = default;

private:
    [[nodiscard]] qsizetype take(const QString &caption, qsizetype at, bool useMnemonic);
    [[nodiscard]] qsizetype takeSurrogate(const QString &caption, qsizetype at);
    [[nodiscard]] qsizetype takeAmpersand(const QString &caption, qsizetype at);

    QString m_shown;
    qsizetype m_mark = -1;
};

} // namespace Quorlin
