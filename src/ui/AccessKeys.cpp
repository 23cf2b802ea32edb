#include "ui/AccessKeys.h"

#include <QSet>

namespace Quorlin::AccessKeys {

namespace {

constexpr auto Mark = QLatin1Char('&');

/// Only letters that every keyboard of a Latin script has.
bool canBeKey(QChar letter)
{
    return letter.unicode() < 0x80 && letter.isLetter();
}

QChar ownKey(const QString &caption)
{
    for (auto at = caption.indexOf(Mark); at >= 0; at = caption.indexOf(Mark, at + 2)) {
        if (at + 1 < caption.size() && caption.at(at + 1) != Mark)
            return caption.at(at + 1).toUpper();
    }
    return {};
}

class Marker
{
public:
    void take(QChar key)
    {
        if (!key.isNull())
            m_taken.insert(key);
    }

    [[nodiscard]] QString mark(const QString &caption)
    {
        if (caption.contains(Mark))
            return caption;
        auto at = freeLetter(caption, true);
        if (at < 0)
            at = freeLetter(caption, false);
        if (at < 0)
            return caption;
        take(caption.at(at).toUpper());
        return QString(caption).insert(at, Mark);
    }

private:
    [[nodiscard]] qsizetype freeLetter(const QString &caption, bool beginsWord) const
    {
        for (qsizetype at = 0; at < caption.size(); ++at) {
            const auto isBeginning = at == 0 || caption.at(at - 1).isSpace();
            if ((isBeginning || !beginsWord) && canBeKey(caption.at(at)) &&
                !m_taken.contains(caption.at(at).toUpper()))
                return at;
        }
        return -1;
    }

    QSet<QChar> m_taken;
};

} // namespace

QStringList marked(const QStringList &captions)
{
    Marker marker;
    for (const auto &caption : captions)
        marker.take(ownKey(caption));
    QStringList result;
    for (const auto &caption : captions)
        result.append(marker.mark(caption));
    return result;
}

} // namespace Quorlin::AccessKeys
