#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin {

/// The names of the keys that lead from a root to a key.
class RegistryPath
{
public:
    static constexpr qsizetype MostLevels = 512;
    static constexpr qsizetype LongestKeyName = 255;
    static constexpr qsizetype LongestValueName = 16383;

    RegistryPath() = default;
    /// @param text names with "\" between them; empty names do not count.
    explicit RegistryPath(const QString &text);

    /// False when there are too many names or one is too long.
    [[nodiscard]] bool isValid() const;
    /// True for a root.
    [[nodiscard]] bool isEmpty() const { return m_names.isEmpty(); }

    /// The last name, in its own case.
    [[nodiscard]] QString name() const;
    /// The path without its last name.
    [[nodiscard]] RegistryPath parent() const;
    /// This path with another one in front.
    [[nodiscard]] RegistryPath below(const RegistryPath &path) const;

    /// One text for all spellings of the path that differ in case alone.
    [[nodiscard]] QString folded() const;

private:
    QStringList m_names;
};

} // namespace Quorlin
