#pragma once

#include "convert/JobOptionsCollection.h"

#include <QString>

#include <optional>

namespace Quorlin {

/// What a conversion takes from "Quorlin.ini" beside the program.
struct ConversionSettings
{
    /// Key "Name" of the group "Printer"; "Varnex PDF" when it is missing or empty.
    QString printerName;
    JobOptionsCollection jobOptions;

    /// @return nothing when the file cannot be read to its end.
    [[nodiscard]] static std::optional<ConversionSettings> load(const QString &programFolder);
};

} // namespace Quorlin
