#pragma once

#include <QString>

namespace Quorlin {

/// The list of qualities from which the user chooses one.
class CompressionChoice
{
public:
    virtual ~CompressionChoice() = default;

    /// The selected position from 0; -1 when nothing is selected.
    [[nodiscard]] virtual int position() const = 0;
    virtual void select(int position) = 0;

    /// Removes all entries; nothing is selected then.
    virtual void clear() = 0;
    /// Appends an entry without selecting it.
    virtual void add(const QString &label) = 0;
};

} // namespace Quorlin
