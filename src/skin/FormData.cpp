#include "skin/FormData.h"

#include "skin/SkinContext.h"
#include "skin/SkinError.h"
#include "skin/SkinKeys.h"
#include "skin/SkinMode.h"

namespace Quorlin {

FormData::FormData(const SkinContext &context) : m_context(context) {}

void FormData::SetDefValues(qint16 width, qint16 height, qint32 mode)
{
    m_sizes[layoutIndex(mode)] = {width, height};
}

bool FormData::SetValues(const IniFile &ini, const QString &name, const QString &section)
{
    const SkinKeys keys(ini, name, section);
    const auto sizeOf = [&keys](SkinLayout layout) {
        return Size{keys.number(layout, QLatin1StringView("Width")),
                    keys.number(layout, QLatin1StringView("Height"))};
    };
    const auto picture = m_context.loadPicture(keys.picture(SkinLayout::Classic));
    if (!picture)
        return false;
    m_pictures[layoutIndex(0)] = *picture;
    auto &classic = m_sizes[layoutIndex(0)];
    classic = sizeOf(SkinLayout::Classic);
    if (classic.width == 0 || classic.height == 0)
        return false;
    m_sizes[layoutIndex(1)] = sizeOf(SkinLayout::Advanced);
    return true;
}

void FormData::AssignValues(const WindowRef &form, qint32 mode) const
{
    const auto isBuiltIn = m_context.GetSkinName() == QLatin1StringView("None");
    if (!form.get().setSize({width(mode), height(mode)}) ||
        (!isBuiltIn && !form.get().setPicture(picture(mode))))
        SkinError::unknownProperty(QStringLiteral("FormData"));
}

void FormData::clearPicture(qint32 mode)
{
    m_pictures[layoutIndex(mode)] = {};
}

qint16 FormData::width(qint32 mode) const
{
    return m_sizes[layoutIndex(mode)].width;
}

qint16 FormData::height(qint32 mode) const
{
    return m_sizes[layoutIndex(mode)].height;
}

SkinPicture FormData::picture(qint32 mode) const
{
    return m_pictures[layoutIndex(mode)];
}

} // namespace Quorlin
