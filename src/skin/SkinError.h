#pragma once

#include <QString>

namespace Quorlin {

/// The errors that skin objects raise, as NumberedError.
namespace SkinError {

/// A corner lies outside of the 16-bit range.
[[noreturn]] void overflow(const QString &source);

/// A control or window does not take a property.
[[noreturn]] void unknownProperty(const QString &source);

} // namespace SkinError

} // namespace Quorlin
