#include "ui/UserSettings.h"

#include "i18n/LanguageName.h"
#include "settings/Registry.h"
#include "settings/RegistryStore.h"
#include "skin/LeadingNumber.h"

#include <QFileInfo>
#include <QStringList>

namespace Quorlin {

UserSettings::UserSettings(Registry &registry, const QString &programFolder)
    : m_registry(registry), m_programFolder(programFolder)
{
}

QString UserSettings::key()
{
    return QStringLiteral("Software\\Varnex Software\\Quorlin\\2.0");
}

QString UserSettings::own(const char *name) const
{
    return m_registry.GetAppData(QLatin1String(name));
}

QString UserSettings::machines(const char *name) const
{
    return m_registry.GetKey(RegistryRoot::LocalMachine, key(), RegistryType::Text,
                             QLatin1String(name));
}

QString UserSettings::ownOrMachines(const char *name) const
{
    const auto value = own(name);
    return value.isEmpty() ? machines(name) : value;
}

bool UserSettings::isTrue(const char *name) const
{
    return own(name).toLower() == QLatin1String("true");
}

void UserSettings::set(const char *name, bool on)
{
    m_registry.SetAppData(QLatin1String(name),
                          on ? QStringLiteral("true") : QStringLiteral("false"));
}

QString UserSettings::language() const
{
    const auto name = ownOrMachines("Language");
    return name.isEmpty() ? LanguageName::English.toString() : name;
}

int UserSettings::quality(int count) const
{
    if (count == 0)
        return -1;
    const int index = leadingNumber(ownOrMachines("Quality"));
    return index >= -1 && index < count ? index : 0;
}

QString UserSettings::skin() const
{
    auto name = own("Skin");
    if (!hasFolder(name))
        name = machines("Skin");
    return name.isEmpty() ? QStringLiteral("Varnex") : name;
}

/// A skin is named by its folder, never by a way to some other place.
bool UserSettings::hasFolder(const QString &skin) const
{
    const auto isName = !skin.isEmpty() && !skin.contains(QLatin1Char('/')) &&
                        skin != QLatin1String(".") && skin != QLatin1String("..");
    return isName && QFileInfo(m_programFolder + QLatin1String("/skins/") + skin).isDir();
}

std::optional<QPoint> UserSettings::position() const
{
    const auto parts = own("Position").split(QLatin1Char(','));
    if (parts.size() != 2)
        return std::nullopt;
    bool isLeftNumber = false;
    bool isTopNumber = false;
    const QPoint position(parts.at(0).toInt(&isLeftNumber), parts.at(1).toInt(&isTopNumber));
    return isLeftNumber && isTopNumber ? std::optional(position) : std::nullopt;
}

void UserSettings::setLanguage(const QString &name)
{
    m_registry.SetAppData(QStringLiteral("Language"), name);
}

void UserSettings::setQuality(int index)
{
    m_registry.SetAppData(QStringLiteral("Quality"), QString::number(index));
}

void UserSettings::setSkin(const QString &name)
{
    m_registry.SetAppData(QStringLiteral("Skin"), name);
}

void UserSettings::setPosition(const QPoint &position)
{
    m_registry.SetAppData(QStringLiteral("Position"),
                          QStringLiteral("%1,%2").arg(position.x()).arg(position.y()));
}

QString UserSettings::takePendingFile()
{
    const auto text = own("File");
    // Mostly there is nothing, and a write costs the window's thread some milliseconds.
    if (!text.isEmpty())
        m_registry.SetAppData(QStringLiteral("File"), {});
    return text;
}

void UserSettings::clearStart()
{
    m_registry.SetAppData(QStringLiteral("File"), {});
    m_registry.SetAppData(QStringLiteral("Run"), QStringLiteral("0"));
}

} // namespace Quorlin
