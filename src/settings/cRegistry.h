#pragma once

#include "settings/EnvironmentStrings.h"
#include "settings/RegistryStore.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace Quorlin {

/// General access to the registry: set the properties, then act.
///
/// Failures are raised as NumberedError from "cRegistry"; a failed read is none. In the texts a
/// root stands as a signed decimal number: -2147483647 is HKEY_CURRENT_USER.
class cRegistry
{
public:
    static constexpr quint32 KeyError = 26001;
    static constexpr quint32 ValueError = 0x800469A9;
    static constexpr quint32 ParameterError = 0x800469AC;
    static constexpr quint32 ClassError = 0x800469AD;

    /// @param store shared with other objects. @param environment for values of the type
    /// REG_EXPAND_SZ.
    explicit cRegistry(std::shared_ptr<RegistryStore> store,
                       EnvironmentStrings::Lookup environment = EnvironmentStrings::ofProcess);

    [[nodiscard]] bool KeyExists() const;

    /// Makes the key and those above it. @return true. @throws KeyError.
    bool CreateKey();
    /// Deletes a key without sub-keys. @return true. @throws KeyError.
    bool DeleteKey();
    /// Deletes the value `ValueKey`. @return true. @throws KeyError.
    bool DeleteValue();

    /// The value `ValueKey`: QString for REG_SZ, REG_EXPAND_SZ with its variables expanded, and
    /// REG_MULTI_SZ with line feeds between its strings; qint32 for REG_DWORD; QByteArray for
    /// every other type. `Default` when it cannot be read.
    [[nodiscard]] QVariant Value() const;
    /// Writes a value by `valueType`, which takes the same forms: bytes alone for REG_BINARY,
    /// integers of 16 or 32 bits alone for both kinds of REG_DWORD, texts for the others. The key
    /// is made first, also when the value is then refused.
    /// @throws ValueError, also for a type that is none of the six.
    void Value(const QVariant &value);

    /// The names of the values; their number is the list's size. "" is the default value.
    [[nodiscard]] QStringList EnumerateValues() const;
    /// The names of the sub-keys; their number is the list's size.
    [[nodiscard]] QStringList EnumerateSections() const;

    /// Registers a program as handler of a file type.
    ///
    /// Every key and value is written twice, under HKEY_CLASSES_ROOT and under
    /// HKEY_LOCAL_MACHINE\SOFTWARE\Classes. A user who may not write the second gets the error
    /// after the first was written.
    /// @param extension without its point.
    /// @param iconIndex -1 writes no icon.
    /// @throws ValueError; what was written before stays.
    void CreateEXEAssociation(const QString &exePath, const QString &className,
                              const QString &classDescription, const QString &extension,
                              const QString &openText, bool supportPrint, const QString &printText,
                              bool supportNew, const QString &newText, bool supportInstall,
                              const QString &addText, qint32 iconIndex);

    /// Adds verbs to a class.
    /// @param vItems verb, menu text and command of each, one after the other.
    /// @throws ParameterError when the last of them is not whole, then ClassError when the class
    /// is not there, both before anything is written; ValueError.
    void CreateAdditionalEXEAssociations(const QString &sClassName, const QVariantList &vItems);

    [[nodiscard]] quint32 valueType() const { return m_valueType; }
    void valueType(quint32 type) { m_valueType = type; }
    [[nodiscard]] quint32 classKey() const { return m_classKey; }
    void classKey(quint32 root) { m_classKey = root; }
    [[nodiscard]] QString SectionKey() const { return m_sectionKey; }
    void SectionKey(const QString &path) { m_sectionKey = path; }
    [[nodiscard]] QString ValueKey() const { return m_valueKey; }
    void ValueKey(const QString &name) { m_valueKey = name; }
    [[nodiscard]] QVariant Default() const { return m_default; }
    void Default(const QVariant &value) { m_default = value; }

private:
    [[nodiscard]] RegistryKey key() const { return {m_classKey, m_sectionKey}; }
    void SetClassValue(const QString &path, const QString &text);
    void setVerb(const QString &verbKey, const QString &text, const QString &command);
    void write(const RegistryKey &key, const QString &name, quint32 type, const QVariant &value);

    std::shared_ptr<RegistryStore> m_store;
    EnvironmentStrings::Lookup m_environment;
    quint32 m_valueType = RegistryType::Text;
    quint32 m_classKey = 0;
    QString m_sectionKey;
    QString m_valueKey;
    QVariant m_default;
};

} // namespace Quorlin
