#pragma once

#include "component/backends/merge/DocumentInfo.h"
#include "component/backends/merge/FormFields.h"
#include "component/backends/merge/LayerSet.h"
#include "component/backends/merge/NamePool.h"
#include "component/backends/merge/OutlineTree.h"
#include "component/backends/merge/PageLabels.h"
#include "component/backends/merge/SharedObjects.h"

#include <QString>

#include <qpdf/PDFVersion.hh>
#include <qpdf/QPDF.hh>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Quorlin {

/// Joins documents into one, page after page, with what leads to the pages: bookmarks, links,
/// named destinations, page labels, form fields, layers, attachments.
class DocumentJoiner
{
public:
    DocumentJoiner();
    DocumentJoiner(const DocumentJoiner &) = delete;
    DocumentJoiner &operator=(const DocumentJoiner &) = delete;

    /// Appends a document. Throws MergeFailure; the joiner is of no more use then.
    /// @param title the document's own top-level bookmark; nothing: its bookmarks stand at the
    ///        top level themselves.
    void append(const QString &path, const std::optional<QString> &title);

    /// Writes the merged document, whole or not at all. Throws MergeFailure.
    /// @param progress called with 0 to 100.
    void write(const QString &path, const std::function<void(int)> &progress);

    [[nodiscard]] long long pages() const { return m_pageCount; }

private:
    void appendDocument(SourceDocument &source, const std::optional<QString> &title);
    [[nodiscard]] QPDFObjectHandle addPageNode(long long count);
    void addNames(SourceDocument &source, DestinationNames &names, ObjectCopier &copier);
    void keepFirst(SourceDocument &source, ObjectCopier &copier);
    void finish();
    void finishNames();
    void finishPageTree();

    std::vector<std::shared_ptr<const FileBytes>> m_files; ///< the streams' bytes lie there
    QPDF m_pdf;
    QPDFObjectHandle m_pageRoot;
    std::vector<QPDFObjectHandle> m_pageNodes;
    long long m_pageCount = 0;
    PDFVersion m_version;
    SharedObjects m_shared;
    NamePool m_destinations;
    NamePool m_attachments;
    OutlineTree m_outlines;
    PageLabels m_labels;
    FormFields m_fields;
    LayerSet m_layers;
    std::vector<QPDFObjectHandle> m_threads;
    std::optional<DocumentInfo> m_information;
};

} // namespace Quorlin
