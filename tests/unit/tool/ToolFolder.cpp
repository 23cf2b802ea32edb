#include "unit/tool/ToolFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace Quorlin {

ToolFolder::ToolFolder() : m_before(QDir::currentPath())
{
    QDir::setCurrent(m_folder.path());
}

ToolFolder::~ToolFolder()
{
    QDir::setCurrent(m_before);
}

QString ToolFolder::path(const char *name) const
{
    return QDir::cleanPath(m_folder.filePath(QString::fromUtf8(name)));
}

QString ToolFolder::write(const char *name, const QByteArray &bytes) const
{
    const auto file = path(name);
    QDir().mkpath(QFileInfo(file).path());
    QFile target(file);
    if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size())
        qFatal("cannot write a test file");
    return file;
}

QByteArray ToolFolder::read(const QString &path) const
{
    QFile file(QDir(m_folder.path()).filePath(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList ToolFolder::files() const
{
    QStringList names;
    QDirIterator entries(m_folder.path(), QDir::Files | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        names.append(QDir(m_folder.path()).relativeFilePath(entries.next()));
    names.sort();
    return names;
}

QString ToolFolder::writeSettings(const char *folder) const
{
    const QByteArray base(folder);
    write(base + "/Quorlin.ini", "[Printer]\r\nName = Test PDF\r\n[JobOptions]\r\n"
                                 "Default = Default.joboptions\r\nHigh = High.joboptions\r\n");
    write(base + "/Settings/Default.joboptions");
    write(base + "/Settings/High.joboptions");
    return path(folder);
}

} // namespace Quorlin
