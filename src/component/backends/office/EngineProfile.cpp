#include "component/backends/office/EngineProfile.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <array>

namespace Quorlin {

namespace {

struct Setting
{
    const char *path;
    const char *name;
    const char *value;
};

constexpr std::array Settings{
    // Nothing is left to do for a first start. The version beyond any real one keeps the engine
    // from testing its drawing, as it does after every update.
    Setting{"org.openoffice.Setup/Office", "ooSetupInstCompleted", "true"},
    Setting{"org.openoffice.Setup/Office", "MigrationCompleted", "true"},
    Setting{"org.openoffice.Setup/Product", "ooSetupLastVersion", "9999.0"},
    Setting{"org.openoffice.Office.Common/Misc", "FirstRun", "false"},
    Setting{"org.openoffice.Office.Common/Misc", "CrashReport", "false"},
    Setting{"org.openoffice.Office.Common/Misc", "UseOpenCL", "false"},
    Setting{"org.openoffice.Office.Common/History", "PickListSize", "0"},
    Setting{"org.openoffice.Office.Recovery/RecoveryInfo", "Enabled", "false"},
    Setting{"org.openoffice.Office.Recovery/AutoSave", "Enabled", "false"},
    Setting{"org.openoffice.Office.Java/VirtualMachine", "Enable", "false"},
    // Documents are never looked at: what belongs to a view only is left out. Comments in the
    // margin would end an engine that is installed without a user interface.
    Setting{"org.openoffice.Office.Writer/Content/Display", "Note", "false"},
    Setting{"org.openoffice.Office.Writer/Content/Display", "UseHeaderFooterMenu", "false"},
    Setting{"org.openoffice.Office.Linguistic/SpellChecking", "IsSpellAuto", "false"},
    // No macro runs and nothing that a document points to is fetched; what tries the network
    // all the same meets a proxy that is not there.
    Setting{"org.openoffice.Office.Common/Security/Scripting", "MacroSecurityLevel", "3"},
    Setting{"org.openoffice.Office.Common/Security/Scripting", "DisableMacrosExecution", "true"},
    Setting{"org.openoffice.Office.Common/Security/Scripting", "BlockUntrustedRefererLinks",
            "true"},
    Setting{"org.openoffice.Office.Writer/Content/Update", "Link", "0"},
    Setting{"org.openoffice.Office.Calc/Content/Update", "Link", "1"},
    Setting{"org.openoffice.Inet/Settings", "ooInetProxyType", "2"},
    Setting{"org.openoffice.Inet/Settings", "ooInetHTTPProxyName", "127.0.0.1"},
    Setting{"org.openoffice.Inet/Settings", "ooInetHTTPProxyPort", "9"},
    Setting{"org.openoffice.Inet/Settings", "ooInetHTTPSProxyName", "127.0.0.1"},
    Setting{"org.openoffice.Inet/Settings", "ooInetHTTPSProxyPort", "9"},
};

QByteArray settingsFile()
{
    QByteArray text("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                    "<oor:items xmlns:oor=\"http://openoffice.org/2001/registry\">\n");
    for (const auto &setting : Settings) {
        text += QByteArray("<item oor:path=\"/") + setting.path + "\"><prop oor:name=\"" +
                setting.name + "\" oor:op=\"fuse\"><value>" + setting.value +
                "</value></prop></item>\n";
    }
    return text + "</oor:items>\n";
}

QByteArray element(const char *tag, const QString &path)
{
    return QByteArray("<") + tag + '>' + path.toHtmlEscaped().toUtf8() + "</" + tag + ">\n";
}

QByteArray include(const QString &path)
{
    return "<include ignore_missing=\"yes\">" + path.toHtmlEscaped().toUtf8() + "</include>\n";
}

/// The system's fonts and those of the user, whose home the engine does not see. The user's
/// cache comes last: it is read, and new caches are written into the engine's own home.
QByteArray fontsText()
{
    const auto system =
        qEnvironmentVariable("FONTCONFIG_FILE", QStringLiteral("/etc/fonts/fonts.conf"));
    const auto home = QDir::homePath();
    const auto at = [](QStandardPaths::StandardLocation location, const char *rest) {
        return QStandardPaths::writableLocation(location) + QLatin1String(rest);
    };
    return "<?xml version=\"1.0\"?>\n<fontconfig>\n" + include(system) +
           element("dir", home + QStringLiteral("/.fonts")) +
           element("dir", at(QStandardPaths::GenericDataLocation, "/fonts")) +
           include(at(QStandardPaths::GenericConfigLocation, "/fontconfig/fonts.conf")) +
           element("cachedir", at(QStandardPaths::GenericCacheLocation, "/fontconfig")) +
           "</fontconfig>\n";
}

bool writeNew(const QString &path, const QByteArray &bytes)
{
    if (QFile::exists(path))
        return true;
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

EngineProfile::EngineProfile(const QString &workFolder) : m_workFolder(workFolder) {}

bool EngineProfile::prepare(const QString &buildId) const
{
    const auto user = profileFolder() + QStringLiteral("/user");
    const auto extensions = user + QStringLiteral("/extensions");
    const QDir root;
    if (!root.mkpath(extensions) || !root.mkpath(homeFolder()) || !root.mkpath(temporaryFolder()))
        return false;
    return writeNew(user + QStringLiteral("/registrymodifications.xcu"), settingsFile()) &&
           writeNew(extensions + QStringLiteral("/buildid"), buildId.toUtf8()) &&
           writeNew(fontsFile(), fontsText());
}

QString EngineProfile::profileFolder() const
{
    return m_workFolder + QStringLiteral("/profile");
}

QString EngineProfile::homeFolder() const
{
    return m_workFolder + QStringLiteral("/home");
}

QString EngineProfile::temporaryFolder() const
{
    return m_workFolder + QStringLiteral("/tmp");
}

QString EngineProfile::fontsFile() const
{
    return m_workFolder + QStringLiteral("/fonts.conf");
}

} // namespace Quorlin
