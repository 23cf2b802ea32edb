#include "support/TestFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace Quorlin {

TestFolder::TestFolder(const QString &parent)
    : m_folder((parent.isEmpty() ? QDir::tempPath() : parent) +
               QStringLiteral("/quorlin-test-XXXXXX"))
{
    if (!m_folder.isValid())
        qFatal("cannot make a folder for a test");
}

/// Folders that a test locked would stay.
TestFolder::~TestFolder()
{
    QDirIterator folders(path(),
                         QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (folders.hasNext())
        QFile::setPermissions(folders.next(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString TestFolder::path(const char *name) const
{
    return m_folder.filePath(QString::fromUtf8(name));
}

QString TestFolder::write(const char *name, const QByteArray &bytes) const
{
    const auto target = path(name);
    QFile file(target);
    if (!QDir().mkpath(QFileInfo(target).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(target));
    return target;
}

QString TestFolder::makeFolder(const char *name) const
{
    if (!QDir().mkpath(path(name)))
        qFatal("cannot make the folder %s", name);
    return path(name);
}

QStringList TestFolder::names() const
{
    return namesIn(path());
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace Quorlin
