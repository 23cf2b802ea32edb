#pragma once

#include "component/backends/merge/NamePool.h"
#include "component/backends/merge/SourceDocument.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Quorlin {

/// The named destinations of one input and what they are called in the merged document.
///
/// The old dictionary /Dests and the name tree are two name spaces. Both end in the merged
/// document's name tree, under different names where they disagree with each other.
class DestinationNames
{
public:
    DestinationNames(SourceDocument &source, NamePool &pool);

    /// The new name for a reference by name or string. A name that the input does not define
    /// gets one that nobody defines, so that it cannot meet another document's.
    [[nodiscard]] std::string renamed(QPDFObjectHandle reference);

    /// New names with the targets as the input gives them.
    [[nodiscard]] const std::vector<std::pair<std::string, QPDFObjectHandle>> &targets() const
    {
        return m_targets;
    }

private:
    using Names = std::map<std::string, std::string>;

    void add(Names &names, const std::string &name, QPDFObjectHandle target);

    NamePool &m_pool;
    Names m_dictionary;
    Names m_tree;
    Names m_unknown;
    std::vector<std::pair<std::string, QPDFObjectHandle>> m_targets;
};

} // namespace Quorlin
