#pragma once

#include "component/backends/merge/MergeRequest.h"
#include "unit/merge/PdfMaker.h"

#include <QStringList>
#include <QTemporaryDir>

#include <qpdf/QPDF.hh>

#include <memory>
#include <string>
#include <vector>

namespace Quorlin {

/// One merge of a test in a folder of its own, and a fresh look at its result.
class MergeScene
{
public:
    /// Saves the document as an input named after it ("a" becomes a.pdf).
    void add(PdfMaker &maker, const QString &name);

    /// Writes bytes as an input.
    void addBytes(const QByteArray &bytes, const QString &name);

    /// Takes a path as an input, whatever is there.
    void addPath(const QString &path) { m_inputs.append(path); }

    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString output() const { return path(QStringLiteral("merged.pdf")); }
    [[nodiscard]] QStringList files() const;
    [[nodiscard]] const std::vector<int> &progress() const { return m_progress; }
    [[nodiscard]] QJsonObject request(bool bookmarks) const;

    /// Merges all inputs; the file name without extension is each document's title.
    MergeOutcome merge(bool bookmarks = true);

    /// The result, opened anew.
    [[nodiscard]] QPDF &result();
    [[nodiscard]] QPDFObjectHandle root() { return result().getRoot(); }
    [[nodiscard]] QPDFObjectHandle page(int number); ///< from 1

    /// The names that the pages show, in order: "a1 a2 b1".
    [[nodiscard]] QString pageNames();

    /// The name of the page that a target leads to, or why it leads nowhere.
    [[nodiscard]] QString targetOf(QPDFObjectHandle target);

    /// The same for an annotation, action or bookmark.
    [[nodiscard]] QString leadsTo(QPDFObjectHandle item);

    /// The bookmarks as text, "title>page{children}"; "+" in front of an open one's title.
    [[nodiscard]] QString bookmarks();

    /// Titles are joined in the same way, from this first item on.
    [[nodiscard]] QString bookmarksFrom(QPDFObjectHandle item);

    /// Annotation of a page, both from 1.
    [[nodiscard]] QPDFObjectHandle annotation(int pageNumber, int number);

private:
    QTemporaryDir m_folder;
    QStringList m_inputs;
    std::vector<int> m_progress;
    std::unique_ptr<QPDF> m_result;
};

/// The name that a page shows.
[[nodiscard]] QString pageName(QPDFObjectHandle page);

} // namespace Quorlin
