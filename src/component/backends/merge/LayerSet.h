#pragma once

#include "component/backends/merge/ObjectCopier.h"

#include <qpdf/QPDF.hh>

#include <map>
#include <string>
#include <vector>

namespace Quorlin {

/// The merged document's optional content (layers), collected document by document.
class LayerSet
{
public:
    /// Adds an input's /OCProperties with the state that its default configuration gives.
    void add(const QPDFObjectHandle &properties, ObjectCopier &copier);

    /// The object for the catalog's /OCProperties; null when no input had layers.
    [[nodiscard]] QPDFObjectHandle write(QPDF &target) const;

private:
    void addHidden(QPDFObjectHandle &configuration, const std::vector<QPDFObjectHandle> &layers,
                   ObjectCopier &copier);

    std::vector<QPDFObjectHandle> m_layers;
    std::vector<QPDFObjectHandle> m_hidden;
    std::map<std::string, std::vector<QPDFObjectHandle>> m_lists; ///< of the configuration
};

} // namespace Quorlin
