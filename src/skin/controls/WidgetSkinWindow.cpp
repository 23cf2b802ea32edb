#include "skin/controls/WidgetSkinWindow.h"

#include "skin/SkinPicture.h"

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

using Setter = bool (*)(QWidget &control, int pixels);

struct PixelProperty
{
    QLatin1StringView name;
    Setter set;
};

/// What a window may measure on each side, so that its pixels have room in memory.
constexpr QSize Largest(4096, 4096);

/// A control cannot be smaller than nothing.
bool resizeTo(QWidget &control, int width, int height)
{
    if (width < 0 || height < 0)
        return false;
    control.resize(width, height);
    return true;
}

bool setWidth(QWidget &control, int pixels)
{
    return resizeTo(control, pixels, control.height());
}

bool setHeight(QWidget &control, int pixels)
{
    return resizeTo(control, control.width(), pixels);
}

bool setLeft(QWidget &control, int pixels)
{
    control.move(pixels, control.y());
    return true;
}

bool setTop(QWidget &control, int pixels)
{
    control.move(control.x(), pixels);
    return true;
}

constexpr std::array PixelProperties{
    PixelProperty{QLatin1StringView("width"), setWidth},
    PixelProperty{QLatin1StringView("height"), setHeight},
    PixelProperty{QLatin1StringView("Left"), setLeft},
    PixelProperty{QLatin1StringView("Top"), setTop},
};

bool setDeclared(QObject *object, const char *property, const QVariant &value)
{
    return object && object->metaObject()->indexOfProperty(property) >= 0 &&
           object->setProperty(property, value);
}

} // namespace

WidgetSkinWindow::WidgetSkinWindow(QWidget &window) : m_window(&window) {}

SkinTarget *WidgetSkinWindow::find(QLatin1StringView objectName)
{
    auto *const control = m_window ? m_window->findChild<QWidget *>(QString(objectName)) : nullptr;
    m_target.setControl(control);
    return control ? &m_target : nullptr;
}

bool WidgetSkinWindow::setSize(const QSize &pixels)
{
    auto *const window = m_window.data();
    if (!window)
        return false;
    window->setFixedSize(pixels.expandedTo({1, 1}).boundedTo(Largest));
    return true;
}

bool WidgetSkinWindow::setPicture(const SkinPicture &picture)
{
    return setDeclared(m_window.data(), "Picture", QVariant::fromValue(picture));
}

bool WidgetSkinWindow::Target::set(QLatin1StringView property, const QVariant &value)
{
    auto *const control = m_control.data();
    if (!control)
        return false;
    if (property == QLatin1StringView("visible")) {
        control->setVisible(value.toBool());
        return true;
    }
    const auto *const found = std::ranges::find(PixelProperties, property, &PixelProperty::name);
    if (found != PixelProperties.end())
        return found->set(*control, value.toInt());
    return setDeclared(control, property.data(), value);
}

} // namespace Quorlin
