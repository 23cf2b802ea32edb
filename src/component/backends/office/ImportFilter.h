#pragma once

#include <QString>

#include <rtl/ustring.hxx>

namespace Quorlin::ImportFilter {

/// The name of the filter that the engine must read a document with; empty when it chooses well
/// by itself.
///
/// It makes its own kind of document from a web page, and leaves out the first paragraph when
/// it exports one. As an ordinary text document the page is whole.
[[nodiscard]] rtl::OUString nameFor(const QString &path);

} // namespace Quorlin::ImportFilter
