#pragma once

#include "tool/DocumentRecord.h"

#include <QFileInfo>
#include <QList>
#include <QStringList>

namespace Quorlin {

/// Turns what was named on the command line into the list of documents.
///
/// A named file is always in the list, with its reason when the component does not take it. Of
/// a folder only the files that the component takes are, in natural order and before those of
/// its sub-folders, which follow with everything below them. A name there that is not UTF-8 is
/// in the list with that reason if its extension is taken. Links to folders are not followed,
/// except when named. Hidden files and the lock files of office programs ("~$…") are passed over,
/// and so are the results of an earlier run over the folder.
class DocumentGatherer
{
public:
    /// @param repeats whether a document that is named twice is in the list twice.
    [[nodiscard]] QList<DocumentRecord> gather(const QStringList &inputs, bool repeats);

    /// Folders that could not be read or held no document, each as a sentence.
    [[nodiscard]] QStringList remarks() const { return m_remarks; }

private:
    void addInput(const QString &input);
    void addFile(const QString &path);
    void addFolder(const QString &path);
    void addFiles(const QFileInfoList &entries);
    void addUnreadableNames(const QString &folder);
    void dropRepeats();

    QList<DocumentRecord> m_documents;
    QStringList m_remarks;
};

} // namespace Quorlin
