#pragma once

#include "skin/ControlSize.h"
#include "skin/FormData.h"
#include "skin/PictureData.h"
#include "skin/SkinElement.h"

#include <variant>
#include <vector>

namespace Quorlin {

/// One object for each element of a skin. An object is made on first use and then stays.
class SkinObjects
{
public:
    /// @param context must outlive this object.
    explicit SkinObjects(const SkinContext &context);

    /// Fills the Classic values of every object with those of the built-in layout.
    void setBuiltIn();

    /// Reads an element from a skin's description.
    /// @return false when the description does not give what it must.
    [[nodiscard]] bool read(const SkinElement &element, const IniFile &ini);

    /// Puts an element onto a window; a control that the window does not have is left out.
    /// Throws NumberedError when a control refuses a property that it must have.
    void assign(const SkinElement &element, const WindowRef &window, qint32 mode);

    /// Null when there is no element of this name, or one of another kind.
    [[nodiscard]] const ControlSize *control(QLatin1StringView name);
    [[nodiscard]] const FormData *form(QLatin1StringView name);
    [[nodiscard]] const PictureData *picture(QLatin1StringView name);

private:
    using Object = std::variant<std::monostate, ControlSize, FormData, PictureData>;

    [[nodiscard]] Object &objectOf(const SkinElement &element);
    [[nodiscard]] Object *objectOf(QLatin1StringView name);

    const SkinContext &m_context;
    std::vector<Object> m_objects;
};

} // namespace Quorlin
