#pragma once

#include <QByteArray>
#include <QList>

#include <utility>

/// The content of a language file in the making. It begins as a complete one, in which each text
/// is its key in angle brackets, with the qualities "Low" and "High".
class LanguageText
{
public:
    LanguageText();

    /// Gives a text to a key of a group; appends what is missing.
    LanguageText &set(const QByteArray &group, const QByteArray &key, const QByteArray &text);
    /// Takes a key out, of whatever group.
    LanguageText &without(const QByteArray &key);
    /// Takes all variables of a group out.
    LanguageText &cleared(const QByteArray &group);
    LanguageText &withoutGroup(const QByteArray &group);
    /// Appends a line to a group as it stands.
    LanguageText &addLine(const QByteArray &group, const QByteArray &line);
    /// Gives a group another name.
    LanguageText &renamed(const QByteArray &group, const QByteArray &name);

    [[nodiscard]] QByteArray bytes(const QByteArray &lineEnd = "\r\n") const;

private:
    using Line = std::pair<QByteArray, QByteArray>; ///< key and whole line
    using Group = std::pair<QByteArray, QList<Line>>;

    [[nodiscard]] QList<Line> &linesOf(const QByteArray &group);

    QList<Group> m_groups;
};
