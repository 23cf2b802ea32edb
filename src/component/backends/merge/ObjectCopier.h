#pragma once

#include "component/backends/merge/DestinationNames.h"
#include "component/backends/merge/SharedObjects.h"
#include "component/backends/merge/SourceDocument.h"

#include <qpdf/QPDF.hh>

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Quorlin {

/// Copies objects of one input into the merged document, each indirect object once.
///
/// References to pages become references to their copies, wherever they stand; pages that are
/// not in the input's page tree become null. Targets of links and actions get their new names.
/// What belongs to the structure tree is left out. Nothing recurses deeper than a document's
/// parser allows direct objects to be nested.
class ObjectCopier
{
public:
    /// All of these must outlive the copier.
    ObjectCopier(SourceDocument &source, QPDF &target, DestinationNames &names,
                 SharedObjects &shared);

    /// Makes the copies of all pages as children of this page tree node.
    /// @return the pages in order; their content is there after run().
    [[nodiscard]] std::vector<QPDFObjectHandle> copyPages(const QPDFObjectHandle &parent);

    /// The copy of a value of the input. Its indirect parts are whole after run().
    [[nodiscard]] QPDFObjectHandle copy(QPDFObjectHandle value);

    /// The copy of the target of a link, bookmark or go-to action: a name, or an array whose
    /// page may be given as a number.
    [[nodiscard]] QPDFObjectHandle copyTarget(QPDFObjectHandle target);

    /// The copy of what a destination's name stands for.
    [[nodiscard]] QPDFObjectHandle copyNamedTarget(QPDFObjectHandle target);

    /// Copies everything that the copies so far refer to.
    void run();

private:
    struct Pending
    {
        QPDFObjectHandle from;
        QPDFObjectHandle to;
        std::shared_ptr<Buffer> data; ///< of a stream
    };
    using Dictionary = std::map<std::string, QPDFObjectHandle>;

    [[nodiscard]] QPDFObjectHandle copyReference(QPDFObjectHandle &reference, int depth);
    [[nodiscard]] QPDFObjectHandle copyIndirect(QPDFObjectHandle &reference, int depth);
    [[nodiscard]] QPDFObjectHandle copyStream(QPDFObjectHandle &stream, int depth);
    [[nodiscard]] QPDFObjectHandle copyFont(QPDFObjectHandle &font, int depth);
    [[nodiscard]] QPDFObjectHandle placeholder(const QPDFObjectHandle &from);
    [[nodiscard]] QPDFObjectHandle copyDirect(QPDFObjectHandle &value);
    [[nodiscard]] QPDFObjectHandle copyDictionary(QPDFObjectHandle &dictionary);
    [[nodiscard]] bool isTarget(const std::string &key, const Dictionary &entries);
    void fill(Pending &pending);
    void fillStream(Pending &pending);
    void fillPage(const SourcePage &page, const QPDFObjectHandle &parent,
                  const QPDFObjectHandle &to);

    [[nodiscard]] std::optional<std::string> describe(QPDFObjectHandle &object, int depth);
    [[nodiscard]] bool append(std::string &text, QPDFObjectHandle value, int depth);
    [[nodiscard]] bool appendContent(std::string &text, QPDFObjectHandle value, int depth);
    [[nodiscard]] bool appendDictionary(std::string &text, QPDFObjectHandle &dictionary, int depth);
    [[nodiscard]] bool appendReference(std::string &text, QPDFObjectHandle &value, int depth);

    SourceDocument &m_source;
    QPDF &m_target;
    DestinationNames &m_names;
    SharedObjects &m_shared;
    std::vector<QPDFObjectHandle> m_pages;
    std::unordered_map<std::uint64_t, QPDFObjectHandle> m_copies;
    std::unordered_set<std::uint64_t> m_describing;
    std::vector<Pending> m_pending;
    size_t m_descriptionBudget; ///< bytes
};

} // namespace Quorlin
