#pragma once

#include "tool/DocumentRecord.h"

#include <QFileInfo>
#include <QList>
#include <QStringList>

namespace Quorlin {

/// Turns what was named on the command line into the list of documents.
///
/// A named file is always in the list, with its reason when the component does not take it. Of
/// a folder only the files that the component takes are, in natural order, with everything
/// below it. Links to folders are not followed, except when named. Hidden files and the lock
/// files of office programs ("~$…") are passed over, and so is a PDF beside a document of the
/// same name: it is that document's result from an earlier run.
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
    void addEntries(const QFileInfoList &entries);
    void dropRepeats();

    QList<DocumentRecord> m_documents;
    QStringList m_remarks;
};

} // namespace Quorlin
