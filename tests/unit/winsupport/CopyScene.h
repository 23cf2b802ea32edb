#pragma once

#include "support/TestFolder.h"
#include "winsupport/ThreadedCopy.h"

#include <QList>

#include <functional>
#include <system_error>
#include <utility>

namespace Quorlin {

/// A source with content, a folder to copy into, and the system's copy between them.
struct CopyScene
{
    /// @param parent of the folder; empty for the usual place.
    explicit CopyScene(const QString &parent = {}) : folder(parent) {}

    SystemCopy::Outcome copy(const QString &from, const QString &to)
    {
        return system.copy(
            from, to,
            [this](qint64 total, qint64 copied) {
                calls.append({total, copied});
                return onProgress ? onProgress(total, copied) : 0;
            },
            cancel);
    }

    SystemCopy::Outcome copy() { return copy(source, destination); }

    /// What lies in the destination's folder.
    [[nodiscard]] QStringList inFolder() const { return namesIn(folder.path("to")); }

    TestFolder folder;
    QByteArray content = QByteArray("%PDF-1.7 new ").repeated(1000);
    QString source = folder.write("from.pdf~", content);
    QString target = folder.makeFolder("to");
    QString destination = folder.path("to/result.pdf");
    ThreadedCopy system;
    bool cancel = false;
    std::function<quint32(qint64 total, qint64 copied)> onProgress;
    QList<std::pair<qint64, qint64>> calls;
};

inline int numberOf(std::errc error)
{
    return static_cast<int>(error);
}

} // namespace Quorlin
