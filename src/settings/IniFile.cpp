#include "settings/IniFile.h"

#include "settings/Windows1252.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr qint64 PieceBytes = 64 * 1024;

/// A tab is no blank, the character with code 8 is one.
bool IsNotBlank(QChar ch)
{
    return ch != QLatin1Char(' ') && ch != QLatin1Char('\b');
}

QString TrimBlanks(const QString &text)
{
    const auto first = std::find_if(text.begin(), text.end(), IsNotBlank);
    const auto last = std::find_if(text.rbegin(), text.rend(), IsNotBlank).base();
    return first < last ? QString(first, last - first) : QString();
}

bool isLineEnd(char byte)
{
    return byte == '\r' || byte == '\n';
}

} // namespace

int IniFile::Load(const QString &Filename)
{
    ClearGroups();
    // A pipe or a device could keep the reader waiting, or feed it for ever.
    const QFileInfo info(Filename);
    if (!info.isFile() || info.size() > MostBytes)
        return 1;
    QFile file(Filename);
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    return readLines(file) ? 0 : 1;
}

bool IniFile::readLines(QIODevice &file)
{
    QByteArray line;
    QByteArray piece(PieceBytes, Qt::Uninitialized);
    qint64 total = 0;
    while (true) {
        const auto count = file.read(piece.data(), piece.size());
        total += std::max<qint64>(count, 0);
        if (count <= 0 || total > MostBytes)
            return count == 0;
        const auto *const end = piece.constData() + count;
        for (const auto *from = piece.constData(); from != end;) {
            const auto *const stop = std::find_if(from, end, isLineEnd);
            line.append(from, stop - from);
            if (stop == end)
                break;
            ParseLine(fromWindows1252(line));
            line.clear();
            from = stop + 1;
        }
    }
}

int IniFile::Save(const QString &Filename) const
{
    // Opening a pipe for writing would wait for a reader.
    const QFileInfo info(Filename);
    if (info.exists() && !info.isFile())
        return 1;
    QFile file(Filename);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 1;
    const auto written = writeLines(file) && file.flush();
    file.close();
    return written && file.error() == QFileDevice::NoError ? 0 : 1;
}

bool IniFile::writeLines(QIODevice &file) const
{
    const auto write = [&file](const QString &line) {
        const auto bytes = toWindows1252(line) + "\r\n";
        return file.write(bytes) == bytes.size();
    };
    return std::ranges::all_of(m_groups, [&write](const auto &group) {
        return write(QLatin1Char('[') + group->Name + QLatin1Char(']')) &&
               std::ranges::all_of(group->Vars, [&write](const auto &var) {
                   return write(var->Name + QLatin1String(" = ") + var->Value);
               });
    });
}

void IniFile::SetGroup(const QString &GroupName)
{
    static_cast<void>(groupFor(GroupName));
}

void IniFile::SetVar(const QString &varName, const QString &GroupName,
                     const std::optional<QVariant> &Value)
{
    auto &group = groupFor(GroupName);
    auto *var = group.find(varName);
    if (!var) {
        group.Vars.append(std::make_shared<IniVar>(IniVar{varName, {}}));
        var = group.Vars.last().get();
    }
    if (Value)
        var->Value = Value->toString();
}

QString IniFile::GetVar(const QString &varName, const QString &GroupName) const
{
    if (!GroupName.isEmpty()) {
        const auto *const group = findGroup(GroupName);
        const auto *const var = group ? group->find(varName) : nullptr;
        return var ? var->Value : QString();
    }
    for (const auto &group : m_groups) {
        if (const auto *const var = group->find(varName))
            return var->Value;
    }
    return {};
}

QList<std::shared_ptr<IniVar>> IniFile::GetVars(const QString &GroupName) const
{
    if (!GroupName.isEmpty()) {
        const auto *const group = findGroup(GroupName);
        return group ? group->Vars : QList<std::shared_ptr<IniVar>>();
    }
    QList<std::shared_ptr<IniVar>> all;
    for (const auto &group : m_groups)
        all += group->Vars;
    return all;
}

/// The last group stays, on purpose: the next file's keys before any group join it.
void IniFile::ClearGroups()
{
    if (m_groups.size() > 1)
        m_groups.remove(0, m_groups.size() - 1);
}

void IniFile::ParseLine(const QString &line)
{
    if (line.isEmpty())
        return;
    if (line.startsWith(QLatin1Char('['))) {
        const auto name = line.mid(1, std::max<qsizetype>(line.size() - 2, 0));
        m_groups.append(std::make_shared<IniGroup>(IniGroup{name, {}}));
        return;
    }
    if (m_groups.isEmpty())
        SetGroup(QStringLiteral("None"));
    // A line without "=" is its own name and value; one that starts with "=" is its own name.
    const auto equals = line.indexOf(QLatin1Char('='));
    const auto name = equals > 0 ? line.left(equals) : line;
    const auto value = line.mid(equals + 1);
    m_groups.last()->Vars.append(
        std::make_shared<IniVar>(IniVar{TrimBlanks(name), TrimBlanks(value)}));
}

const IniGroup *IniFile::findGroup(const QString &GroupName) const
{
    const auto found = std::ranges::find_if(
        m_groups, [&GroupName](const auto &group) { return group->Name == GroupName; });
    return found == m_groups.end() ? nullptr : found->get();
}

IniGroup &IniFile::groupFor(const QString &GroupName)
{
    const auto found = std::ranges::find_if(
        m_groups, [&GroupName](const auto &group) { return group->Name == GroupName; });
    if (found != m_groups.end())
        return **found;
    m_groups.append(std::make_shared<IniGroup>(IniGroup{GroupName, {}}));
    return *m_groups.last();
}

} // namespace Quorlin
