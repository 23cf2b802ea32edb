#include "quorlin-settings/InstalledValues.h"

#include "convert/ConversionSettings.h"
#include "i18n/AppTextSource.h"
#include "i18n/LanguageFolder.h"
#include "i18n/TextTable.h"
#include "skin/AppSkin.h"
#include "skin/LeadingNumber.h"
#include "skin/SkinFolder.h"
#include "winsupport/MessageService.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace Quorlin {

namespace {

using Kind = Setting::Kind;

constexpr int NoQuality = -1;

QString noLayout()
{
    return QStringLiteral("None");
}

/// Keeps the last message of a loader.
class KeptMessage : public MessageService
{
public:
    void show(const QString &message, MessageStyle, const QString &) override { text = message; }

    QString text;
};

QStringList sorted(QStringList names)
{
    names.removeDuplicates();
    names.sort(Qt::CaseInsensitive);
    return names;
}

CheckedValue refused(const QString &problem)
{
    return {{}, problem};
}

CheckedValue checkSwitch(const QString &text)
{
    const auto word = text.toLower();
    if (word == QLatin1String("true") || word == QLatin1String("false"))
        return {word, {}};
    return refused(QStringLiteral("\"%1\" is neither true nor false").arg(text));
}

CheckedValue checkPosition(const QString &text)
{
    static const QRegularExpression place(QStringLiteral("^-?[0-9]{1,5},-?[0-9]{1,5}$"));
    if (text.contains(place))
        return {text, {}};
    return refused(
        QStringLiteral("\"%1\" is no place; write left and top in pixels, as 120,80").arg(text));
}

} // namespace

QStringList InstalledValues::of(const Setting &setting, SettingsLayer layer) const
{
    switch (setting.kind) {
    case Kind::Language:
        return languages();
    case Kind::Quality:
        return qualities();
    case Kind::Skin:
        return layer == SettingsLayer::Machine ? skins() << noLayout() : skins();
    case Kind::Switch:
        return {QStringLiteral("true"), QStringLiteral("false")};
    case Kind::Position:
        break;
    }
    return {};
}

CheckedValue InstalledValues::check(const Setting &setting, const QString &text,
                                    SettingsLayer layer) const
{
    switch (setting.kind) {
    case Kind::Language:
        return checkLanguage(text);
    case Kind::Quality:
        return checkQuality(text);
    case Kind::Skin:
        return checkSkin(text, layer);
    case Kind::Switch:
        return checkSwitch(text);
    case Kind::Position:
        break;
    }
    return checkPosition(text);
}

QString InstalledValues::remark(const Setting &setting, const QString &text) const
{
    switch (setting.kind) {
    case Kind::Language:
        return LanguageFolder(m_folder).fileOf(text).isEmpty() ? unknown(setting, text) : QString();
    case Kind::Skin:
        return hasSkin(text) || text == noLayout() ? QString() : unknown(setting, text);
    case Kind::Quality:
        return checkQuality(text).problem;
    case Kind::Switch:
        return checkSwitch(text).problem;
    case Kind::Position:
        break;
    }
    return text.isEmpty() ? QString() : checkPosition(text).problem;
}

QString InstalledValues::describe(const Setting &setting, const QString &text) const
{
    if (setting.kind != Kind::Quality)
        return text;
    const auto index = leadingNumber(text);
    const auto name = index == NoQuality ? QStringLiteral("none") : qualities().value(index);
    return name.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, name);
}

bool InstalledValues::hasSkin(const QString &name) const
{
    const auto path = SkinFolder(m_folder).pathOf(name);
    return !path.isEmpty() && QFileInfo(path).fileName() == name;
}

QStringList InstalledValues::languages() const
{
    const LanguageFolder folder(m_folder);
    QStringList names;
    for (const auto &name : folder.languages())
        if (!folder.fileOf(name).isEmpty())
            names.append(name);
    return sorted(names);
}

QStringList InstalledValues::skins() const
{
    const SkinFolder folder(m_folder);
    QStringList names;
    for (const auto &name : folder.names())
        if (!folder.descriptionOf(name).isEmpty())
            names.append(name);
    return sorted(names);
}

/// In the order of the window's list.
QStringList InstalledValues::qualities() const
{
    const auto settings = ConversionSettings::load(m_folder);
    return settings ? settings->jobOptions.names() : QStringList();
}

/// The name is kept as its file has it: the menu marks the language in use by it.
CheckedValue InstalledValues::checkLanguage(const QString &name) const
{
    const auto file = LanguageFolder(m_folder).fileOf(name);
    if (file.isEmpty())
        return refused(unknown(*Setting::find(QStringLiteral("Language")), name));
    const auto exact = QFileInfo(file).fileName().chopped(4);
    TextTable table;
    switch (table.load(file, exact)) {
    case TextTable::Result::Loaded:
        return {exact, {}};
    case TextTable::Result::NotFound:
        return refused(QStringLiteral("%1 cannot be read").arg(file));
    case TextTable::Result::Invalid:
        break;
    }
    return refused(QStringLiteral("%1 is damaged: %2 is missing, empty or there twice")
                       .arg(file, table.problem()));
}

CheckedValue InstalledValues::checkQuality(const QString &text) const
{
    const auto settings = ConversionSettings::load(m_folder);
    if (!settings)
        return refused(QStringLiteral("%1/Quorlin.ini cannot be read").arg(m_folder));
    const auto names = settings->jobOptions.names();
    auto index = names.indexOf(text);
    if (index < 0)
        index = names.indexOf(QRegularExpression(
            QRegularExpression::anchoredPattern(QRegularExpression::escape(text)),
            QRegularExpression::CaseInsensitiveOption));
    bool isNumber = index >= 0;
    if (!isNumber)
        index = text.toInt(&isNumber);
    if (!isNumber || index < NoQuality || index >= names.size())
        return refused(QStringLiteral("there is no quality \"%1\"; there are: %2")
                           .arg(text, names.join(QLatin1String(", "))));
    const auto kept = QString::number(index);
    if (index == NoQuality)
        return {kept, {}};
    const auto file = settings->jobOptions.Item(names.at(index))->Filename();
    if (!QFileInfo(file).isFile())
        return refused(QStringLiteral("the file of the quality %1 is not there: %2")
                           .arg(names.at(index), file));
    return {kept, {}};
}

/// The window passes over a user's value that is no folder, so "None" works for the machine alone.
CheckedValue InstalledValues::checkSkin(const QString &name, SettingsLayer layer) const
{
    if (name == noLayout())
        return layer == SettingsLayer::Machine
                   ? CheckedValue{name, {}}
                   : refused(QStringLiteral("None can be set for the machine only"));
    const auto path = SkinFolder(m_folder).pathOf(name);
    if (path.isEmpty())
        return refused(unknown(*Setting::find(QStringLiteral("Skin")), name));
    const auto exact = QFileInfo(path).fileName();
    const auto problem = problemOfSkin(exact);
    return problem.isEmpty() ? CheckedValue{exact, {}} : refused(problem);
}

/// There is no window that the skin would be put onto.
QString InstalledValues::problemOfSkin(const QString &name) const
{
    KeptMessage message;
    const AppTextSource texts;
    AppSkin::Initialise(m_folder, message, texts);
    AppSkin::SetSkin(name);
    const auto isLoaded = AppSkin::GetSkinName() == name;
    AppSkin::Finish();
    return isLoaded ? QString() : message.text;
}

QString InstalledValues::unknown(const Setting &setting, const QString &text) const
{
    const auto kind =
        setting.kind == Kind::Language ? QStringLiteral("language") : QStringLiteral("skin");
    return QStringLiteral("there is no %1 \"%2\"; there are: %3")
        .arg(kind, text, of(setting, SettingsLayer::User).join(QLatin1String(", ")));
}

} // namespace Quorlin
