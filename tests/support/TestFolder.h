#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace Quorlin {

/// A folder of a test's own, gone with the object. Names are UTF-8 and may hold folders.
class TestFolder
{
public:
    /// @param parent where to make it; empty means the folder for temporary files.
    explicit TestFolder(const QString &parent = {});
    ~TestFolder();
    TestFolder(const TestFolder &) = delete;
    TestFolder &operator=(const TestFolder &) = delete;

    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString path(const char *name) const;

    /// Writes a file, with the folders that it needs, and returns its path.
    QString write(const char *name, const QByteArray &bytes) const;
    /// Makes a folder and returns its path.
    QString makeFolder(const char *name) const;

    /// The names of all that lies in it, links included, in order.
    [[nodiscard]] QStringList names() const;

private:
    QTemporaryDir m_folder;
};

/// What is in a file; empty when there is none.
[[nodiscard]] QByteArray contentOf(const QString &path);

/// The names of all that lies in a folder, links included, in order.
[[nodiscard]] QStringList namesIn(const QString &folder);

} // namespace Quorlin
