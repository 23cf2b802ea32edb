#include "skin/SkinObjects.h"

#include "skin/SkinContext.h"
#include "skin/SkinTarget.h"

namespace Quorlin {

namespace {

constexpr qint32 Classic = 0;

void setBuiltInOf(ControlSize &object, const SkinElement::Place &place)
{
    object.SetDefValues(place.x, place.y, place.width, place.height, place.visible, Classic);
}

void setBuiltInOf(FormData &object, const SkinElement::Place &place)
{
    object.SetDefValues(place.width, place.height, Classic);
    object.clearPicture(Classic);
}

void setBuiltInOf(PictureData &object, const SkinElement::Place & /*place*/)
{
    object.clearPicture(Classic);
}

} // namespace

SkinObjects::SkinObjects(const SkinContext &context)
    : m_context(context), m_objects(SkinElement::all().size())
{
}

SkinObjects::Object &SkinObjects::objectOf(const SkinElement &element)
{
    auto &object = m_objects.at(std::size_t(&element - SkinElement::all().data()));
    if (!std::holds_alternative<std::monostate>(object))
        return object;
    switch (element.kind) {
    case SkinKind::Position:
    case SkinKind::Geometry:
        object.emplace<ControlSize>();
        break;
    case SkinKind::Window:
        object.emplace<FormData>(m_context);
        break;
    case SkinKind::Picture:
        object.emplace<PictureData>(m_context);
        break;
    }
    return object;
}

SkinObjects::Object *SkinObjects::objectOf(QLatin1StringView name)
{
    const auto index = SkinElement::indexOf(name);
    return index ? &objectOf(SkinElement::all()[*index]) : nullptr;
}

void SkinObjects::setBuiltIn()
{
    for (const auto &element : SkinElement::all()) {
        auto &object = objectOf(element);
        if (auto *const control = std::get_if<ControlSize>(&object))
            setBuiltInOf(*control, element.builtIn);
        else if (auto *const form = std::get_if<FormData>(&object))
            setBuiltInOf(*form, element.builtIn);
        else if (auto *const picture = std::get_if<PictureData>(&object))
            setBuiltInOf(*picture, element.builtIn);
    }
}

bool SkinObjects::read(const SkinElement &element, const IniFile &ini)
{
    auto &object = objectOf(element);
    if (auto *const control = std::get_if<ControlSize>(&object)) {
        return element.kind == SkinKind::Position
                   ? control->SetPos(ini, element.name, element.section)
                   : control->SetValues(ini, element.name, element.section);
    }
    if (auto *const form = std::get_if<FormData>(&object))
        return form->SetValues(ini, element.name, element.section);
    auto *const picture = std::get_if<PictureData>(&object);
    return picture && picture->SetValues(ini, element.name, element.section);
}

void SkinObjects::assign(const SkinElement &element, const WindowRef &window, qint32 mode)
{
    auto &object = objectOf(element);
    if (const auto *const form = std::get_if<FormData>(&object)) {
        form->AssignValues(window, mode);
        return;
    }
    auto *const target = window.get().find(element.control);
    if (!target)
        return;
    if (const auto *const picture = std::get_if<PictureData>(&object)) {
        // With the built-in layout the windows keep the pictures that they were made with.
        if (m_context.GetSkinName() != QLatin1StringView("None"))
            picture->AssignValues(*target, mode);
    } else if (const auto *const control = std::get_if<ControlSize>(&object)) {
        if (element.kind == SkinKind::Position)
            control->AssignPos(*target, mode);
        else
            control->AssignValues(*target, mode);
    }
}

const ControlSize *SkinObjects::control(QLatin1StringView name)
{
    auto *const object = objectOf(name);
    return object ? std::get_if<ControlSize>(object) : nullptr;
}

const FormData *SkinObjects::form(QLatin1StringView name)
{
    auto *const object = objectOf(name);
    return object ? std::get_if<FormData>(object) : nullptr;
}

const PictureData *SkinObjects::picture(QLatin1StringView name)
{
    auto *const object = objectOf(name);
    return object ? std::get_if<PictureData>(object) : nullptr;
}

} // namespace Quorlin
