#pragma once

#include "component/backends/merge/NamePool.h"
#include "component/backends/merge/ObjectCopier.h"

#include <qpdf/QPDF.hh>

#include <map>
#include <string>
#include <vector>

namespace Quorlin {

/// The merged document's interactive form, collected document by document.
///
/// Top-level fields whose names meet get new names, and so do fonts of the default resources.
/// Signatures cannot hold for the merged document: their fields stay, without a value.
class FormFields
{
public:
    /// @param target must outlive this object.
    explicit FormFields(QPDF &target) : m_target(target) {}

    /// Adds an input's /AcroForm. Runs the copier.
    void add(const QPDFObjectHandle &form, ObjectCopier &copier);

    /// The object for the catalog's /AcroForm; null when no input had fields.
    [[nodiscard]] QPDFObjectHandle write() const;

private:
    using Renames = std::map<std::string, std::string>;

    [[nodiscard]] std::vector<QPDFObjectHandle> copyFields(QPDFObjectHandle &form,
                                                           ObjectCopier &copier);
    [[nodiscard]] Renames addResources(QPDFObjectHandle resources);
    void addTopField(QPDFObjectHandle &field, QPDFObjectHandle &form);
    static void adaptFields(const std::vector<QPDFObjectHandle> &fields, const Renames &fonts);

    QPDF &m_target;
    NamePool m_names;
    std::vector<QPDFObjectHandle> m_fields;
    std::vector<QPDFObjectHandle> m_calculated;
    std::map<std::string, std::map<std::string, QPDFObjectHandle>> m_resources;
    bool m_needsAppearances = false;
};

} // namespace Quorlin
