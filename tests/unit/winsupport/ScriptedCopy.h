#pragma once

#include "winsupport/SystemCopy.h"

#include <QStringList>

#include <functional>

namespace Quorlin {

/// Stands in for the system's copy: does what a test says.
class ScriptedCopy : public SystemCopy
{
public:
    using Script = std::function<bool(const Progress &progress, const bool &cancel)>;

    /// Calls the progress routine at the start, in the middle and at the end, unless cancelled.
    static bool copyAll(const Progress &progress, const bool &cancel)
    {
        for (const qint64 copied : {0, 500, 1000}) {
            if (cancel)
                return false;
            static_cast<void>(progress(1000, copied));
        }
        return !cancel;
    }

    [[nodiscard]] Outcome copy(const QString &source, const QString &destination,
                               const Progress &progress, const bool &cancel) override
    {
        copies.append(source + QLatin1Char('>') + destination);
        const bool success = script(progress, cancel);
        return {success, success ? 0 : 5, success ? QString() : QStringLiteral("as scripted")};
    }

    Script script = copyAll;
    QStringList copies;
};

} // namespace Quorlin
