#pragma once

#include "settings/RegistryStore.h"

#include <memory>

namespace Quorlin::SystemRegistry {

/// The registry of this system. Nothing is opened or made yet.
///
/// On Linux the user's file is quorlin/registry.db under $XDG_CONFIG_HOME (~/.config), the
/// machine's is the same under the first of $XDG_CONFIG_DIRS (/etc/xdg). Folders that are not
/// absolute do not count.
[[nodiscard]] std::shared_ptr<RegistryStore> store();

} // namespace Quorlin::SystemRegistry
