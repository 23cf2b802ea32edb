#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin {

/// The folder "language" beside the program, which holds a file NAME.slg for each language.
///
/// Only ordinary files and links to such count; hidden ones, pipes and folders do not. The end
/// ".slg" counts in any case.
class LanguageFolder
{
public:
    /// @param applicationFolder path of the program's folder; empty when there is none.
    explicit LanguageFolder(const QString &applicationFolder = {});

    /// The languages in the order of the file system, not sorted: the name of each file up to
    /// its first point. A name may come twice. Empty when there is no folder.
    [[nodiscard]] QStringList languages() const;

    /// Path of the file of a language; empty when there is none. Case does not count, but the
    /// exact name comes first. Whatever the name, the file lies in the folder itself.
    [[nodiscard]] QString fileOf(const QString &language) const;

private:
    [[nodiscard]] QStringList fileNames() const;

    QString m_folder;
};

} // namespace Quorlin
