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
    /// What an operation may take that waits for somebody else, in milliseconds.
    static constexpr qint64 Bound = 4000;

    RegistryScene();

    [[nodiscard]] std::shared_ptr<RegistryStore> store() const { return m_store; }
    [[nodiscard]] const TestFolder &folder() const { return m_folder; }
    [[nodiscard]] QString userFile() const;
    [[nodiscard]] QString machineFile() const;

    /// The key of the user's on which the functions below work.
    [[nodiscard]] static RegistryKey key();
    /// Sets the key's default value, or reads it.
    [[nodiscard]] RegistryStatus set(const QByteArray &value = "new") const;
    [[nodiscard]] RegistryStatus get() const;
    /// Gives the key so many values that pages of the database can be spoilt.
    void fill() const;
    /// Puts bytes in the place of the user's file.
    void plant(const QByteArray &bytes) const;
    /// The name that a damaged file of the user's gets.
    [[nodiscard]] QString damaged(int number) const;

    /// Lets an ordinary user reach the folder and write in the place of the user's file, and
    /// there alone, even when this process is one.
    void admitOrdinaryUser() const;
    /// Lets this process write the machine's file again.
    void admitOwner() const;

    /// Writes a text as the default value, or the one that is named.
    void write(quint32 root, const char *path, const char *name, const QString &text) const;
    /// A text; nothing when there is no such value. Asks again while others are at work.
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
