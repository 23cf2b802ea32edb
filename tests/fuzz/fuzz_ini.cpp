#include "fuzz/FuzzTarget.h"

#include "settings/IniFile.h"

#include <QTemporaryDir>

#include <cstdlib>

using Quorlin::IniFile;

namespace {

/// What every reader of the model relies on, whatever the file held.
void check(bool holds)
{
    if (!holds)
        std::abort();
}

bool equalVars(const IniFile &one, const IniFile &other)
{
    const auto left = one.GetVars();
    const auto right = other.GetVars();
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(),
        [](const auto &a, const auto &b) { return a->Name == b->Name && a->Value == b->Value; });
}

bool writeAll(const QString &path, const std::uint8_t *data, std::size_t size)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) &&
           file.write(reinterpret_cast<const char *>(data), qint64(size)) == qint64(size);
}

/// Names that begin with "[" or hold "=", and empty ones, are read as something else after
/// writing; all other files come back as they were.
bool isPlain(const IniFile &ini)
{
    const auto vars = ini.GetVars();
    return std::all_of(vars.begin(), vars.end(), [](const auto &var) {
        return !var->Name.isEmpty() && !var->Name.startsWith(QLatin1Char('[')) &&
               !var->Name.contains(QLatin1Char('='));
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    const auto path = folder.filePath(QStringLiteral("in.ini"));
    const auto saved = folder.filePath(QStringLiteral("out.ini"));
    check(writeAll(path, data, size));

    IniFile first;
    check(first.Load(path) == 0);
    for (const auto &var : first.GetVars())
        static_cast<void>(first.GetVar(var->Name));
    check(first.Save(saved) == 0);

    IniFile second;
    check(second.Load(saved) == 0);
    check(!isPlain(first) || equalVars(first, second));

    first.SetVar(QStringLiteral("Name"), QStringLiteral("Printer"), QStringLiteral("value"));
    check(first.GetVar(QStringLiteral("Name"), QStringLiteral("Printer")) ==
          QStringLiteral("value"));
    check(first.Load(path) == 0);
    return 0;
}
