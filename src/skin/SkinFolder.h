#pragma once

#include <QString>
#include <QStringList>

namespace Quorlin {

/// The folder "skins" beside the program, which holds a folder for each skin. Its own name, the
/// names of skins and those of their files count in any case, but an exact name comes first.
///
/// Names and values may come from anywhere: none leads out of its folder.
class SkinFolder
{
public:
    /// @param applicationFolder path of the program's folder.
    explicit SkinFolder(const QString &applicationFolder);

    /// Names of all entries but "None", whatever they are, in the order of the file system.
    [[nodiscard]] QStringList names() const;

    /// Path of a skin's folder; empty when there is none.
    [[nodiscard]] QString pathOf(const QString &skin) const;

    /// Path of a skin's description; empty when there is none.
    [[nodiscard]] QString descriptionOf(const QString &skin) const;

    /// Finds an ordinary file within a skin's folder, after following links.
    /// @param value path below that folder, parted by "/" or "\", without "..".
    /// @return its path without any link; empty when there is no such file.
    [[nodiscard]] static QString fileIn(const QString &skinPath, const QString &value);

private:
    [[nodiscard]] QString path() const;

    QString m_applicationFolder;
};

} // namespace Quorlin
