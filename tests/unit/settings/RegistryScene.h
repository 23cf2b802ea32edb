#pragma once

#include "settings/LayeredRegistry.h"
#include "settings/RegistryStore.h"
#include "support/TestFolder.h"
#include "winsupport/NumberedError.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace Quorlin {

/// A registry of a test's own, on files in a folder that goes with the object.
class RegistryScene
{
public:
    RegistryScene();

    [[nodiscard]] std::shared_ptr<RegistryStore> store() const { return m_store; }
    [[nodiscard]] const TestFolder &folder() const { return m_folder; }
    [[nodiscard]] QString userFile() const;
    [[nodiscard]] QString machineFile() const;

    /// Lets an ordinary user reach the folder and write in the place of the user's file, and
    /// there alone, even when this process is one.
    void admitOrdinaryUser() const;
    /// Lets this process write the machine's file again.
    void admitOwner() const;

    /// Writes a text as the default value, or the one that is named.
    void write(quint32 root, const char *path, const char *name, const QString &text) const;
    /// A text; nothing when there is no such value.
    [[nodiscard]] std::optional<QString> read(quint32 root, const char *path,
                                              const char *name = "") const;

private:
    TestFolder m_folder;
    std::shared_ptr<RegistryStore> m_store;
};

/// Runs SQL on a database file, which is made when it is missing.
void runSql(const QString &file, const char *sql);

/// True when a database file has nothing wrong with it.
[[nodiscard]] bool isWhole(const QString &file);

/// The error that something raises; fails the test program when it raises none.
[[nodiscard]] NumberedError errorFrom(const std::function<void()> &action);

} // namespace Quorlin
