#include "component/backends/office/EngineEnvironment.h"

#include "component/backends/office/EngineProfile.h"

#include <QProcessEnvironment>

#include <array>

namespace Quorlin::EngineEnvironment {

namespace {

constexpr std::array Fixed{
    std::pair{"SAL_USE_VCLPLUGIN", "svp"},
    // The engine's sockets lie in its current folder, its own, when it may not write elsewhere. The
    // path is short because that of a socket must be.
    std::pair{"OSL_SOCKET_PATH", "."},
    // Memory that a document needed is kept for the next one, and one pool serves all threads.
    std::pair{"MALLOC_TRIM_THRESHOLD_", "268435456"},
    std::pair{"MALLOC_MMAP_THRESHOLD_", "67108864"},
    std::pair{"MALLOC_TOP_PAD_", "16777216"},
    std::pair{"MALLOC_ARENA_MAX", "1"},
};

/// What belongs to a desktop, to the network, or to the real user's folders.
constexpr std::array Removed{
    "DISPLAY",         "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS",
    "SESSION_MANAGER", "http_proxy",      "https_proxy",
    "ftp_proxy",       "all_proxy",       "HTTP_PROXY",
    "HTTPS_PROXY",     "FTP_PROXY",       "ALL_PROXY",
    "XDG_CONFIG_HOME", "XDG_CACHE_HOME",  "XDG_DATA_HOME",
    "XDG_RUNTIME_DIR", "LD_PRELOAD",
};

bool isUtf8(const QString &locale)
{
    const auto name = locale.toLower();
    return name.contains(QLatin1String("utf-8")) || name.contains(QLatin1String("utf8"));
}

/// The locale that counts for characters, as the C library chooses it.
QString characterLocale(const QProcessEnvironment &environment)
{
    for (const auto *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const auto value = environment.value(QLatin1String(name));
        if (!value.isEmpty())
            return value;
    }
    return {};
}

} // namespace

QStringList make(const EngineProfile &profile)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto *name : Removed)
        environment.remove(QLatin1String(name));
    for (const auto &[name, value] : Fixed)
        environment.insert(QLatin1String(name), QLatin1String(value));
    if (!isUtf8(characterLocale(environment)))
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("HOME"), profile.homeFolder());
    environment.insert(QStringLiteral("TMPDIR"), profile.temporaryFolder());
    environment.insert(QStringLiteral("FONTCONFIG_FILE"), profile.fontsFile());
    return environment.toStringList();
}

} // namespace Quorlin::EngineEnvironment
