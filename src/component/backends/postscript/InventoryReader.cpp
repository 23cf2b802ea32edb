#include "component/backends/postscript/InventoryReader.h"

#include "component/backends/postscript/ObjectNumbers.h"
#include "component/backends/postscript/PdfName.h"

#include <algorithm>
#include <map>

namespace Quorlin {

namespace {

constexpr int MaxDepth = 60;
constexpr std::size_t MaxEntries = 200000;
/// Any number of links, bookmarks and names may share one long text of the document.
constexpr std::size_t MaxTextBytes = 64U * 1024 * 1024;
constexpr const char *InfoKeys[] = {"Title", "Author", "Subject", "Keywords", "Creator"};

std::map<QPDFObjGen, int> numbered(const std::vector<QPDFObjectHandle> &pages)
{
    std::map<QPDFObjGen, int> numbers;
    int number = 0;
    for (const auto &page : pages)
        numbers.emplace(QPDFObjectHandle(page).getObjGen(), ++number);
    return numbers;
}

QString text(QPDFObjectHandle value)
{
    return value.isString() ? QString::fromStdString(value.getUTF8Value()) : QString();
}

std::size_t textBytes(const PdfTarget &target)
{
    return target.text.size() + target.name.size();
}

std::vector<double> colorOf(QPDFObjectHandle owner)
{
    auto values = numbersOf(owner.getKey("/C"), 4);
    if (values.size() == 1)
        values.resize(3, values[0]);
    return values.size() == 3 ? values : std::vector<double>();
}

void readBorder(QPDFObjectHandle annotation, PdfLink &link)
{
    auto border = annotation.getKey("/Border");
    link.border = numbersOf(border, 3);
    if (border.isArray() && border.getArrayNItems() > 3)
        link.dash = numbersOf(border.getArrayItem(3), 8);
    auto style = annotation.getKey("/BS");
    if (!style.isDictionary())
        return;
    auto width = style.getKey("/W");
    link.border = {0, 0, width.isNumber() ? width.getNumericValue() : 1};
    link.dash = lettersOf(style.getKey("/S")) == "D" ? numbersOf(style.getKey("/D"), 8)
                                                     : std::vector<double>();
}

} // namespace

InventoryReader::InventoryReader(QPDF &pdf)
    : m_pdf(pdf), m_pages(pdf.getAllPages()), m_targets(numbered(m_pages))
{
}

bool InventoryReader::isNew(QPDFObjectHandle object)
{
    return object.isIndirect() ? m_seen.insert(object.getObjGen()).second : true;
}

/// What has no room is left out; all that is shorter is still kept.
bool InventoryReader::hasRoomFor(std::size_t bytes)
{
    if (bytes > MaxTextBytes - m_textBytes)
        return false;
    m_textBytes += bytes;
    return true;
}

PdfInventory InventoryReader::read()
{
    for (const auto &page : m_pages)
        readPage(page);
    readInfo();
    readDestinations();
    auto root = m_pdf.getRoot();
    auto outlines = root.getKey("/Outlines");
    if (outlines.isDictionary())
        m_inventory.bookmarks = readBookmarks(outlines.getKey("/First"), 0);
    readLabels(root.getKey("/PageLabels"), 0);
    readViewing();
    return std::move(m_inventory);
}

void InventoryReader::readPage(QPDFObjectHandle page)
{
    m_inventory.pages.push_back(PageGeometry::of(page));
    auto &links = m_inventory.links.emplace_back();
    auto annotations = page.getKey("/Annots");
    if (!annotations.isArray())
        return;
    for (auto annotation : annotations.aitems())
        if (annotation.isDictionary() && lettersOf(annotation.getKey("/Subtype")) == "Link")
            readLink(annotation, links);
}

void InventoryReader::readLink(QPDFObjectHandle annotation, std::vector<PdfLink> &links)
{
    auto rect = annotation.getKey("/Rect");
    PdfLink link;
    link.target = m_targets.targetOf(annotation);
    if (link.target.kind == PdfTarget::Kind::None || !rect.isRectangle() ||
        links.size() >= MaxEntries || !hasRoomFor(textBytes(link.target)))
        return;
    const auto r = rect.getArrayAsRectangle();
    link.rect = {r.llx, r.lly, r.urx, r.ury};
    readBorder(annotation, link);
    link.color = colorOf(annotation);
    link.highlight = lettersOf(annotation.getKey("/H"));
    links.push_back(std::move(link));
}

void InventoryReader::readInfo()
{
    auto info = m_pdf.getTrailer().getKey("/Info");
    if (!info.isDictionary())
        return;
    for (const char *key : InfoKeys) {
        auto value = text(info.getKey(std::string("/") + key));
        if (!value.isEmpty())
            m_inventory.info.emplace_back(key, value);
    }
}

void InventoryReader::addDestination(const std::string &name, QPDFObjectHandle value)
{
    const auto target = m_targets.destination(value);
    if (target.kind != PdfTarget::Kind::Page || m_inventory.destinations.size() >= MaxEntries ||
        m_names.contains(name) || !hasRoomFor(name.size()))
        return;
    m_names.insert(name);
    m_inventory.destinations.push_back({name, target.page, target.view});
}

void InventoryReader::readDestinations()
{
    auto names = m_pdf.getRoot().getKey("/Names");
    if (names.isDictionary())
        readNameTree(names.getKey("/Dests"), 0);
    auto dictionary = m_pdf.getRoot().getKey("/Dests");
    if (!dictionary.isDictionary())
        return;
    for (auto &entry : dictionary.ditems())
        addDestination(entry.first.substr(1), entry.second);
}

void InventoryReader::readNameTree(QPDFObjectHandle node, int depth)
{
    if (!node.isDictionary() || depth > MaxDepth || !isNew(node))
        return;
    auto kids = node.getKey("/Kids");
    if (kids.isArray())
        for (auto kid : kids.aitems())
            readNameTree(kid, depth + 1);
    auto names = node.getKey("/Names");
    if (!names.isArray())
        return;
    for (int i = 0; i + 1 < names.getArrayNItems(); i += 2)
        if (names.getArrayItem(i).isString())
            addDestination(names.getArrayItem(i).getStringValue(), names.getArrayItem(i + 1));
}

std::vector<PdfBookmark> InventoryReader::readBookmarks(QPDFObjectHandle first, int depth)
{
    std::vector<PdfBookmark> list;
    for (auto item = first;
         item.isDictionary() && item.isIndirect() && depth < MaxDepth && isNew(item);
         item = item.getKey("/Next")) {
        PdfBookmark bookmark;
        bookmark.title = text(item.getKey("/Title"));
        auto count = item.getKey("/Count");
        bookmark.open = count.isInteger() && count.getIntValue() > 0;
        auto style = item.getKey("/F");
        bookmark.style = style.isInteger() ? static_cast<int>(style.getIntValue() & 3) : 0;
        bookmark.color = colorOf(item);
        bookmark.target = m_targets.targetOf(item);
        if (!hasRoomFor(static_cast<std::size_t>(bookmark.title.size()) * sizeof(QChar) +
                        textBytes(bookmark.target)))
            continue;
        bookmark.children = readBookmarks(item.getKey("/First"), depth + 1);
        list.push_back(std::move(bookmark));
    }
    return list;
}

void InventoryReader::readLabels(QPDFObjectHandle node, int depth)
{
    if (!node.isDictionary() || depth > MaxDepth || !isNew(node))
        return;
    auto kids = node.getKey("/Kids");
    if (kids.isArray())
        for (auto kid : kids.aitems())
            readLabels(kid, depth + 1);
    auto entries = node.getKey("/Nums");
    if (!entries.isArray())
        return;
    for (int i = 0; i + 1 < entries.getArrayNItems(); i += 2) {
        auto page = entries.getArrayItem(i);
        auto label = entries.getArrayItem(i + 1);
        if (!page.isInteger() || !label.isDictionary() || m_inventory.labels.size() >= MaxEntries)
            continue;
        auto start = label.getKey("/St");
        m_inventory.labels.push_back(
            {page.getIntValueAsInt(), lettersOf(label.getKey("/S")), text(label.getKey("/P")),
             start.isInteger() ? std::max(1, start.getIntValueAsInt()) : 1});
    }
}

void InventoryReader::readViewing()
{
    auto root = m_pdf.getRoot();
    m_inventory.pageMode = lettersOf(root.getKey("/PageMode"));
    m_inventory.pageLayout = lettersOf(root.getKey("/PageLayout"));
    m_inventory.language = text(root.getKey("/Lang"));
    auto preferences = root.getKey("/ViewerPreferences");
    if (preferences.isDictionary()) {
        auto title = preferences.getKey("/DisplayDocTitle");
        m_inventory.showsTitle = title.isBool() && title.getBoolValue();
    }
    auto open = root.getKey("/OpenAction");
    m_inventory.openAction =
        open.isDictionary() ? m_targets.action(open) : m_targets.destination(open);
}

} // namespace Quorlin
