#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace Quorlin::EnvironmentStrings {

/// Gives the value of an environment variable; nothing when there is none of that name.
using Lookup = std::function<std::optional<QString>(const QString &name)>;

/// The environment of this process.
[[nodiscard]] std::optional<QString> ofProcess(const QString &name);

/// Puts the variables' values for "%NAME%". What names no variable stays as it is.
[[nodiscard]] QString expand(const QString &text, const Lookup &lookup);

} // namespace Quorlin::EnvironmentStrings
