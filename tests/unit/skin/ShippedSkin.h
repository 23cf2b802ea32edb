#pragma once

#include "SkinScene.h"

#include <QDir>
#include <QRect>

namespace Quorlin {

/// One of the skins of the tree, loaded.
class ShippedSkin
{
public:
    explicit ShippedSkin(const QString &name);

    [[nodiscard]] static QString pathOf(const QString &name);

    [[nodiscard]] SkinEngine &engine() { return m_engine; }
    [[nodiscard]] const SkinLook &look() const { return m_engine.GetLook(); }
    [[nodiscard]] QStringList messages() const { return m_messages.all; }

    /// The picture of an element, by its name.
    [[nodiscard]] SkinPicture picture(const char *element);
    /// The size of what the picture of an element fills.
    [[nodiscard]] QSize pictureSize(const char *element);

    /// Place of a control in its window or panel; nothing for other elements. A title's picture
    /// counts as a square of 16 pixels.
    [[nodiscard]] std::optional<QRect> placeOf(const SkinElement &element, qint32 mode);
    /// The window or panel that a control lies in.
    [[nodiscard]] QRect surroundingsOf(const SkinElement &element, qint32 mode);
    /// "A over B" for controls that lie over each other without being meant to.
    [[nodiscard]] QStringList overlaps(qint32 mode);

    /// The lowest contrast of a colour with the points of a picture that an element covers.
    [[nodiscard]] double lowestContrast(const QColor &ink, const char *picture,
                                        const char *element);

private:
    SkinTexts m_texts;
    SkinMessages m_messages;
    SkinEngine m_engine;
};

/// The contrast of two colours by their relative luminance, from 1 to 21.
[[nodiscard]] double contrast(const QColor &one, const QColor &other);

} // namespace Quorlin
