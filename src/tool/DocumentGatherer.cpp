#include "tool/DocumentGatherer.h"

#include "component/protocol/Acceptance.h"
#include "convert/FolderWalk.h"
#include "tool/FileNames.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace Quorlin {

namespace {

bool isPdf(const QFileInfo &file)
{
    return Acceptance::entranceOf(file.fileName()) == Entrance::Pdf;
}

bool isTaken(const QFileInfo &file)
{
    return !file.isDir() && Acceptance::refusalOf(file.filePath()) == Reason::None;
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
    const auto path = QDir::cleanPath(QDir::current().absoluteFilePath(input));
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
    if (document.failed())
        document.text = FileNames::isUtf8(path)
                            ? reasonText(document.reason)
                            : QStringLiteral("its name is not UTF-8; rename it first");
    m_documents.append(document);
}

void DocumentGatherer::addFolder(const QString &path)
{
    if (!QFileInfo(path).isReadable() || !QFileInfo(path).isExecutable()) {
        m_remarks.append(QStringLiteral("%1: this folder may not be read").arg(path));
        return;
    }
    addEntries(FolderWalk::entries(path));
}

void DocumentGatherer::addEntries(const QFileInfoList &entries)
{
    QSet<QString> sources;
    for (const auto &entry : entries) {
        if (!isPdf(entry) && isTaken(entry))
            sources.insert(entry.completeBaseName());
    }
    for (const auto &entry : entries) {
        const bool isResult = isPdf(entry) && sources.contains(entry.completeBaseName());
        if (entry.isDir() && !entry.isSymLink())
            addFolder(entry.filePath());
        else if (!isResult && isTaken(entry))
            addFile(entry.filePath());
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
