#include "quorlin-settings/SettingsRequest.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

using Action = SettingsRequest::Action;

struct Command
{
    QLatin1StringView word;
    Action action;
    int operands;
};

constexpr std::array Commands{
    Command{QLatin1StringView("list"), Action::List, 0},
    Command{QLatin1StringView("get"), Action::Get, 1},
    Command{QLatin1StringView("set"), Action::Set, 2},
    Command{QLatin1StringView("remove"), Action::Remove, 1},
    Command{QLatin1StringView("values"), Action::Values, 1},
};

constexpr char Help[] = R"(Usage: quorlin-settings [--machine] list
       quorlin-settings [--machine] get NAME
       quorlin-settings [--machine] set NAME VALUE
       quorlin-settings [--machine] remove NAME
       quorlin-settings [--machine] values NAME

Shows and changes what the window of Quorlin remembers. A setting has the value of
its user, else the machine's, else a built-in one.

Commands:
  list              show every setting with its value and where that comes from
  get NAME          show the value of a setting
  set NAME VALUE    check a value and keep it
  remove NAME       forget a value; the next one in line counts again
  values NAME       show what a setting can be set to

Options:
      --machine     the machine's values instead of the user's: everybody may see
                    them, root may change them
  -h, --help        show this help and end
      --version     show the version and end

Settings:
  Language          a language that is installed
  Quality           the name of a quality, or its place in the list, from 0; -1 for
                    none. The place is what is kept
  Skin              a skin that is installed; for the machine also None
  ShowOption        whether to open each result: true or false
  MergeOption       whether to make one PDF of all documents: true or false
  Position          place of the window, as 120,80

Only Language, Quality and Skin count for the machine.

A window writes all its settings when it is closed. What is set for a user while one
is open is lost then, and the machine's values count only for users who have none
of their own yet.

Exit codes:
  0    done
  1    the settings could not be read or written
  2    the command line was wrong, or the value was refused; nothing was changed
)";

/// The words that are no options; numbers below 0 are none.
QStringList operandsOf(const QStringList &arguments, SettingsRequest &request, QString &unknown)
{
    static const QRegularExpression number(QStringLiteral("^-[0-9]"));
    QStringList operands;
    bool isEnded = false;
    for (const auto &argument : arguments) {
        const auto isOption = !isEnded && argument.size() > 1 &&
                              argument.startsWith(QLatin1Char('-')) && !argument.contains(number);
        if (!isOption)
            operands.append(argument);
        else if (argument == QLatin1String("--"))
            isEnded = true;
        else if (argument == QLatin1String("--machine"))
            request.layer = SettingsLayer::Machine;
        else if (unknown.isEmpty())
            unknown = argument;
    }
    return operands;
}

QString missing(const Command &command)
{
    return command.operands == 0
               ? QStringLiteral("\"%1\" stands alone").arg(command.word)
               : QStringLiteral("\"%1\" needs %2")
                     .arg(command.word, command.operands == 1
                                            ? QStringLiteral("a name")
                                            : QStringLiteral("a name and a value"));
}

QString wrongName(const QString &name)
{
    return QStringLiteral("there is no setting \"%1\"; there are: %2")
        .arg(name, Setting::names().join(QLatin1String(", ")));
}

QString withoutEffect(const Setting &setting)
{
    return QStringLiteral("%1 has no effect for the machine; only these are looked up there: %2")
        .arg(setting.name, Setting::machineNames().join(QLatin1String(", ")));
}

/// @return what is wrong; empty when nothing is.
QString complete(SettingsRequest &request, const QStringList &operands)
{
    if (operands.isEmpty())
        return QStringLiteral("no command given");
    const auto *const command = std::ranges::find(Commands, operands.first(), &Command::word);
    if (command == Commands.end())
        return QStringLiteral("there is no command \"%1\"").arg(operands.first());
    if (operands.size() - 1 != command->operands)
        return missing(*command);
    request.action = command->action;
    if (command->operands == 0)
        return {};
    request.setting = Setting::find(operands.at(1));
    if (!request.setting)
        return wrongName(operands.at(1));
    request.value = operands.value(2);
    const auto isInVain = request.action == Action::Set &&
                          request.layer == SettingsLayer::Machine && !request.setting->isForMachine;
    return isInVain ? withoutEffect(*request.setting) : QString();
}

} // namespace

std::optional<SettingsRequest> SettingsRequest::read(const QStringList &arguments, QString &error)
{
    SettingsRequest request;
    QString option;
    const auto operands = operandsOf(arguments, request, option);
    if (option == QLatin1String("-h") || option == QLatin1String("--help"))
        return request;
    if (option == QLatin1String("--version")) {
        request.action = Action::Version;
        return request;
    }
    error = option.isEmpty() ? complete(request, operands)
                             : QStringLiteral("there is no option \"%1\"").arg(option);
    return error.isEmpty() ? std::optional(request) : std::nullopt;
}

QString SettingsRequest::help()
{
    return QString::fromLatin1(Help);
}

} // namespace Quorlin
