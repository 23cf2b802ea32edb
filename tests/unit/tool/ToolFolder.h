#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace Quorlin {

/// A folder of its own for one test, and the current folder as long as it lives.
class ToolFolder
{
public:
    ToolFolder();
    ~ToolFolder();
    ToolFolder(const ToolFolder &) = delete;
    ToolFolder &operator=(const ToolFolder &) = delete;

    /// Absolute path of a name in the folder.
    [[nodiscard]] QString path(const char *name) const;

    /// Writes a file, with the folders above it. @return its absolute path.
    QString write(const char *name, const QByteArray &bytes = "text") const;

    [[nodiscard]] QByteArray read(const QString &path) const;

    /// Relative paths of all files in the folder, sorted.
    [[nodiscard]] QStringList files() const;

    /// Writes Quorlin.ini and Settings/ into a folder below. @return that folder.
    QString writeSettings(const char *folder = "program") const;

private:
    QTemporaryDir m_folder;
    QString m_before;
};

} // namespace Quorlin
