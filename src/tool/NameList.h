#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Quorlin {

/// Names of documents out of the bytes of a list, which may come in any pieces.
///
/// A list of lines may have been written on any system: a byte-order mark at its beginning and
/// carriage returns before line feeds are no part of a name. Empty names are passed over, and
/// the last name needs no separator behind it. What cannot be a list is refused as soon as that
/// shows, so that no endless input fills the memory.
class NameList
{
public:
    enum class Separator { LineFeed, Nul };

    static constexpr qsizetype MostBytes = 32 * 1024; ///< of one name
    static constexpr qsizetype MostNames = 1'000'000;

    explicit NameList(Separator separator) : m_separator(separator) {}

    /// @return false when this is no list; see error(). Nothing more may be added then.
    [[nodiscard]] bool add(const QByteArray &piece);

    /// The list is over. @return as add().
    [[nodiscard]] bool end();

    /// The names so far, in the form of FileNames.
    [[nodiscard]] const QStringList &names() const { return m_names; }

    /// What is wrong with the list, to be put behind its name.
    [[nodiscard]] QString error() const { return m_error; }

private:
    [[nodiscard]] bool take(QByteArrayView name);
    [[nodiscard]] bool refuse(const QString &error);

    Separator m_separator;
    QByteArray m_rest; ///< the beginning of a name whose end has not come
    QStringList m_names;
    QString m_error;
    bool m_begun = false; ///< a name was taken
};

} // namespace Quorlin
