#include "settings/Registry.h"

#include "winsupport/NumberedError.h"

#include <utility>

namespace Quorlin {

Registry::Registry(std::shared_ptr<RegistryStore> store) : m_registry(std::move(store)) {}

void Registry::SetKey(quint32 classKey, const QString &section, quint32 valueType,
                      const QString &valueName, const QString &Value)
{
    if (section.isEmpty())
        return;
    select(classKey, section, valueType);
    try {
        if (valueName.isEmpty() && Value.isEmpty()) {
            m_registry.CreateKey();
        } else {
            m_registry.ValueKey(valueName);
            m_registry.Value(Value);
        }
    } catch (const NumberedError &) {
        // Settings that cannot be written are not kept.
    }
}

QString Registry::GetKey(quint32 classKey, const QString &section, quint32 valueType,
                         const QString &valueName)
{
    select(classKey, section, valueType);
    if (!valueName.isEmpty())
        m_registry.ValueKey(valueName);
    const auto value = m_registry.Value();
    return value.typeId() == QMetaType::QByteArray ? QString() : value.toString();
}

void Registry::RemoveKey(quint32 classKey, const QString &section, quint32 valueType,
                         const QString &valueName)
{
    select(classKey, section, valueType);
    try {
        if (valueName.isEmpty()) {
            m_registry.DeleteKey();
        } else {
            m_registry.ValueKey(valueName);
            m_registry.DeleteValue();
        }
    } catch (const NumberedError &) {
        // What is not there, or not ours, stays as it is.
    }
}

bool Registry::Exist(quint32 classKey, const QString &section, quint32 valueType,
                     const QString & /*valueName*/)
{
    select(classKey, section, valueType);
    return m_registry.KeyExists();
}

void Registry::SetAppParam(quint32 classKey, const QString &section, quint32 valueType)
{
    m_boundRoot = classKey;
    m_boundPath = section;
    m_boundType = valueType;
}

void Registry::SetAppData(const QString &valueName, const QString &Value, const QString &section)
{
    SetKey(m_boundRoot, boundPath(section), m_boundType, valueName, Value);
}

QString Registry::GetAppData(const QString &valueName, const QString &section)
{
    return GetKey(m_boundRoot, boundPath(section), m_boundType, valueName);
}

void Registry::select(quint32 classKey, const QString &section, quint32 valueType)
{
    m_registry.classKey(classKey);
    m_registry.SectionKey(section);
    m_registry.valueType(valueType);
}

QString Registry::boundPath(const QString &section) const
{
    return section.isEmpty() ? m_boundPath : m_boundPath + QLatin1Char('\\') + section;
}

} // namespace Quorlin
