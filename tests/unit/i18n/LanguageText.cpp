#include "LanguageText.h"

#include "ExpectedTexts.h"

#include <algorithm>

LanguageText::LanguageText()
{
    for (const auto &text : expectedTexts()) {
        const QByteArray key(text.key);
        if (key == "MenuLstOpen")
            set("QUALITY", "QualityLow", "<Low>").set("QUALITY", "QualityHigh", "<High>");
        set(text.group, key, '<' + key + '>');
    }
}

QList<LanguageText::Line> &LanguageText::linesOf(const QByteArray &group)
{
    const auto found = std::ranges::find(m_groups, group, &Group::first);
    if (found != m_groups.end())
        return found->second;
    m_groups.append({group, {}});
    return m_groups.last().second;
}

LanguageText &LanguageText::set(const QByteArray &group, const QByteArray &key,
                                const QByteArray &text)
{
    const auto line = key + " = " + text;
    auto &lines = linesOf(group);
    const auto found = std::ranges::find(lines, key, &Line::first);
    if (found == lines.end())
        lines.append({key, line});
    else
        found->second = line;
    return *this;
}

LanguageText &LanguageText::without(const QByteArray &key)
{
    for (auto &group : m_groups)
        group.second.removeIf([&key](const Line &line) { return line.first == key; });
    return *this;
}

LanguageText &LanguageText::cleared(const QByteArray &group)
{
    linesOf(group).clear();
    return *this;
}

LanguageText &LanguageText::withoutGroup(const QByteArray &group)
{
    m_groups.removeIf([&group](const Group &one) { return one.first == group; });
    return *this;
}

LanguageText &LanguageText::addLine(const QByteArray &group, const QByteArray &line)
{
    linesOf(group).append({{}, line});
    return *this;
}

LanguageText &LanguageText::renamed(const QByteArray &group, const QByteArray &name)
{
    const auto found = std::ranges::find(m_groups, group, &Group::first);
    if (found != m_groups.end())
        found->first = name;
    return *this;
}

QByteArray LanguageText::bytes(const QByteArray &lineEnd) const
{
    QByteArray all;
    for (const auto &[name, lines] : m_groups) {
        all += '[' + name + ']' + lineEnd;
        for (const auto &line : lines)
            all += line.second + lineEnd;
    }
    return all;
}
