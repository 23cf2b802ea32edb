#pragma once

#include <QStringList>

namespace Quorlin {

class EngineProfile;

/// The environment in which the office engine runs: the user's, with the engine's own places,
/// a UTF-8 locale and memory settings that make it faster.
namespace EngineEnvironment {

/// Each entry "NAME=value".
[[nodiscard]] QStringList make(const EngineProfile &profile);

} // namespace EngineEnvironment

} // namespace Quorlin
