#pragma once

#include "component/backends/merge/ObjectCopier.h"

#include <qpdf/QPDF.hh>

#include <map>

namespace Quorlin {

/// The merged document's page labels, collected document by document.
class PageLabels
{
public:
    /// Adds an input's /PageLabels. @param first, pages the input's pages in the merged
    /// document, counted from 0.
    void add(const QPDFObjectHandle &labels, long long first, long long pages,
             ObjectCopier &copier);

    /// The object for the catalog's /PageLabels; null when no input had labels.
    [[nodiscard]] QPDFObjectHandle write(QPDF &target) const;

private:
    std::map<long long, QPDFObjectHandle> m_ranges;
    bool m_hasLabels = false;
};

} // namespace Quorlin
