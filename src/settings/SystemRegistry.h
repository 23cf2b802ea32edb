#pragma once

#include "settings/RegistryStore.h"

#include <QString>

#include <memory>

namespace Quorlin::SystemRegistry {

/// The user's file: quorlin/registry.db under $XDG_CONFIG_HOME (~/.config). A folder that is not
/// absolute does not count.
[[nodiscard]] QString userFile();

/// The machine's file: quorlin/registry.db under the first of $XDG_CONFIG_DIRS (/etc/xdg) that has
/// one; where none has, under /etc/xdg if that is among them, else under the first. Folders that
/// are not absolute do not count.
[[nodiscard]] QString machineFile();

/// The registry of this system, in these two files. Nothing is opened or made yet.
[[nodiscard]] std::shared_ptr<RegistryStore> store();

} // namespace Quorlin::SystemRegistry
