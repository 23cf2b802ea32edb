#include "component/confinement/PlaceRules.h"

#include "component/confinement/SystemPlaces.h"

#include <QFile>

#include <cstdint>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Quorlin {

namespace {

// The kernel's interface, include/uapi/linux/landlock.h. The machine's own header may be older
// than the kernel that the program meets.
constexpr long CreateRuleset = 444;
constexpr long AddRule = 445;
constexpr long RestrictSelf = 446;
constexpr unsigned AskVersion = 1;
constexpr int PathBeneath = 1;

struct RulesetAttributes
{
    std::uint64_t files;
    std::uint64_t network;
    std::uint64_t scoped;
};

struct [[gnu::packed]] PathBeneathAttributes
{
    std::uint64_t rights;
    std::int32_t place;
};

enum Right : std::uint64_t {
    Execute = 1U << 0,
    WriteFile = 1U << 1,
    ReadFile = 1U << 2,
    ReadFolder = 1U << 3,
    RemoveFolder = 1U << 4,
    RemoveFile = 1U << 5,
    MakeFolder = 1U << 7,
    MakeFile = 1U << 8,
    MakeSocket = 1U << 9,
    Refer = 1U << 13,
    Truncate = 1U << 14,
};

constexpr std::uint64_t FileRights = Execute | WriteFile | ReadFile | Truncate;
constexpr std::uint64_t Read = ReadFile | ReadFolder;
/// No links, pipes and devices: what is read later must not lead out of the folder or block.
constexpr std::uint64_t Write = Read | WriteFile | RemoveFolder | RemoveFile | MakeFolder |
                                MakeFile | MakeSocket | Refer | Truncate;

constexpr int FirstWithRefer = 2;
constexpr int FirstWithTruncate = 3;
constexpr int FirstWithNetwork = 4;
constexpr int FirstWithDevices = 5;
constexpr int FirstWithScopes = 6;

/// All rights to files that the version knows; what is not granted is refused.
std::uint64_t allFileRights(int version)
{
    int bits = 13;
    if (version >= FirstWithRefer)
        bits = 14;
    if (version >= FirstWithTruncate)
        bits = 15;
    if (version >= FirstWithDevices)
        bits = 16;
    return (std::uint64_t{1} << bits) - 1;
}

int makeRuleset(int version)
{
    RulesetAttributes attributes{allFileRights(version), 0, 0};
    std::size_t size = sizeof attributes.files;
    if (version >= FirstWithNetwork) {
        attributes.network = 3; // binding and connecting
        size += sizeof attributes.network;
    }
    if (version >= FirstWithScopes) {
        attributes.scoped = 3; // abstract sockets and signals
        size += sizeof attributes.scoped;
    }
    return static_cast<int>(::syscall(CreateRuleset, &attributes, size, 0));
}

} // namespace

PlaceRules::PlaceRules(const Boundaries &boundaries)
{
    if (version() < 1)
        return;
    m_rules = makeRuleset(version());
    for (const auto &path : boundaries.readable)
        allow(path, Read);
    allow(QStringLiteral("/dev/null"), ReadFile | WriteFile);
    for (const auto &path : boundaries.writable)
        allow(path, Write);
    if (!boundaries.runnable.isEmpty())
        allow(SystemPlaces::programLoader(), Execute | ReadFile);
    for (const auto &path : boundaries.runnable)
        allowProgram(path);
}

PlaceRules::~PlaceRules()
{
    if (m_rules >= 0)
        ::close(m_rules);
}

int PlaceRules::version()
{
    static const auto version = static_cast<int>(::syscall(CreateRuleset, nullptr, 0, AskVersion));
    return version > 0 ? version : 0;
}

bool PlaceRules::scopesSignals()
{
    return version() >= FirstWithScopes;
}

/// A script calls the machine's programs, and only it knows which.
void PlaceRules::allowProgram(const QString &path)
{
    allow(path, Execute | ReadFile);
    if (!SystemPlaces::isScript(path))
        return;
    for (const auto &folder : SystemPlaces::programFolders())
        allow(folder, Execute | Read);
}

void PlaceRules::allow(const QString &path, unsigned long long rights)
{
    const int place = ::open(QFile::encodeName(path).constData(), O_PATH | O_CLOEXEC);
    if (place < 0)
        return;
    struct stat status = {};
    const bool isFolder = ::fstat(place, &status) == 0 && S_ISDIR(status.st_mode);
    const auto meant = rights & allFileRights(version()) & (isFolder ? ~0ULL : FileRights);
    const PathBeneathAttributes attributes{meant, place};
    if (m_rules >= 0 && meant != 0 && ::syscall(AddRule, m_rules, PathBeneath, &attributes, 0) != 0)
        qWarning("%s cannot be given to a worker", qUtf8Printable(path));
    ::close(place);
}

bool PlaceRules::apply() const noexcept
{
    if (version() < 1)
        return true;
    return m_rules >= 0 && ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::syscall(RestrictSelf, m_rules, 0) == 0;
}

} // namespace Quorlin
