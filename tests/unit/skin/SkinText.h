#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace Quorlin {

/// A skin's description that is complete, made to be spoilt by tests. Every element has numbers
/// of its own: element N (from 1) has the Classic X 100+N, Y 200+N, width 300+N, height 400+N,
/// the Advanced values are 1000 more. All pictures are "p.png".
class SkinText
{
public:
    SkinText();

    /// Sets a key, such as "ClassicClosePosX"; it must be one of the description, or a section
    /// must be given.
    SkinText &set(const QString &key, const QString &value, const QString &section = {});
    SkinText &remove(const QString &key);
    /// Removes all keys of an element.
    SkinText &removeElement(const QString &name);

    [[nodiscard]] QByteArray bytes() const;

    /// Number of an element in the order of reading, from 1.
    [[nodiscard]] static int numberOf(const QString &element);

private:
    QMap<QString, QMap<QString, QString>> m_values;
};

/// A PNG of one colour.
[[nodiscard]] QByteArray pngOf(int width, int height, Qt::GlobalColor colour = Qt::gray);

} // namespace Quorlin
