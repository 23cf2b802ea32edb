#pragma once

#include "settings/cRegistry.h"

#include <QString>

#include <memory>

namespace Quorlin {

/// The program's values in the registry: bound once to a root and a key, then read and written by
/// name. No failure shows: writing does nothing then, and reading gives "".
class Registry
{
public:
    explicit Registry(std::shared_ptr<RegistryStore> store);

    /// Writes a value when a name or a value is given, else makes the key. Does nothing without
    /// a key.
    void SetKey(quint32 classKey, const QString &section, quint32 valueType = RegistryType::Text,
                const QString &valueName = {}, const QString &Value = {});

    /// Reads a value. Without a name it is the one that was named last, the default value at
    /// first.
    [[nodiscard]] QString GetKey(quint32 classKey, const QString &section,
                                 quint32 valueType = RegistryType::Text,
                                 const QString &valueName = {});

    /// Deletes a value when one is named, else the key.
    void RemoveKey(quint32 classKey, const QString &section, quint32 valueType = RegistryType::Text,
                   const QString &valueName = {});

    /// True when the key exists; a value's name changes nothing.
    [[nodiscard]] bool Exist(quint32 classKey, const QString &section,
                             quint32 valueType = RegistryType::Text, const QString &valueName = {});

    /// Binds the object to a root, a key and a type. Touches no key.
    void SetAppParam(quint32 classKey, const QString &section,
                     quint32 valueType = RegistryType::Text);

    /// Writes a value of the bound key, or of the key `section` below it.
    void SetAppData(const QString &valueName, const QString &Value, const QString &section = {});

    /// Reads a value of the bound key, or of the key `section` below it; "" when it is missing.
    [[nodiscard]] QString GetAppData(const QString &valueName, const QString &section = {});

private:
    void select(quint32 classKey, const QString &section, quint32 valueType);
    [[nodiscard]] QString boundPath(const QString &section) const;

    cRegistry m_registry;
    quint32 m_boundRoot = 0;
    QString m_boundPath;
    quint32 m_boundType = RegistryType::Text;
};

} // namespace Quorlin
