#include "settings/RegistryPath.h"

#include <algorithm>

namespace Quorlin {

RegistryPath::RegistryPath(const QString &text)
    : m_names(text.split(QLatin1Char('\\'), Qt::SkipEmptyParts))
{
}

bool RegistryPath::isValid() const
{
    return m_names.size() <= MostLevels && std::ranges::all_of(m_names, [](const auto &name) {
               return name.size() <= LongestKeyName;
           });
}

QString RegistryPath::name() const
{
    return m_names.isEmpty() ? QString() : m_names.last();
}

RegistryPath RegistryPath::parent() const
{
    RegistryPath path;
    path.m_names = m_names.mid(0, std::max<qsizetype>(m_names.size() - 1, 0));
    return path;
}

RegistryPath RegistryPath::below(const RegistryPath &path) const
{
    RegistryPath whole;
    whole.m_names = path.m_names + m_names;
    return whole;
}

QString RegistryPath::folded() const
{
    return m_names.join(QLatin1Char('\\')).toCaseFolded();
}

} // namespace Quorlin
