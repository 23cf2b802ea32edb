#pragma once

#include "winsupport/SystemCopy.h"

namespace Quorlin {

/// Copies on a thread of its own, so that a slow disk never holds up the windows.
class ThreadedCopy : public SystemCopy
{
public:
    [[nodiscard]] Outcome copy(const QString &source, const QString &destination,
                               const Progress &progress, const bool &cancel) override;
};

} // namespace Quorlin
