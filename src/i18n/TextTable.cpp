#include "i18n/TextTable.h"

#include "i18n/LanguageName.h"
#include "i18n/TextRow.h"
#include "settings/IniFile.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

constexpr QLatin1StringView QualityGroup("QUALITY");

/// The order in which a file is read, and so the order in which it is found incomplete.
constexpr std::array Groups{QLatin1StringView("APP"),
                            QLatin1StringView("TEXT"),
                            QLatin1StringView("ABOUT"),
                            QLatin1StringView("DIALOG"),
                            QualityGroup,
                            QLatin1StringView("MENU"),
                            QLatin1StringView("INFO"),
                            QLatin1StringView("ERROR")};

constexpr std::array BuiltInQualities{QLatin1StringView("Default"), QLatin1StringView("Low"),
                                      QLatin1StringView("Medium"), QLatin1StringView("High")};

/// Only one text may hold line breaks.
QString withLineBreaks(QString text, TextKey key)
{
    return key == TextKey::AboutAdobeInformations
               ? text.replace(QLatin1String("\\n"), QLatin1String("\r\n"))
               : text;
}

/// As it stands in a language file.
QString place(const QString &group, const QString &name)
{
    return QLatin1Char('[') + group + QLatin1String("] ") + name;
}

} // namespace

TextTable::TextTable()
{
    loadDefaults();
}

void TextTable::loadDefaults()
{
    m_texts.clear();
    for (const auto &row : TextRow::all())
        m_texts.append(row.builtIn);
    m_qualities.clear();
    for (const auto &name : BuiltInQualities)
        m_qualities.append({name, name});
    m_language = LanguageName::German.toString();
    m_problem.clear();
}

TextTable::Result TextTable::load(const QString &path, const QString &language)
{
    IniFile file;
    if (file.Load(path) != 0) {
        loadDefaults();
        return Result::NotFound;
    }
    m_language = language;
    m_problem.clear();
    if (read(file))
        return Result::Loaded;
    const auto problem = m_problem;
    loadDefaults();
    m_problem = problem;
    return Result::Invalid;
}

bool TextTable::read(const IniFile &file)
{
    return std::ranges::all_of(Groups, [this, &file](const auto &group) {
        return group == QualityGroup ? readQualities(file, group) : readTexts(file, group);
    });
}

bool TextTable::readTexts(const IniFile &file, const QString &group)
{
    for (const auto &row : TextRow::all()) {
        if (row.group != group)
            continue;
        m_texts[qsizetype(row.index())] = withLineBreaks(file.GetVar(row.name, group), row.key);
        if (!isComplete(row.index())) {
            m_problem = place(group, row.name);
            return false;
        }
    }
    return true;
}

bool TextTable::readQualities(const IniFile &file, const QString &group)
{
    m_qualities.clear();
    QSet<QString> keys;
    for (const auto &var : file.GetVars(group)) {
        const auto key = QString(var->Name).remove(QLatin1String("Quality"));
        if (keys.contains(key)) {
            m_problem = place(group, var->Name);
            return false;
        }
        keys.insert(key);
        m_qualities.append({key, var->Value});
    }
    return true;
}

bool TextTable::isComplete(std::size_t index) const
{
    const auto at = qsizetype(index);
    switch (TextRow::all()[index].check) {
    case TextCheck::Required:
        return !m_texts.at(at).isEmpty();
    case TextCheck::PairSecond:
        return !m_texts.at(at - 1).isEmpty() || !m_texts.at(at).isEmpty();
    case TextCheck::None:
    case TextCheck::PairFirst:
        break;
    }
    return true;
}

QString TextTable::text(TextKey key) const
{
    return m_texts.at(qsizetype(TextRow::of(key).index()));
}

QString TextTable::qualityText(const QString &key) const
{
    const auto found = std::ranges::find(m_qualities, key, &TextQuality::key);
    return found == m_qualities.end() ? QString() : found->text;
}

} // namespace Quorlin
