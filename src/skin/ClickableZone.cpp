#include "skin/ClickableZone.h"

#include "skin/SkinError.h"
#include "skin/SkinKeys.h"
#include "skin/SkinMode.h"

#include <limits>

namespace Quorlin {

namespace {

bool isIn16Bits(int value)
{
    using Limits = std::numeric_limits<qint16>;
    return value >= Limits::min() && value <= Limits::max();
}

} // namespace

bool ClickableZone::setCorners(Zone &zone, qint16 X, qint16 Y, qint16 width, qint16 height)
{
    const auto right = int(X) + width;
    const auto bottom = int(Y) + height;
    if (!isIn16Bits(right) || !isIn16Bits(bottom))
        return false;
    zone = {X, Y, qint16(right), qint16(bottom), zone.visible};
    return true;
}

void ClickableZone::SetDefValues(qint16 X, qint16 Y, qint16 width, qint16 height, bool visible,
                                 qint32 mode)
{
    auto &zone = m_zones[layoutIndex(mode)];
    if (!setCorners(zone, X, Y, width, height))
        SkinError::overflow(QStringLiteral("ClickableZone"));
    zone.visible = visible;
}

bool ClickableZone::SetValues(const IniFile &ini, const QString &name, const QString &section)
{
    const SkinKeys keys(ini, name, section);
    if (!readCorners(keys, SkinLayout::Classic))
        return false;
    auto &classic = m_zones[layoutIndex(0)];
    if (classic.left == 0 || classic.right == 0 || classic.left == classic.right ||
        classic.top == classic.bottom)
        return false;
    classic.visible = keys.isVisible(SkinLayout::Classic);
    if (!readCorners(keys, SkinLayout::Advanced))
        return false;
    m_zones[layoutIndex(1)].visible = keys.isVisible(SkinLayout::Advanced);
    return true;
}

bool ClickableZone::readCorners(const SkinKeys &keys, SkinLayout layout)
{
    const auto number = [&keys, layout](const char *property) {
        return keys.number(layout, QLatin1StringView(property));
    };
    return setCorners(m_zones[std::size_t(layout)], number("PosX"), number("PosY"), number("Width"),
                      number("Height"));
}

bool ClickableZone::IsInside(qint16 X, qint16 Y, qint32 mode) const
{
    const auto &zone = m_zones[layoutIndex(mode)];
    return zone.left < X && X < zone.right && zone.top < Y && Y < zone.bottom;
}

qint16 ClickableZone::left(qint32 mode) const
{
    return m_zones[layoutIndex(mode)].left;
}

qint16 ClickableZone::top(qint32 mode) const
{
    return m_zones[layoutIndex(mode)].top;
}

qint16 ClickableZone::right(qint32 mode) const
{
    return m_zones[layoutIndex(mode)].right;
}

qint16 ClickableZone::bottom(qint32 mode) const
{
    return m_zones[layoutIndex(mode)].bottom;
}

bool ClickableZone::visible(qint32 mode) const
{
    return m_zones[layoutIndex(mode)].visible;
}

} // namespace Quorlin
