#include "quorlin-settings/SettingsTool.h"

#include "tool/Console.h"
#include "ui/UserSettings.h"

#include <algorithm>

namespace Quorlin {

namespace {

using ExitCode = SettingsTool::ExitCode;
using Layer = SettingsLayer;

quint32 rootOf(Layer layer)
{
    return layer == Layer::User ? RegistryRoot::CurrentUser : RegistryRoot::LocalMachine;
}

QString reasonOf(RegistryStatus status, Layer layer)
{
    switch (status) {
    case RegistryStatus::Denied:
        return layer == Layer::Machine ? QStringLiteral("permission denied; only root may write it")
                                       : QStringLiteral("permission denied");
    case RegistryStatus::Busy:
        return QStringLiteral("another program holds it; try again");
    case RegistryStatus::Damaged:
        return QStringLiteral("it is damaged; the next \"set\" sets it aside and begins a new one");
    case RegistryStatus::Unusable:
        return QStringLiteral("it is not a settings file, or of a newer version");
    default:
        break;
    }
    return QStringLiteral("the system failed; is the disk full?");
}

} // namespace

SettingsTool::SettingsTool(const SettingsScene &scene, Console &console)
    : m_scene(scene), m_console(console), m_installed(scene.programFolder), m_registry(scene.store)
{
}

void SettingsTool::complain(Console &console, const QString &text)
{
    console.note(QStringLiteral("quorlin-settings: ") + text);
}

ExitCode SettingsTool::run(const SettingsRequest &request)
{
    using Action = SettingsRequest::Action;
    switch (request.action) {
    case Action::List:
        return list(request.layer);
    case Action::Get:
        return get(*request.setting, request.layer);
    case Action::Set:
        return set(request);
    case Action::Remove:
        return remove(*request.setting, request.layer);
    case Action::Values:
        return showValues(*request.setting, request.layer);
    case Action::Help:
    case Action::Version:
        break;
    }
    const auto text = request.action == Action::Help
                          ? SettingsRequest::help()
                          : QStringLiteral("quorlin-settings " QUORLIN_VERSION "\n");
    return m_console.writeOutput(text.toUtf8()) ? Done : Failed;
}

ExitCode SettingsTool::list(Layer layer)
{
    QList<QStringList> rows;
    for (const auto &setting : Setting::all()) {
        if (layer == Layer::Machine && !setting.isForMachine)
            continue;
        const auto found = find(setting, layer);
        const auto value = m_installed.describe(setting, found.text);
        rows.append({setting.name, value.isEmpty() ? QStringLiteral("-") : value, found.origin,
                     found.remark});
    }
    const auto widest =
        std::ranges::max(rows, {}, [](const auto &row) { return row.at(1).size(); }).at(1).size();
    for (const auto &row : rows) {
        auto line = row.at(0).leftJustified(13) + row.at(1).leftJustified(widest + 2) + row.at(2);
        if (!row.at(3).isEmpty())
            line += QStringLiteral(": ") + row.at(3);
        m_console.print(line);
    }
    return m_unreadable.isEmpty() ? Done : Failed;
}

ExitCode SettingsTool::get(const Setting &setting, Layer layer)
{
    m_console.print(find(setting, layer).text);
    return m_unreadable.isEmpty() ? Done : Failed;
}

ExitCode SettingsTool::set(const SettingsRequest &request)
{
    const auto &setting = *request.setting;
    const auto checked = m_installed.check(setting, request.value, request.layer);
    if (!checked.problem.isEmpty()) {
        complain(m_console, checked.problem);
        return WrongUse;
    }
    const auto status = m_scene.store->setValue(
        key(request.layer), setting.name, *RegistryValue::from(RegistryType::Text, checked.text));
    if (status != RegistryStatus::Done)
        return failed(status, request.layer, QStringLiteral("written"));
    m_console.print(
        QStringLiteral("%1 = %2").arg(setting.name, m_installed.describe(setting, checked.text)));
    warnOfWindow(request.layer);
    return Done;
}

ExitCode SettingsTool::remove(const Setting &setting, Layer layer)
{
    const auto status = m_scene.store->deleteValue(key(layer), setting.name);
    if (status == RegistryStatus::Missing) {
        m_console.print(QStringLiteral("%1 was not set").arg(setting.name));
        return Done;
    }
    if (status != RegistryStatus::Done)
        return failed(status, layer, QStringLiteral("written"));
    const auto found = find(setting, layer);
    m_console.print(
        QStringLiteral("%1 = %2 (%3)")
            .arg(setting.name, m_installed.describe(setting, found.text), found.origin));
    warnOfWindow(layer);
    return Done;
}

ExitCode SettingsTool::showValues(const Setting &setting, Layer layer)
{
    for (const auto &value : m_installed.of(setting, layer))
        m_console.print(value);
    return Done;
}

/// As the window looks for it: an empty value counts as none, and so does a user's skin that has
/// no folder.
SettingsTool::Found SettingsTool::find(const Setting &setting, Layer layer)
{
    QString remark;
    if (layer == Layer::User) {
        const auto own = read(setting, Layer::User);
        const auto isPassedOver =
            setting.kind == Setting::Kind::Skin && !own.isEmpty() && !m_installed.hasSkin(own);
        if (!own.isEmpty() && !isPassedOver)
            return {own, QStringLiteral("user"), m_installed.remark(setting, own)};
        if (isPassedOver)
            remark = QStringLiteral("the user's skin \"%1\" is not installed").arg(own);
    }
    const auto machines = setting.isForMachine ? read(setting, Layer::Machine) : QString();
    if (!machines.isEmpty())
        return {machines, QStringLiteral("machine"),
                remark.isEmpty() ? m_installed.remark(setting, machines) : remark};
    return {setting.builtIn, QStringLiteral("built-in"),
            remark.isEmpty() ? m_installed.remark(setting, setting.builtIn) : remark};
}

QString SettingsTool::read(const Setting &setting, Layer layer)
{
    const auto status = m_scene.store->queryValue(key(layer), setting.name).status;
    if (status == RegistryStatus::Done)
        return m_registry.GetKey(rootOf(layer), UserSettings::key(), RegistryType::Text,
                                 setting.name);
    if (status != RegistryStatus::Missing && !m_unreadable.contains(file(layer))) {
        m_unreadable.append(file(layer));
        failed(status, layer, QStringLiteral("read"));
    }
    return {};
}

RegistryKey SettingsTool::key(Layer layer) const
{
    return {rootOf(layer), UserSettings::key()};
}

QString SettingsTool::file(Layer layer) const
{
    return layer == Layer::User ? m_scene.userFile : m_scene.machineFile;
}

ExitCode SettingsTool::failed(RegistryStatus status, Layer layer, const QString &verb)
{
    complain(m_console,
             QStringLiteral("%1 cannot be %2: %3").arg(file(layer), verb, reasonOf(status, layer)));
    return Failed;
}

void SettingsTool::warnOfWindow(Layer layer)
{
    if (layer == Layer::User && m_scene.isWindowOpen())
        complain(m_console, QStringLiteral("a window of Quorlin is open; it will write its own "
                                           "settings when it is closed"));
}

} // namespace Quorlin
