#include "component/supervisor/Journal.h"

#include "component/protocol/Message.h"
#include "component/supervisor/ExclusiveFile.h"
#include "component/supervisor/FolderRemoval.h"
#include "component/supervisor/WorkFolder.h"

#include <QDir>
#include <QHash>
#include <QJsonObject>
#include <QStandardPaths>
#include <QUuid>

#include <optional>

namespace Quorlin {

namespace {

constexpr char FilePlanned[] = "file";
constexpr char FileMade[] = "made";
constexpr char FolderPlanned[] = "folder";
constexpr char Suffix[] = ".journal";

QString lockOf(const QString &journalPath)
{
    return journalPath + QStringLiteral(".lock");
}

/// What the journal knows of one file.
struct Noted
{
    QStringList identities;
    bool made = false;
};

/// A second name of the planned file has its identity. A copy that was never noted as made
/// is still empty, since the note comes before its first byte.
bool isOurs(const QString &path, const Noted &noted)
{
    const QFileInfo info(path);
    if (!info.isFile() || info.isSymLink())
        return false;
    if (noted.identities.contains(ExclusiveFile::identityOf(path)))
        return true;
    return !noted.made && info.size() == 0;
}

/// What a whole journal says.
struct Notes
{
    QHash<QString, Noted> files;
    QStringList folders;
};

void take(const QJsonObject &entry, Notes &notes)
{
    const auto identity = entry.value(QLatin1String("identity")).toString();
    if (entry.contains(QLatin1String(FolderPlanned)))
        notes.folders << entry.value(QLatin1String(FolderPlanned)).toString();
    for (const auto *word : {FilePlanned, FileMade}) {
        if (!entry.contains(QLatin1String(word)))
            continue;
        auto &noted = notes.files[entry.value(QLatin1String(word)).toString()];
        noted.identities << identity;
        noted.made = noted.made || word == FileMade;
    }
}

/// @return nothing when the journal cannot be read.
std::optional<Notes> notesOf(const QString &journalPath)
{
    QFile journal(journalPath);
    if (!journal.open(QIODevice::ReadOnly))
        return std::nullopt;
    Notes notes;
    while (!journal.atEnd())
        if (const auto entry = Message::decode(journal.readLine()))
            take(*entry, notes);
    return notes;
}

/// What is still there of what the journal notes.
QStringList remainsOf(const Notes &notes)
{
    QStringList remains;
    for (auto file = notes.files.cbegin(); file != notes.files.cend(); ++file)
        if (isOurs(file.key(), file.value()))
            remains << file.key();
    for (const auto &folder : notes.folders)
        if (WorkFolder::isWorkFolder(folder))
            remains << folder;
    return remains;
}

bool removeAny(const QString &path)
{
    return QFileInfo(path).isDir() ? FolderRemoval::remove(path) : QFile::remove(path);
}

} // namespace

Journal::Journal(const QString &folder) : m_folder(folder) {}

Journal::~Journal()
{
    m_file.close();
}

QString Journal::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/quorlin/journal");
}

bool Journal::open()
{
    if (!QDir().mkpath(m_folder))
        return false;
    const auto name = QUuid::createUuid().toString(QUuid::WithoutBraces) + QLatin1String(Suffix);
    const auto path = QDir(m_folder).filePath(name);
    m_lock = std::make_unique<QLockFile>(lockOf(path));
    m_lock->setStaleLockTime(0);
    if (!m_lock->tryLock(0))
        return false;
    m_file.setFileName(path);
    return m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

void Journal::planFile(const QString &path, const QString &source)
{
    write(FilePlanned, path, ExclusiveFile::identityOf(source));
}

void Journal::madeFile(const QString &path)
{
    write(FileMade, path, ExclusiveFile::identityOf(path));
}

void Journal::planFolder(const QString &path)
{
    write(FolderPlanned, path);
}

void Journal::write(const char *word, const QString &path, const QString &identity)
{
    const QMutexLocker lock(&m_mutex);
    if (!m_file.isOpen())
        return;
    m_file.write(
        Message::encode({{QLatin1String(word), path}, {QStringLiteral("identity"), identity}}));
    m_file.flush();
}

QStringList Journal::recover()
{
    QStringList removed;
    const auto journals =
        QDir(m_folder).entryList({QLatin1Char('*') + QLatin1String(Suffix)}, QDir::Files);
    for (const auto &name : journals) {
        const auto path = QDir(m_folder).filePath(name);
        if (path == m_file.fileName())
            continue;
        QLockFile lock(lockOf(path));
        lock.setStaleLockTime(0);
        if (lock.tryLock(0))
            recoverOne(path, removed);
    }
    return removed;
}

/// What cannot be removed now is left for the next start, and the journal with it.
void Journal::recoverOne(const QString &journalPath, QStringList &removed)
{
    const auto notes = notesOf(journalPath);
    if (!notes)
        return;
    bool isDone = true;
    const auto remains = remainsOf(*notes);
    for (const auto &path : remains) {
        if (removeAny(path))
            removed << path;
        else
            isDone = false;
    }
    if (isDone)
        QFile::remove(journalPath);
}

/// A folder that became read-only keeps what was made there; the next start tries again.
void Journal::close()
{
    if (!m_file.isOpen())
        return;
    m_file.close();
    const auto notes = notesOf(m_file.fileName());
    if (notes && remainsOf(*notes).isEmpty())
        m_file.remove();
    m_lock.reset();
}

} // namespace Quorlin
