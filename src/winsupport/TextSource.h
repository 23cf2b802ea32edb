#pragma once

#include <QString>

namespace Quorlin {

/// Gives the texts that users see, so that those who report need not know where the
/// texts of the language in use come from.
class TextSource
{
public:
    virtual ~TextSource() = default;

    /// The text of a key such as "ErrorCopyFilename1" in the language in use.
    [[nodiscard]] virtual QString text(const QString &key) const = 0;
};

} // namespace Quorlin
