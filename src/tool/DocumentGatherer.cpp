#include "tool/DocumentGatherer.h"

#include "component/protocol/Acceptance.h"
#include "convert/FolderWalk.h"
#include "convert/NaturalOrder.h"
#include "tool/EarlierResults.h"
#include "tool/FileNames.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

namespace Quorlin {

namespace {

bool isTaken(const QFileInfo &file)
{
    return !file.isDir() && Acceptance::refusalOf(file.filePath()) == Reason::None;
}

struct Unreadable
{
    QString name;
    bool isFolder;
};

/// What a folder holds under names that are not UTF-8, hidden entries left out.
QList<Unreadable> unreadableNames(const QString &folder)
{
    QList<Unreadable> found;
    std::error_code error;
    const auto end = std::filesystem::directory_iterator();
    std::filesystem::directory_iterator entry(folder.toStdU16String(), error);
    for (; !error && entry != end; entry.increment(error)) {
        const auto bytes = entry->path().filename().u8string();
        const QByteArrayView view(reinterpret_cast<const char *>(bytes.data()),
                                  qsizetype(bytes.size()));
        const auto name = FileNames::fromBytes(view);
        std::error_code ignored;
        if (!name.startsWith(QLatin1Char('.')) && !FileNames::isUtf8(name))
            found.append({name, entry->is_directory(ignored)});
    }
    std::ranges::sort(found, NaturalOrder::less, &Unreadable::name);
    return found;
}

} // namespace

QList<DocumentRecord> DocumentGatherer::gather(const QStringList &inputs, bool repeats)
{
    m_documents.clear();
    m_remarks.clear();
    for (const auto &input : inputs)
        addInput(input);
    if (!repeats)
        dropRepeats();
    return m_documents;
}

void DocumentGatherer::addInput(const QString &input)
{
    const auto path = FileNames::fullPath(input);
    if (!QFileInfo(path).isDir()) {
        addFile(path);
        return;
    }
    const auto before = m_documents.size();
    addFolder(path);
    if (m_documents.size() == before)
        m_remarks.append(QStringLiteral("%1: no documents in this folder").arg(path));
}

void DocumentGatherer::addFile(const QString &path)
{
    DocumentRecord document;
    document.input = path;
    document.reason = FileNames::isUtf8(path) ? Acceptance::refusalOf(path) : Reason::NotReadable;
    if (!FileNames::isUtf8(path))
        document.detail = QStringLiteral("its name is not UTF-8; rename it first");
    m_documents.append(document);
}

void DocumentGatherer::addFolder(const QString &path)
{
    if (!QFileInfo(path).isReadable() || !QFileInfo(path).isExecutable()) {
        m_remarks.append(QStringLiteral("%1: this folder may not be read").arg(path));
        return;
    }
    const auto entries = FolderWalk::entries(path);
    addFiles(entries);
    addUnreadableNames(path);
    for (const auto &entry : entries) {
        if (entry.isDir() && !entry.isSymLink())
            addFolder(entry.filePath());
    }
}

void DocumentGatherer::addFiles(const QFileInfoList &entries)
{
    QFileInfoList taken;
    std::ranges::copy_if(entries, std::back_inserter(taken), isTaken);
    const EarlierResults results(taken);
    for (const auto &document : std::as_const(taken)) {
        if (!results.contains(document))
            addFile(document.filePath());
    }
}

void DocumentGatherer::addUnreadableNames(const QString &folder)
{
    for (const auto &entry : unreadableNames(folder)) {
        const auto path = folder + QLatin1Char('/') + entry.name;
        if (entry.isFolder)
            m_remarks.append(QStringLiteral("%1: the name of this folder is not UTF-8").arg(path));
        else if (Acceptance::entranceOf(entry.name) != Entrance::None)
            addFile(path);
    }
}

void DocumentGatherer::dropRepeats()
{
    QSet<QString> seen;
    m_documents.removeIf([&seen](const DocumentRecord &document) {
        const auto before = seen.size();
        seen.insert(document.input);
        return seen.size() == before;
    });
}

} // namespace Quorlin
