#pragma once

#include "component/backends/postscript/PdfInventory.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace Quorlin {

/// Beginnings of link addresses and what stands in their place.
using AddressRebase = std::vector<std::pair<std::string, std::string>>;

/// Writes an inventory as pdfmarks, for pages that stand upright with their origin at 0,0.
///
/// Every text of the document is written as a hexadecimal string, so none can act as a program.
class Pdfmarks
{
public:
    /// @param inventory must outlive the writer.
    Pdfmarks(const PdfInventory &inventory, AddressRebase rebase);

    /// Properties, viewing, labels, destinations and bookmarks; to stand before the first page.
    [[nodiscard]] std::string documentMarks() const;

    /// The links of a page, to stand in its set-up.
    /// @param page from 1; a page that does not exist has no links.
    [[nodiscard]] std::string pageMarks(int page) const;

private:
    [[nodiscard]] std::string info() const;
    [[nodiscard]] std::string viewing() const;
    [[nodiscard]] std::string labels() const;
    [[nodiscard]] std::string destinations() const;
    void writeBookmarks(const std::vector<PdfBookmark> &list, std::string &out) const;
    [[nodiscard]] std::string link(const PdfLink &link, const PageGeometry &page) const;
    [[nodiscard]] std::string target(const PdfTarget &target) const;
    [[nodiscard]] std::string place(int page, const PdfView &view) const;
    [[nodiscard]] std::string view(const PdfView &view, const PageGeometry &page) const;
    [[nodiscard]] std::string address(const std::string &uri) const;

    const PdfInventory &m_inventory;
    AddressRebase m_rebase;
    std::map<std::string, std::string> m_names; ///< written name of each destination
};

} // namespace Quorlin
