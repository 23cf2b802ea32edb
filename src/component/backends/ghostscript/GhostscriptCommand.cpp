#include "component/backends/ghostscript/GhostscriptCommand.h"

namespace Quorlin::GhostscriptCommand {

namespace {

QStringList common(const QString &folder)
{
    return {QStringLiteral("-dSAFER"), QStringLiteral("--permit-file-all=%1/*").arg(folder),
            QStringLiteral("-dNOPAUSE"), QStringLiteral("-dAutoRotatePages=/None"),
            QStringLiteral("-sDEVICE=pdfwrite")};
}

/// The operators behind live transparency are undefined for foreign programs: they are the
/// interpreter's own and no document needs them.
QString transparency()
{
    return QStringLiteral("-dALLOWPSTRANSPARENCY");
}

} // namespace

QStringList oneFile(const QString &folder, const QString &optionsFile, const QString &input,
                    const QString &output, PostScriptOrigin origin)
{
    auto arguments = common(folder);
    if (origin != PostScriptOrigin::Foreign)
        arguments << transparency();
    arguments << QStringLiteral("-q") << QStringLiteral("-dBATCH")
              << QStringLiteral("-sOutputFile=%1").arg(output) << QStringLiteral("-f")
              << optionsFile << QStringLiteral("-c")
              << QStringLiteral("(%1) = flush").arg(QLatin1String(OptionsMark))
              << QStringLiteral("-f") << input << QStringLiteral("-c")
              << QStringLiteral("(%1) print currentpagedevice /PageCount get == flush")
                     .arg(QLatin1String(PagesMark));
    return arguments;
}

QStringList server(const QString &folder)
{
    return common(folder) << transparency() << QStringLiteral("-q") << QStringLiteral("-dNOPROMPT")
                          << QStringLiteral("-sOutputFile=/dev/null");
}

} // namespace Quorlin::GhostscriptCommand
