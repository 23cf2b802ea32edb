#include "skin/controls/LabelText.h"

namespace Quorlin {

namespace {

constexpr QChar Ampersand = u'&';
constexpr QChar Ellipsis = u'\u2026';

bool isLineEnd(QChar character)
{
    return character == u'\r' || character == u'\n' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

bool isControl(QChar character)
{
    return character != u'\t' && character.category() == QChar::Other_Control;
}

bool canBeKey(QChar character)
{
    return character.isPrint() && !character.isSpace() && !character.isSurrogate();
}

} // namespace

LabelText::LabelText(const QString &caption, bool useMnemonic)
{
    m_shown.reserve(qMin(caption.size(), MostCharacters + 2));
    qsizetype at = 0;
    while (at < caption.size() && m_shown.size() < MostCharacters)
        at += take(caption, at, useMnemonic);
    if (at < caption.size())
        m_shown += Ellipsis;
}

QString LabelText::plain() const
{
    auto text = m_shown;
    return text.replace(QChar::LineSeparator, u'\n');
}

QChar LabelText::accessKey() const
{
    return m_mark < 0 ? QChar() : m_shown.at(m_mark).toUpper();
}

/// Shows what stands at one place and returns how many characters that were.
qsizetype LabelText::take(const QString &caption, qsizetype at, bool useMnemonic)
{
    const auto character = caption.at(at);
    if (useMnemonic && character == Ampersand)
        return takeAmpersand(caption, at);
    if (character.isSurrogate())
        return takeSurrogate(caption, at);
    if (!isLineEnd(character)) {
        m_shown += isControl(character) ? QChar(u' ') : character;
        return 1;
    }
    m_shown += QChar::LineSeparator;
    const auto isPair =
        character == u'\r' && at + 1 < caption.size() && caption.at(at + 1) == u'\n';
    return isPair ? 2 : 1;
}

qsizetype LabelText::takeSurrogate(const QString &caption, qsizetype at)
{
    const auto isPair = caption.at(at).isHighSurrogate() && at + 1 < caption.size() &&
                        caption.at(at + 1).isLowSurrogate();
    if (!isPair) {
        m_shown += QChar::ReplacementCharacter;
        return 1;
    }
    m_shown += QStringView(caption).mid(at, 2);
    return 2;
}

qsizetype LabelText::takeAmpersand(const QString &caption, qsizetype at)
{
    const auto next = at + 1 < caption.size() ? caption.at(at + 1) : QChar();
    if (next == Ampersand) {
        m_shown += Ampersand;
        return 2;
    }
    if (!canBeKey(next)) {
        m_shown += Ampersand;
        return 1;
    }
    if (m_mark < 0)
        m_mark = m_shown.size();
    return 1;
}

} // namespace Quorlin
