#include "component/backends/merge/SourceDocument.h"

#include "component/backends/merge/MergeFailure.h"

#include <qpdf/Buffer.hh>
#include <qpdf/QPDFExc.hh>

#include <cctype>
#include <set>
#include <string_view>

namespace Quorlin {

namespace {

bool isPageNode(QPDFObjectHandle &node)
{
    return node.getKey("/Kids").isArray() && !node.getKey("/Type").isNameAndEquals("/Page");
}

SourcePage inheriting(const SourcePage &parent, const QPDFObjectHandle &child)
{
    SourcePage page{child, parent.inherited};
    for (size_t i = 0; i < SourcePage::InheritedKeys.size(); ++i) {
        auto value = page.dictionary.getKey(SourcePage::InheritedKeys[i]);
        if (!value.isNull())
            page.inherited[i] = value;
    }
    return page;
}

long long countOf(QPDFObjectHandle node)
{
    auto count = node.isDictionary() ? node.getKey("/Count") : QPDFObjectHandle();
    return count.isInitialized() && count.isInteger() ? count.getIntValue() : 0;
}

/// Whether the keyword that must follow a stream's data does.
bool isStreamEnd(std::string_view rest)
{
    const auto word = rest.substr(0, 16).find_first_not_of("\r\n ");
    return word != std::string_view::npos && rest.substr(word).starts_with("endstream");
}

} // namespace

SourceDocument::SourceDocument(std::shared_ptr<const FileBytes> bytes) : m_bytes(std::move(bytes))
{
    try {
        open();
        collectPages();
    } catch (const QPDFExc &error) {
        throw MergeFailure(error.getErrorCode() == qpdf_e_password ? Reason::Protected
                                                                   : Reason::Damaged);
    } catch (const std::logic_error &) {
        throw MergeFailure(Reason::Damaged);
    }
}

void SourceDocument::open()
{
    m_pdf.setSuppressWarnings(true);
    m_pdf.processMemoryFile("input", m_bytes->data(), m_bytes->size());
    m_encrypted = m_pdf.isEncrypted();
    if (m_encrypted && !m_pdf.allowModifyAssembly())
        throw MergeFailure(Reason::Protected,
                           QStringLiteral("its owner does not allow joining it with others"));
}

void SourceDocument::collectPages()
{
    const auto root = catalogEntry("/Pages");
    std::set<QPDFObjGen> seen;
    std::vector<SourcePage> open{SourcePage{root, {}}};
    while (!open.empty()) {
        auto node = std::move(open.back());
        open.pop_back();
        if (!node.dictionary.isDictionary())
            continue;
        node = inheriting(node, node.dictionary);
        if (!isPageNode(node.dictionary)) {
            m_pages.push_back(std::move(node));
            continue;
        }
        if (node.dictionary.isIndirect()) {
            if (!seen.insert(node.dictionary.getObjGen()).second)
                continue;
            m_pageNodes.push_back(node.dictionary);
        }
        const auto kids = node.dictionary.getKey("/Kids").getArrayAsVector();
        for (auto kid = kids.rbegin(); kid != kids.rend(); ++kid)
            open.push_back(SourcePage{*kid, node.inherited});
    }
    refuseLostPages(countOf(root));
}

void SourceDocument::refuseLostPages(long long expected)
{
    if (m_pdf.anyWarnings() && static_cast<long long>(m_pages.size()) < expected)
        throw MergeFailure(Reason::Damaged, QStringLiteral("some of its pages are lost"));
    if (m_pages.empty())
        throw MergeFailure(Reason::NothingPrinted);
}

QPDFObjectHandle SourceDocument::catalogEntry(const std::string &key)
{
    return m_pdf.getRoot().getKey(key);
}

PDFVersion SourceDocument::version()
{
    auto version = m_pdf.getVersionAsPDFVersion();
    auto entry = catalogEntry("/Version");
    const auto name = entry.isName() ? entry.getName() : std::string();
    if (name.size() == 4 && std::isdigit(name[1]) && name[2] == '.' && std::isdigit(name[3]))
        version.updateIfGreater(PDFVersion(name[1] - '0', name[3] - '0'));
    return version;
}

QPDFObjectHandle SourceDocument::information()
{
    return m_pdf.getTrailer().getKey("/Info");
}

std::shared_ptr<Buffer> SourceDocument::rawStream(QPDFObjectHandle stream) const
{
    if (auto mapped = m_encrypted ? nullptr : mappedStream(stream))
        return mapped;
    try {
        return stream.getRawStreamData();
    } catch (const QPDFExc &) {
        throw MergeFailure(Reason::Damaged);
    }
}

std::shared_ptr<Buffer> SourceDocument::mappedStream(QPDFObjectHandle &stream) const
{
    auto length = stream.getDict().getKey("/Length");
    const auto offset = stream.getParsedOffset();
    const std::string_view file(m_bytes->data(), m_bytes->size());
    if (!length.isInteger() || length.getIntValue() < 0 || offset < 8)
        return nullptr;
    const auto start = static_cast<size_t>(offset);
    const auto size = static_cast<size_t>(length.getIntValue());
    if (start > file.size() || size > file.size() - start ||
        !isStreamEnd(file.substr(start + size)))
        return nullptr;
    const auto keyword = file.substr(start - 8, 8);
    if (keyword != "stream\r\n" && keyword.substr(1) != "stream\n")
        return nullptr;
    // The buffer never writes: the library only lacks a type for memory that is not its own.
    auto *data = reinterpret_cast<unsigned char *>(const_cast<char *>(file.data() + start));
    return std::make_shared<Buffer>(data, size);
}

} // namespace Quorlin
