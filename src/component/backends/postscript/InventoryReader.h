#pragma once

#include "component/backends/postscript/PdfInventory.h"
#include "component/backends/postscript/TargetReader.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <set>
#include <vector>

namespace Quorlin {

/// Reads the inventory of an open PDF. Loops and faulty entries are left out.
class InventoryReader
{
public:
    explicit InventoryReader(QPDF &pdf);

    [[nodiscard]] PdfInventory read();

private:
    void readPage(QPDFObjectHandle page);
    void readLink(QPDFObjectHandle annotation, std::vector<PdfLink> &links);
    void readInfo();
    void readDestinations();
    void readNameTree(QPDFObjectHandle node, int depth);
    void addDestination(const std::string &name, QPDFObjectHandle value);
    void readLabels(QPDFObjectHandle node, int depth);
    void readViewing();
    [[nodiscard]] std::vector<PdfBookmark> readBookmarks(QPDFObjectHandle first, int depth);
    [[nodiscard]] bool isNew(QPDFObjectHandle object);
    [[nodiscard]] bool hasRoomFor(std::size_t bytes);

    QPDF &m_pdf;
    std::vector<QPDFObjectHandle> m_pages;
    TargetReader m_targets;
    std::set<QPDFObjGen> m_seen;
    std::set<std::string> m_names;
    std::size_t m_textBytes = 0; ///< of all titles, names and addresses so far
    PdfInventory m_inventory;
};

} // namespace Quorlin
