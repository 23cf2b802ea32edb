#include "settings/LayeredRegistry.h"

#include <QSet>

#include <chrono>

namespace Quorlin {

namespace {

using namespace std::chrono_literals;
using Status = RegistryStatus;
using Deadline = QDeadlineTimer;

// The user interface waits for every operation. Many reads follow one another, and each can be
// done again; a write that gives up is lost.
constexpr auto LongestRead = 250ms;
constexpr auto LongestWrite = 2s;

bool isRoot(const RegistryKey &key)
{
    return RegistryPath(key.path).isEmpty();
}

bool isValueName(const QString &name)
{
    return name.size() <= RegistryPath::LongestValueName;
}

/// Of two layers that gave nothing, the one that failed tells more.
Status worse(Status one, Status other)
{
    return one == Status::Missing ? other : one;
}

} // namespace

LayeredRegistry::LayeredRegistry(const QString &userFile, const QString &machineFile)
    : m_user(userFile, StoreFiles::Audience::Owner),
      m_machine(machineFile, StoreFiles::Audience::Everyone)
{
}

/// In the order in which they count; none for a key that cannot be.
LayeredRegistry::Places LayeredRegistry::places(const RegistryKey &key) const
{
    const RegistryPath path(key.path);
    if (!path.isValid())
        return {};
    switch (key.root) {
    case RegistryRoot::ClassesRoot:
        return {{&m_user, path.below(RegistryPath(QStringLiteral("Software\\Classes")))},
                {&m_machine, path.below(RegistryPath(QStringLiteral("SOFTWARE\\Classes")))}};
    case RegistryRoot::CurrentUser:
        return {{&m_user, path}};
    case RegistryRoot::LocalMachine:
        return {{&m_machine, path}};
    default:
        return {};
    }
}

Status LayeredRegistry::openKey(const RegistryKey &key) const
{
    const auto all = places(key);
    if (all.empty())
        return Status::Refused;
    if (isRoot(key))
        return Status::Done;
    const Deadline deadline(LongestRead);
    auto status = Status::Missing;
    for (const auto &place : all) {
        const auto opened = place.file->openKey(place.path, place.file->forRead(deadline));
        if (opened == Status::Done)
            return opened;
        status = worse(status, opened);
    }
    return status;
}

Status LayeredRegistry::createKey(const RegistryKey &key)
{
    // A root is there already.
    if (isRoot(key))
        return openKey(key);
    const Deadline deadline(LongestWrite);
    return write(key, deadline,
                 [&](const Place &place) { return place.file->createKey(place.path, deadline); });
}

Status LayeredRegistry::deleteKey(const RegistryKey &key)
{
    const auto all = places(key);
    if (all.empty() || isRoot(key))
        return Status::Refused;
    const Deadline deadline(LongestWrite);
    auto status = Status::Missing;
    for (const auto &place : all) {
        status = place.file->deleteKey(place.path, deadline);
        if (status != Status::Missing)
            break;
    }
    return status;
}

Status LayeredRegistry::deleteValue(const RegistryKey &key, const QString &name)
{
    const auto all = places(key);
    if (all.empty() || !isValueName(name))
        return Status::Refused;
    const Deadline deadline(LongestWrite);
    auto status = Status::Missing;
    for (const auto &place : all) {
        status = place.file->deleteValue(place.path, name, deadline);
        if (status != Status::Missing)
            break;
    }
    return status;
}

RegistryResult<RegistryValue> LayeredRegistry::queryValue(const RegistryKey &key,
                                                          const QString &name) const
{
    const auto all = places(key);
    if (all.empty() || !isValueName(name))
        return {Status::Refused};
    const Deadline deadline(LongestRead);
    auto status = Status::Missing;
    for (const auto &place : all) {
        const auto found = place.file->queryValue(place.path, name, place.file->forRead(deadline));
        if (found.status == Status::Done)
            return found;
        status = worse(status, found.status);
    }
    return {status};
}

Status LayeredRegistry::setValue(const RegistryKey &key, const QString &name,
                                 const RegistryValue &value)
{
    if (!isValueName(name))
        return Status::Refused;
    const Deadline deadline(LongestWrite);
    return write(key, deadline, [&](const Place &place) {
        return place.file->setValue(place.path, name, value, deadline);
    });
}

RegistryResult<QStringList> LayeredRegistry::enumerateValues(const RegistryKey &key) const
{
    const Deadline deadline(LongestRead);
    return merged(key, [&deadline](const Place &place) {
        return place.file->enumerateValues(place.path, place.file->forRead(deadline));
    });
}

RegistryResult<QStringList> LayeredRegistry::enumerateKeys(const RegistryKey &key) const
{
    const Deadline deadline(LongestRead);
    return merged(key, [&deadline](const Place &place) {
        return place.file->enumerateKeys(place.path, place.file->forRead(deadline));
    });
}

Status LayeredRegistry::write(const RegistryKey &key, const Deadline &deadline,
                              const Write &write) const
{
    const auto all = places(key);
    if (all.empty())
        return Status::Refused;
    const auto has = [&deadline](const Place &place) {
        return place.file->openKey(place.path, deadline) == Status::Done;
    };
    if (all.size() > 1 && !isRoot(key) && !has(all.front()) && has(all.back())) {
        const auto status = write(all.back());
        if (status != Status::Denied)
            return status;
    }
    return write(all.front());
}

RegistryResult<QStringList> LayeredRegistry::merged(const RegistryKey &key, const List &list) const
{
    const auto all = places(key);
    if (all.empty())
        return {Status::Refused};
    RegistryResult<QStringList> names{isRoot(key) ? Status::Done : Status::Missing};
    QSet<QString> seen;
    for (const auto &place : all) {
        const auto found = list(place);
        names.status = names.status == Status::Done || found.status == Status::Done
                           ? Status::Done
                           : worse(names.status, found.status);
        for (const auto &name : found.result) {
            const auto folded = name.toCaseFolded();
            if (!seen.contains(folded))
                names.result.append(name);
            seen.insert(folded);
        }
    }
    return names;
}

} // namespace Quorlin
