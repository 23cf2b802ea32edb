#pragma once

#include <QString>

namespace Quorlin {

/// A named set of distiller settings, kept in a file of its own: one choice of quality.
class clsJobOptions
{
public:
    /// @param name the key, as the settings file has it.
    /// @param Filename full path of the file for the distiller; it need not exist.
    clsJobOptions(const QString &name, const QString &Filename);

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] QString Filename() const { return m_filename; }

    /// What the user reads; empty until the language gave a label.
    [[nodiscard]] QString Libelle() const { return m_libelle; }
    void Libelle(const QString &text) { m_libelle = text; }

private:
    QString m_name;
    QString m_filename;
    QString m_libelle;
};

} // namespace Quorlin
