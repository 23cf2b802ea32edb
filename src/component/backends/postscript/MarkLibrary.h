#pragma once

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <map>
#include <set>
#include <string>

namespace Quorlin {

/// The names of the XObjects that a content stream needs beside its own.
using MarkNames = std::set<std::string>;

/// Pieces of PostScript as XObjects that the printing tool copies into its output as they are.
///
/// One XObject stands for each distinct piece. The library belongs to one document and must not
/// outlive it.
class MarkLibrary
{
public:
    explicit MarkLibrary(QPDF &pdf);

    /// The name, without a slash, of the XObject that holds this PostScript.
    [[nodiscard]] std::string mark(const std::string &postScript);

    /// The name, without a slash, under which an existing XObject can be drawn.
    [[nodiscard]] std::string alias(QPDFObjectHandle xObject);

    /// A number never used before in this document, from 1.
    [[nodiscard]] int nextSerial() { return ++m_serial; }

    /// Enters these names into a dictionary of XObjects.
    void addTo(QPDFObjectHandle xObjects, const MarkNames &names) const;

    /// Makes a mark do nothing.
    void empty(const std::string &name);

private:
    std::string add(QPDFObjectHandle object);

    QPDF &m_pdf;
    std::map<std::string, std::string> m_marks;
    std::map<QPDFObjGen, std::string> m_aliases;
    std::map<std::string, QPDFObjectHandle> m_objects;
    int m_serial = 0;
};

} // namespace Quorlin
