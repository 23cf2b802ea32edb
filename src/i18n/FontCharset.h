#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// A character set of fonts, by the number that Windows gives it, and what it asks of a font.
///
/// The fonts of this toolkit hold every character of Unicode and have no such field. A character
/// set is therefore a choice of families: behind the family that was designed comes an installed
/// one with the characters of the set, where the designed one lacks them. The East Asian sets put
/// the face that their systems have in front of all others, under its native name.
class FontCharset
{
public:
    static constexpr int Ansi = 0;
    static constexpr int Default = 1;

    /// The set of a code page; Default for one that has none.
    [[nodiscard]] static FontCharset ofCodePage(int codePage);

    [[nodiscard]] int number() const;

    /// Name of the face that the set brings, in its native spelling; empty when it leaves the
    /// face and the size as designed.
    [[nodiscard]] QString faceName() const;

    /// A font for this set. Applying a set once more changes nothing. Ansi and Default give the
    /// font back as it is and look at no installed font.
    [[nodiscard]] QFont applied(const QFont &font) const;

private:
    struct Row;

    explicit FontCharset(const Row &row) : m_row(&row) {}

    const Row *m_row;

    static const Row &rowOf(int codePage);
    [[nodiscard]] QStringList families(const QFont &font) const;
};

} // namespace Quorlin
