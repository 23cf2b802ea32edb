#include "tool/ToolSettings.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

/// The characters of the bytes 0x80 to 0x9F, in which Windows-1252 differs from Latin-1.
constexpr std::array<char16_t, 32> Middle{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

QString fromWindows1252(const QByteArray &bytes)
{
    auto text = QString::fromLatin1(bytes);
    for (auto &character : text) {
        const auto code = character.unicode();
        if (code >= 0x80 && code <= 0x9F)
            character = Middle.at(code - 0x80U);
    }
    return text;
}

QString withoutBlanks(QString text)
{
    const auto isBlank = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\b'); };
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    while (!text.isEmpty() && isBlank(text.front()))
        text.remove(0, 1);
    return text;
}

} // namespace

std::optional<ToolSettings> ToolSettings::load(const QString &programFolder)
{
    QFile file(programFolder + QStringLiteral("/Quorlin.ini"));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    ToolSettings settings;
    settings.m_folder = programFolder;
    auto text = fromWindows1252(file.readAll());
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    auto lines = text.split(QLatin1Char('\n'));
    lines.removeLast(); // it has no line end
    for (const auto &line : lines)
        settings.takeLine(line);
    return settings;
}

void ToolSettings::takeLine(const QString &line)
{
    if (line.isEmpty())
        return;
    if (line.startsWith(QLatin1Char('['))) {
        m_groups.append({line.mid(1, line.size() - 2), {}});
        return;
    }
    if (m_groups.isEmpty())
        m_groups.append({QStringLiteral("None"), {}});
    const auto equals = line.indexOf(QLatin1Char('='));
    const auto name = equals > 0 ? line.left(equals) : line;
    const auto text = equals < 0 ? line : line.mid(equals + 1);
    m_groups.last().values.append({withoutBlanks(name), withoutBlanks(text)});
}

const ToolSettings::Group *ToolSettings::group(const char *name) const
{
    const auto wanted = QLatin1String(name);
    const auto found =
        std::ranges::find_if(m_groups, [wanted](const Group &g) { return g.name == wanted; });
    return found == m_groups.end() ? nullptr : &*found;
}

QString ToolSettings::value(const char *groupName, const QString &name) const
{
    const auto *const found = group(groupName);
    if (!found)
        return {};
    const auto entry =
        std::ranges::find_if(found->values, [&name](const auto &v) { return v.first == name; });
    return entry == found->values.end() ? QString() : entry->second;
}

QString ToolSettings::printerName() const
{
    const auto name = value("Printer", QStringLiteral("Name"));
    return name.isEmpty() ? QStringLiteral("Varnex PDF") : name;
}

QStringList ToolSettings::qualities() const
{
    QStringList names;
    if (const auto *const found = group("JobOptions")) {
        for (const auto &entry : found->values)
            names.append(entry.first);
    }
    names.removeDuplicates();
    return names;
}

QString ToolSettings::jobOptionsFile(const QString &quality) const
{
    const auto name = value("JobOptions", quality);
    return name.isEmpty() ? QString() : m_folder + QStringLiteral("/Settings/") + name;
}

} // namespace Quorlin
