#pragma once

#include "settings/RegistryFile.h"
#include "settings/RegistryStore.h"

#include <vector>

namespace Quorlin {

/// The registry in two files, the user's and the machine's.
///
/// CurrentUser is the user's file and LocalMachine the machine's. ClassesRoot shows the user's
/// key Software\Classes in front of the machine's: of two values with one name the user's counts,
/// and names are listed once. What is written there goes to the user's file, except into a key
/// that only the machine's has and that this user may write. What is deleted there is the user's,
/// else the machine's. Every other root is refused.
class LayeredRegistry : public RegistryStore
{
public:
    /// Both paths are absolute. Nothing is opened or made yet.
    LayeredRegistry(const QString &userFile, const QString &machineFile);

    [[nodiscard]] RegistryStatus openKey(const RegistryKey &key) const override;
    [[nodiscard]] RegistryStatus createKey(const RegistryKey &key) override;
    [[nodiscard]] RegistryStatus deleteKey(const RegistryKey &key) override;
    [[nodiscard]] RegistryStatus deleteValue(const RegistryKey &key, const QString &name) override;
    [[nodiscard]] RegistryResult<RegistryValue> queryValue(const RegistryKey &key,
                                                           const QString &name) const override;
    [[nodiscard]] RegistryStatus setValue(const RegistryKey &key, const QString &name,
                                          const RegistryValue &value) override;
    [[nodiscard]] RegistryResult<QStringList>
    enumerateValues(const RegistryKey &key) const override;
    [[nodiscard]] RegistryResult<QStringList> enumerateKeys(const RegistryKey &key) const override;

private:
    /// A key in one of the files.
    struct Place
    {
        const RegistryFile *file = nullptr;
        RegistryPath path;
    };
    using Places = std::vector<Place>;
    using Write = std::function<RegistryStatus(const Place &)>;
    using List = std::function<RegistryResult<QStringList>(const Place &)>;

    [[nodiscard]] Places places(const RegistryKey &key) const;
    [[nodiscard]] RegistryStatus write(const RegistryKey &key, const QDeadlineTimer &deadline,
                                       const Write &write) const;
    [[nodiscard]] RegistryResult<QStringList> merged(const RegistryKey &key,
                                                     const List &list) const;

    RegistryFile m_user;
    RegistryFile m_machine;
};

} // namespace Quorlin
