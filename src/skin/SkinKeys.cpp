#include "skin/SkinKeys.h"

#include "settings/IniFile.h"
#include "skin/LeadingNumber.h"

namespace Quorlin {

SkinKeys::SkinKeys(const IniFile &ini, const QString &name, const QString &section)
    : m_ini(ini), m_name(name), m_section(section)
{
}

QString SkinKeys::value(SkinLayout layout, QLatin1StringView property) const
{
    const auto word = layout == SkinLayout::Classic ? QLatin1StringView("Classic")
                                                    : QLatin1StringView("Advanced");
    return m_ini.GetVar(word + m_name + property, m_section);
}

qint16 SkinKeys::number(SkinLayout layout, QLatin1StringView property) const
{
    return leadingNumber(value(layout, property));
}

bool SkinKeys::isVisible(SkinLayout layout) const
{
    return value(layout, QLatin1StringView("Visible")).toLower() != QLatin1StringView("false");
}

QString SkinKeys::picture(SkinLayout layout) const
{
    return value(layout, QLatin1StringView("Picture"));
}

} // namespace Quorlin
