#include "component/backends/postscript/Pdfmarks.h"

#include "component/backends/postscript/ObjectNumbers.h"
#include "component/backends/postscript/PostScriptText.h"
#include "component/backends/postscript/SheetView.h"

#include <algorithm>

namespace Quorlin {

namespace {

using PostScriptText::hexString;
using PostScriptText::number;
using PostScriptText::textString;

std::string border(const PdfLink &link)
{
    if (link.border.size() != 3)
        return "[0 0 1]";
    auto text = bracketed(link.border);
    if (!link.dash.empty())
        text.insert(text.size() - 1, " " + bracketed(link.dash));
    return text;
}

} // namespace

Pdfmarks::Pdfmarks(const PdfInventory &inventory, AddressRebase rebase)
    : m_inventory(inventory), m_rebase(std::move(rebase))
{
    std::stable_sort(m_rebase.begin(), m_rebase.end(),
                     [](const auto &a, const auto &b) { return a.first.size() > b.first.size(); });
    for (const auto &destination : inventory.destinations) {
        const auto alias = "quorlin.place." + std::to_string(m_names.size());
        const bool plain = PostScriptText::isPlainName(destination.name);
        m_names.emplace(destination.name, plain ? destination.name : alias);
    }
}

std::string Pdfmarks::documentMarks() const
{
    auto text = info() + viewing() + labels() + destinations();
    writeBookmarks(m_inventory.bookmarks, text);
    return text;
}

std::string Pdfmarks::pageMarks(int page) const
{
    std::string text;
    const auto index = static_cast<std::size_t>(page - 1);
    if (page < 1 || index >= m_inventory.links.size())
        return text;
    for (const auto &one : m_inventory.links[index])
        text += link(one, m_inventory.pages[index]);
    return text;
}

std::string Pdfmarks::info() const
{
    std::string text;
    for (const auto &[key, value] : m_inventory.info)
        text += " /" + key + " " + textString(value) + "\n";
    return text.empty() ? text : "[" + text + "/DOCINFO pdfmark\n";
}

std::string Pdfmarks::viewing() const
{
    std::string text;
    if (PostScriptText::isPlainName(m_inventory.pageMode))
        text += " /PageMode /" + m_inventory.pageMode;
    const auto &open = m_inventory.openAction;
    if (open.kind == PdfTarget::Kind::Page)
        text += place(open.page, open.view);
    if (!text.empty())
        text = "[" + text + " /DOCVIEW pdfmark\n";
    std::string catalog;
    if (PostScriptText::isPlainName(m_inventory.pageLayout))
        catalog += " /PageLayout /" + m_inventory.pageLayout;
    if (!m_inventory.language.isEmpty())
        catalog += " /Lang " + textString(m_inventory.language);
    if (m_inventory.showsTitle)
        catalog += " /ViewerPreferences << /DisplayDocTitle true >>";
    return catalog.empty() ? text : text + "[{Catalog} <<" + catalog + " >> /PUT pdfmark\n";
}

std::string Pdfmarks::labels() const
{
    std::string text;
    for (const auto &label : m_inventory.labels) {
        text += std::to_string(label.firstPage) + " <<";
        if (PostScriptText::isPlainName(label.style))
            text += " /S /" + label.style;
        if (!label.prefix.isEmpty())
            text += " /P " + textString(label.prefix);
        text += " /St " + std::to_string(label.start) + " >>\n";
    }
    if (text.empty())
        return text;
    return "[{Catalog} << /PageLabels << /Nums [\n" + text + "] >> >> /PUT pdfmark\n";
}

std::string Pdfmarks::destinations() const
{
    std::string text;
    for (const auto &destination : m_inventory.destinations)
        text += "[/Dest /" + m_names.at(destination.name) +
                place(destination.page, destination.view) + " /DEST pdfmark\n";
    return text;
}

void Pdfmarks::writeBookmarks(const std::vector<PdfBookmark> &list, std::string &out) const
{
    for (const auto &bookmark : list) {
        out += "[/Title " + textString(bookmark.title) + target(bookmark.target);
        if (!bookmark.children.empty())
            out += std::string(" /Count ") + (bookmark.open ? "" : "-") +
                   std::to_string(bookmark.children.size());
        if (bookmark.style != 0)
            out += " /F " + std::to_string(bookmark.style);
        if (!bookmark.color.empty())
            out += " /C " + bracketed(bookmark.color);
        out += " /OUT pdfmark\n";
        writeBookmarks(bookmark.children, out);
    }
}

std::string Pdfmarks::link(const PdfLink &link, const PageGeometry &page) const
{
    const auto where = target(link.target);
    if (where.empty())
        return {};
    const auto rect = mapBox(link.rect, page.toSheet());
    auto text = "[/Subtype /Link /Rect " + bracketed({rect.begin(), rect.end()}) + " /Border " +
                border(link);
    if (!link.color.empty())
        text += " /Color " + bracketed(link.color);
    if (PostScriptText::isPlainName(link.highlight))
        text += " /H /" + link.highlight;
    return text + where + " /ANN pdfmark\n";
}

std::string Pdfmarks::view(const PdfView &view, const PageGeometry &page) const
{
    const auto seen = onSheet(view, page);
    auto text = "[/" + seen.type;
    for (const auto &value : seen.values)
        text += value ? " " + number(*value) : " null";
    return text + "]";
}

std::string Pdfmarks::place(int page, const PdfView &where) const
{
    const auto index = static_cast<std::size_t>(page - 1);
    const auto geometry =
        index < m_inventory.pages.size() ? m_inventory.pages[index] : PageGeometry();
    return " /Page " + std::to_string(page) + " /View " + view(where, geometry);
}

std::string Pdfmarks::address(const std::string &uri) const
{
    for (const auto &[from, to] : m_rebase)
        if (!from.empty() && uri.compare(0, from.size(), from) == 0)
            return to + uri.substr(from.size());
    return uri;
}

std::string Pdfmarks::target(const PdfTarget &target) const
{
    switch (target.kind) {
    case PdfTarget::Kind::Uri:
        return " /Action << /Subtype /URI /URI " + hexString(address(target.text)) + " >>";
    case PdfTarget::Kind::Page:
        return place(target.page, target.view);
    case PdfTarget::Kind::Name: {
        const auto name = m_names.find(target.text);
        return name == m_names.end() ? std::string() : " /Dest /" + name->second;
    }
    case PdfTarget::Kind::RemoteFile: {
        auto text = " /Action << /Subtype /GoToR /F " + hexString(target.text) + " /D ";
        if (!target.name.empty())
            return text + hexString(target.name) + " >>";
        const auto page = std::max(0, target.page - 1);
        return text + "[" + std::to_string(page) +
               view(target.view, PageGeometry({0, 0, 1, 1}, 0)).substr(1) + " >>";
    }
    case PdfTarget::Kind::Launch:
        return " /Action << /Subtype /Launch /F " + hexString(target.text) + " >>";
    case PdfTarget::Kind::Command:
        return PostScriptText::isPlainName(target.text)
                   ? " /Action << /Subtype /Named /N /" + target.text + " >>"
                   : std::string();
    case PdfTarget::Kind::None:
        break;
    }
    return {};
}

} // namespace Quorlin
