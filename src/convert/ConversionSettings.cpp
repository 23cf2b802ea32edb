#include "convert/ConversionSettings.h"

#include "settings/IniFile.h"

namespace Quorlin {

std::optional<ConversionSettings> ConversionSettings::load(const QString &programFolder)
{
    IniFile file;
    if (file.Load(programFolder + QStringLiteral("/Quorlin.ini")) != 0)
        return std::nullopt;
    ConversionSettings settings;
    settings.printerName = file.GetVar(QStringLiteral("Name"), QStringLiteral("Printer"));
    if (settings.printerName.isEmpty())
        settings.printerName = QStringLiteral("Varnex PDF");
    settings.jobOptions.load(programFolder, &file);
    return settings;
}

} // namespace Quorlin
