#pragma once

#include "tool/DocumentRecord.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>

namespace Quorlin {

/// What a run of the tool came to, as docs/convert-report.md describes it.
struct Report
{
    QString quality;
    QList<DocumentRecord> documents;
    bool merges = false;
    bool dryRun = false; ///< outputs are where they would be
    QString mergedFile;  ///< final name; empty when there is none
    double seconds = 0;

    [[nodiscard]] int failures() const;

    /// One JSON object in UTF-8, indented, with a line feed at its end.
    [[nodiscard]] QByteArray toJson() const;

private:
    [[nodiscard]] QJsonObject totals() const;
};

} // namespace Quorlin
