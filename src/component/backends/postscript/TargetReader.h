#pragma once

#include "component/backends/postscript/PdfInventory.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <map>
#include <string>

namespace Quorlin {

/// Reads destinations and actions of a document.
class TargetReader
{
public:
    /// @param pages number of each page object, from 1.
    explicit TargetReader(std::map<QPDFObjGen, int> pages);

    /// The target of an annotation or a bookmark: its /Dest or its /A.
    [[nodiscard]] PdfTarget targetOf(QPDFObjectHandle owner) const;

    /// A destination: a name, a string, an array or a dictionary with /D.
    [[nodiscard]] PdfTarget destination(QPDFObjectHandle object) const;

    /// An action dictionary.
    [[nodiscard]] PdfTarget action(QPDFObjectHandle object) const;

private:
    [[nodiscard]] PdfTarget explicitDestination(QPDFObjectHandle array) const;
    [[nodiscard]] PdfTarget remote(QPDFObjectHandle action) const;
    [[nodiscard]] int pageNumber(QPDFObjectHandle page) const;

    std::map<QPDFObjGen, int> m_pages;
};

} // namespace Quorlin
