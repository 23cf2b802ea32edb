#include "component/supervisor/WorkFolder.h"

#include "component/supervisor/FolderRemoval.h"
#include "component/supervisor/Journal.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

namespace Quorlin {

namespace {

constexpr char Prefix[] = "quorlin-work-";

} // namespace

WorkFolder::WorkFolder(Journal &journal) : m_journal(journal) {}

WorkFolder::~WorkFolder()
{
    remove();
}

bool WorkFolder::create()
{
    // Empty when TMPDIR names no folder; a relative path would lead to the user's own.
    const auto parent = QDir::tempPath();
    if (parent.isEmpty())
        return false;
    const auto random = QRandomGenerator::system()->generate64();
    const auto path = QDir(parent).absoluteFilePath(
        QLatin1String(Prefix) + QStringLiteral("%1").arg(random, 16, 16, QLatin1Char('0')));
    m_journal.planFolder(path);
    const auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    if (!QDir().mkdir(path, ownerOnly))
        return false;
    m_path = path;
    return true;
}

std::optional<QString> WorkFolder::newFolder(const QString &kind)
{
    const auto path = QStringLiteral("%1/%2-%3").arg(m_path, kind, uniqueName());
    if (m_path.isEmpty() || !QDir().mkdir(path))
        return std::nullopt;
    return path;
}

QString WorkFolder::uniqueName()
{
    return QString::number(++m_count);
}

void WorkFolder::remove()
{
    if (!m_path.isEmpty())
        FolderRemoval::remove(m_path);
    m_path.clear();
}

bool WorkFolder::isWorkFolder(const QString &path)
{
    const QFileInfo info(path);
    return info.fileName().startsWith(QLatin1String(Prefix)) && info.isDir() && !info.isSymLink() &&
           info.ownerId() == QFileInfo(QDir::homePath()).ownerId();
}

} // namespace Quorlin
