#pragma once

#include <QFileInfo>
#include <QSet>
#include <QString>

namespace Quorlin {

/// Tells which PDFs of a folder are results of an earlier run over it, by the names that
/// ResultNames gives; names are compared without regard to case.
///
/// "X.pdf" and "X.ext.pdf" beside a document "X.ext" that is no PDF are results. "X (2).pdf" and
/// so on beside "X.ext" or "X.pdf", and "X.pdf" beside "X.PDF", may as well be originals, which a
/// new result would replace: they are results only when the distiller made them. What lies there
/// counts even if it is a result itself: so is "X (2) (2).pdf" beside "X (2).pdf".
class EarlierResults
{
public:
    /// @param documents the files of one folder that are taken, results included.
    explicit EarlierResults(const QFileInfoList &documents);

    /// Whether this one of the documents is a result. Some files are opened for it.
    [[nodiscard]] bool contains(const QFileInfo &document) const;

private:
    [[nodiscard]] bool mayBeNumbered(const QString &base) const;
    [[nodiscard]] bool mayDifferInCase(const QFileInfo &document) const;

    QSet<QString> m_bases;        ///< of all documents, without the last extension
    QSet<QString> m_certain;      ///< bases of results of documents that are no PDFs
    QSet<QString> m_unusualBases; ///< of PDFs with another ending than ".pdf"
};

} // namespace Quorlin
