#include "skin/PictureData.h"

#include "skin/SkinContext.h"
#include "skin/SkinError.h"
#include "skin/SkinKeys.h"
#include "skin/SkinMode.h"
#include "skin/SkinTarget.h"

namespace Quorlin {

PictureData::PictureData(const SkinContext &context) : m_context(context) {}

bool PictureData::SetValues(const IniFile &ini, const QString &name, const QString &section)
{
    const SkinKeys keys(ini, name, section);
    const auto loaded = m_context.loadPicture(keys.picture(SkinLayout::Classic));
    if (!loaded)
        return false;
    m_pictures[layoutIndex(0)] = *loaded;
    return true;
}

void PictureData::AssignValues(SkinTarget &obj, qint32 mode) const
{
    if (!obj.set(QLatin1StringView("Picture"), QVariant::fromValue(picture(mode))))
        SkinError::unknownProperty(QStringLiteral("PictureData"));
}

void PictureData::clearPicture(qint32 mode)
{
    m_pictures[layoutIndex(mode)] = {};
}

SkinPicture PictureData::picture(qint32 mode) const
{
    return m_pictures[layoutIndex(mode)];
}

} // namespace Quorlin
