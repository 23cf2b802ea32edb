#pragma once

#include "component/backends/merge/FileBytes.h"

#include <qpdf/PDFVersion.hh>
#include <qpdf/QPDF.hh>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace Quorlin {

/// One page of an input, with the attributes it inherits from the page tree.
struct SourcePage
{
    static constexpr std::array InheritedKeys{"/Resources", "/MediaBox", "/CropBox", "/Rotate"};

    QPDFObjectHandle dictionary;
    std::array<QPDFObjectHandle, InheritedKeys.size()> inherited; ///< uninitialised: none
};

/// One input of a merge, opened for reading.
class SourceDocument
{
public:
    /// Opens the file and collects its pages. Throws MergeFailure: the file cannot be read, is
    /// protected or damaged, or has no pages.
    explicit SourceDocument(std::shared_ptr<const FileBytes> bytes);
    SourceDocument(const SourceDocument &) = delete;
    SourceDocument &operator=(const SourceDocument &) = delete;

    [[nodiscard]] const std::vector<SourcePage> &pages() const { return m_pages; }

    /// The inner nodes of the page tree that are objects of their own.
    [[nodiscard]] const std::vector<QPDFObjectHandle> &pageNodes() const { return m_pageNodes; }

    /// The catalog's entry; null when there is none.
    [[nodiscard]] QPDFObjectHandle catalogEntry(const std::string &key);

    /// The trailer's document information; null when there is none.
    [[nodiscard]] QPDFObjectHandle information();

    /// The higher one of the file's header and its catalog.
    [[nodiscard]] PDFVersion version();

    /// The stream's bytes as they are stored, decrypted but not decoded. They stay valid after
    /// this object as long as its FileBytes live.
    [[nodiscard]] std::shared_ptr<Buffer> rawStream(QPDFObjectHandle stream) const;

private:
    void open();
    void collectPages();
    void refuseLostPages(long long expected);
    [[nodiscard]] std::shared_ptr<Buffer> mappedStream(QPDFObjectHandle &stream) const;

    std::shared_ptr<const FileBytes> m_bytes;
    mutable QPDF m_pdf;
    bool m_encrypted = false;
    std::vector<SourcePage> m_pages;
    std::vector<QPDFObjectHandle> m_pageNodes;
};

} // namespace Quorlin
