#pragma once

#include <qpdf/QPDF.hh>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Quorlin::KeyedTree {

using Entries = std::vector<std::pair<QPDFObjectHandle, QPDFObjectHandle>>;

/// The keys and values of a name tree (leafKey "/Names") or number tree ("/Nums"), in the order
/// of the file. Loops and parts of a wrong type are left out.
[[nodiscard]] Entries read(const QPDFObjectHandle &root, const std::string &leafKey);

/// A name tree of these entries as a new object of the document, with nodes of a moderate size.
[[nodiscard]] QPDFObjectHandle writeNames(QPDF &pdf,
                                          const std::map<std::string, QPDFObjectHandle> &entries);

} // namespace Quorlin::KeyedTree
