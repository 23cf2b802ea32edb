#include "settings/cRegistry.h"

#include "winsupport/NumberedError.h"

#include <utility>

namespace Quorlin {

namespace {

NumberedError errorOf(quint32 number, const QString &description)
{
    return {number, QStringLiteral("cRegistry"), description};
}

/// "ROOT',Section: 'PATH", as most of the texts name a key.
QString placeOf(const RegistryKey &key)
{
    return QString::number(static_cast<qint32>(key.root)) + QLatin1String("',Section: '") +
           key.path;
}

QString shown(const QVariant &value)
{
    return value.typeId() == QMetaType::QByteArray
               ? QString::fromLatin1(value.toByteArray().toHex())
               : value.toString();
}

QString quoted(const QString &path)
{
    constexpr QLatin1Char quote('"');
    auto whole = path.trimmed();
    if (!whole.startsWith(quote))
        whole.prepend(quote);
    if (!whole.endsWith(quote))
        whole.append(quote);
    return whole;
}

QString textOr(const QString &text, const QString &otherwise)
{
    return text.isEmpty() ? otherwise : text;
}

} // namespace

cRegistry::cRegistry(std::shared_ptr<RegistryStore> store, EnvironmentStrings::Lookup environment)
    : m_store(std::move(store)), m_environment(std::move(environment))
{
}

bool cRegistry::KeyExists() const
{
    return m_store->openKey(key()) == RegistryStatus::Done;
}

bool cRegistry::CreateKey()
{
    if (m_store->createKey(key()) != RegistryStatus::Done)
        throw errorOf(KeyError, QLatin1String("Failed to create registry Key: '") + m_sectionKey);
    return true;
}

bool cRegistry::DeleteKey()
{
    if (m_store->deleteKey(key()) != RegistryStatus::Done)
        throw errorOf(KeyError, QLatin1String("Failed to delete registry Key: '") + placeOf(key()));
    return true;
}

/// Who may not write the key cannot open it for deleting either.
bool cRegistry::DeleteValue()
{
    const auto opened = m_store->openKey(key());
    const auto deleted =
        opened == RegistryStatus::Done ? m_store->deleteValue(key(), m_valueKey) : opened;
    if (opened != RegistryStatus::Done || deleted == RegistryStatus::Denied)
        throw errorOf(KeyError, QLatin1String("Failed to open key '") + placeOf(key()) +
                                    QLatin1String("' for delete access"));
    if (deleted != RegistryStatus::Done)
        throw errorOf(KeyError, QLatin1String("Failed to delete registry Key: '") + placeOf(key()) +
                                    QLatin1String("',Key: '") + m_valueKey);
    return true;
}

QVariant cRegistry::Value() const
{
    const auto found = m_store->queryValue(key(), m_valueKey);
    if (found.status != RegistryStatus::Done)
        return m_default;
    const auto value = found.result.toVariant();
    if (!value.isValid())
        return m_default;
    return found.result.type == RegistryType::ExpandText
               ? EnvironmentStrings::expand(value.toString(), m_environment)
               : value;
}

void cRegistry::Value(const QVariant &value)
{
    write(key(), m_valueKey, m_valueType, value);
}

QStringList cRegistry::EnumerateValues() const
{
    return m_store->enumerateValues(key()).result;
}

QStringList cRegistry::EnumerateSections() const
{
    return m_store->enumerateKeys(key()).result;
}

void cRegistry::CreateEXEAssociation(const QString &exePath, const QString &className,
                                     const QString &classDescription, const QString &extension,
                                     const QString &openText, bool supportPrint,
                                     const QString &printText, bool supportNew,
                                     const QString &newText, bool supportInstall,
                                     const QString &addText, qint32 iconIndex)
{
    const auto program = quoted(exePath);
    const auto shell = className + QLatin1String("\\shell\\");
    SetClassValue(QLatin1Char('.') + extension, className);
    SetClassValue(className, classDescription);
    setVerb(shell + QLatin1String("open"), textOr(openText, QStringLiteral("&Open")),
            program + QLatin1String(" \"%1\""));
    if (supportPrint)
        setVerb(shell + QLatin1String("print"), textOr(printText, QStringLiteral("&Print")),
                program + QLatin1String(" /p \"%1\""));
    if (supportInstall)
        setVerb(shell + QLatin1String("add"),
                textOr(addText, QLatin1String("&Install ") + extension),
                program + QLatin1String(" /a \"%1\""));
    if (supportNew)
        setVerb(shell + QLatin1String("new"), textOr(newText, QStringLiteral("&New")),
                program + QLatin1String(" /n \"%1\""));
    if (iconIndex >= 0)
        SetClassValue(className + QLatin1String("\\DefaultIcon"),
                      program + QLatin1Char(',') + QString::number(iconIndex));
}

void cRegistry::CreateAdditionalEXEAssociations(const QString &sClassName,
                                                const QVariantList &vItems)
{
    constexpr qsizetype triple = 3;
    if (vItems.size() % triple != 0)
        throw errorOf(ParameterError, QStringLiteral("Invalid parameter list passed to "
                                                     "CreateAdditionalEXEAssociations - expected "
                                                     "Name/Text/Command"));
    if (m_store->openKey({RegistryRoot::ClassesRoot, sClassName}) != RegistryStatus::Done)
        throw errorOf(ClassError,
                      QStringLiteral("Error - attempt to create additional associations before "
                                     "class defined."));
    for (qsizetype at = 0; at < vItems.size(); at += triple)
        setVerb(sClassName + QLatin1String("\\shell\\") + vItems.at(at).toString(),
                vItems.at(at + 1).toString(), vItems.at(at + 2).toString());
}

/// The object's own `classKey` and `SectionKey` stay what they are.
void cRegistry::SetClassValue(const QString &path, const QString &text)
{
    write({RegistryRoot::ClassesRoot, path}, {}, RegistryType::Text, text);
    write({RegistryRoot::LocalMachine, QLatin1String("SOFTWARE\\Classes\\") + path}, {},
          RegistryType::Text, text);
}

void cRegistry::setVerb(const QString &verbKey, const QString &text, const QString &command)
{
    SetClassValue(verbKey, text);
    SetClassValue(verbKey + QLatin1String("\\command"), command);
}

void cRegistry::write(const RegistryKey &key, const QString &name, quint32 type,
                      const QVariant &value)
{
    const auto typed = RegistryValue::from(type, value);
    const auto status = typed ? m_store->setValue(key, name, *typed) : m_store->createKey(key);
    if (!typed || status != RegistryStatus::Done)
        throw errorOf(ValueError, QLatin1String("Failed to set registry value Key: '") +
                                      placeOf(key) + QLatin1String("',Key: '") + name +
                                      QLatin1String("' to value: '") + shown(value) +
                                      QLatin1Char('\''));
}

} // namespace Quorlin
