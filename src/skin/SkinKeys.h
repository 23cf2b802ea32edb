#pragma once

#include "skin/SkinMode.h"

#include <QLatin1StringView>
#include <QString>

namespace Quorlin {

class IniFile;

/// The values of one element in a skin's description. A key is the layout's word, the element's
/// name and the property's word: "ClassicClosePosX".
class SkinKeys
{
public:
    /// @param ini must outlive this object.
    SkinKeys(const IniFile &ini, const QString &name, const QString &section);

    /// Pixels; 0 when the key is missing or holds no number, or one that 16 bits cannot hold.
    [[nodiscard]] qint16 number(SkinLayout layout, QLatin1StringView property) const;

    /// False only for "false" in any case.
    [[nodiscard]] bool isVisible(SkinLayout layout) const;

    /// What the key "Picture" holds.
    [[nodiscard]] QString picture(SkinLayout layout) const;

private:
    [[nodiscard]] QString value(SkinLayout layout, QLatin1StringView property) const;

    const IniFile &m_ini;
    QString m_name;
    QString m_section;
};

} // namespace Quorlin
