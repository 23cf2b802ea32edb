#include "skin/ControlSize.h"

#include "skin/SkinError.h"
#include "skin/SkinKeys.h"
#include "skin/SkinMode.h"
#include "skin/SkinTarget.h"

namespace Quorlin {

void ControlSize::SetDefValues(qint16 X, qint16 Y, qint16 width, qint16 height, bool visible,
                               qint32 mode)
{
    m_visible[layoutIndex(mode)] = visible;
    m_places[layoutIndex(mode)] = {X, Y, width, height};
}

bool ControlSize::SetPos(const IniFile &ini, const QString &name, const QString &section)
{
    const SkinKeys keys(ini, name, section);
    readPosition(keys, SkinLayout::Classic);
    const auto &classic = m_places[layoutIndex(0)];
    if (classic.x == 0 || classic.y == 0)
        return false;
    readVisible(keys, SkinLayout::Classic);
    readPosition(keys, SkinLayout::Advanced);
    readVisible(keys, SkinLayout::Advanced);
    return true;
}

bool ControlSize::SetValues(const IniFile &ini, const QString &name, const QString &section)
{
    const SkinKeys keys(ini, name, section);
    readPosition(keys, SkinLayout::Classic);
    readSize(keys, SkinLayout::Classic);
    const auto &classic = m_places[layoutIndex(0)];
    if (classic.x == 0 || classic.y == 0 || classic.width == 0 || classic.height == 0)
        return false;
    readVisible(keys, SkinLayout::Classic);
    readPosition(keys, SkinLayout::Advanced);
    readSize(keys, SkinLayout::Advanced);
    readVisible(keys, SkinLayout::Advanced);
    return true;
}

void ControlSize::AssignPos(SkinTarget &obj, qint32 mode) const
{
    const auto set = [&obj](const char *property, const QVariant &value) {
        if (!obj.set(QLatin1StringView(property), value))
            SkinError::unknownProperty(QStringLiteral("ControlSize"));
    };
    set("visible", visible(mode));
    set("Left", int(X(mode)));
    set("Top", int(Y(mode)));
}

void ControlSize::AssignValues(SkinTarget &obj, qint32 mode) const
{
    // A control without one of the properties still receives the others.
    const auto set = [&obj](const char *property, const QVariant &value) {
        static_cast<void>(obj.set(QLatin1StringView(property), value));
    };
    set("visible", visible(mode));
    set("width", int(width(mode)));
    set("height", int(height(mode)));
    set("Left", int(X(mode)));
    set("Top", int(Y(mode)));
}

void ControlSize::width(qint16 value, qint32 mode)
{
    m_places[layoutIndex(mode)].width = value;
}

void ControlSize::height(qint16 value, qint32 mode)
{
    m_places[layoutIndex(mode)].height = value;
}

bool ControlSize::visible(qint32 mode) const
{
    return m_visible[layoutIndex(mode)];
}

qint16 ControlSize::X(qint32 mode) const
{
    return m_places[layoutIndex(mode)].x;
}

qint16 ControlSize::Y(qint32 mode) const
{
    return m_places[layoutIndex(mode)].y;
}

qint16 ControlSize::width(qint32 mode) const
{
    return m_places[layoutIndex(mode)].width;
}

qint16 ControlSize::height(qint32 mode) const
{
    return m_places[layoutIndex(mode)].height;
}

void ControlSize::readPosition(const SkinKeys &keys, SkinLayout layout)
{
    auto &place = m_places[std::size_t(layout)];
    place.x = keys.number(layout, QLatin1StringView("PosX"));
    place.y = keys.number(layout, QLatin1StringView("PosY"));
}

void ControlSize::readSize(const SkinKeys &keys, SkinLayout layout)
{
    auto &place = m_places[std::size_t(layout)];
    place.width = keys.number(layout, QLatin1StringView("Width"));
    place.height = keys.number(layout, QLatin1StringView("Height"));
}

void ControlSize::readVisible(const SkinKeys &keys, SkinLayout layout)
{
    m_visible[std::size_t(layout)] = keys.isVisible(layout);
}

} // namespace Quorlin
