#include "component/backends/merge/OutlineTree.h"

#include <set>
#include <utility>

namespace Quorlin {

namespace {

/// The page's upper left corner as it is shown, with the reader's own zoom.
QPDFObjectHandle topOf(QPDFObjectHandle page)
{
    auto box = page.getKey(page.hasKey("/CropBox") ? "/CropBox" : "/MediaBox");
    auto rotate = page.getKey("/Rotate");
    const auto turns = rotate.isInteger() ? ((rotate.getIntValue() / 90) % 4 + 4) % 4 : 0;
    auto x = QPDFObjectHandle::newNull();
    auto y = QPDFObjectHandle::newNull();
    if (box.isRectangle()) {
        const auto area = box.getArrayAsRectangle();
        x = QPDFObjectHandle::newReal(turns < 2 ? area.llx : area.urx);
        y = QPDFObjectHandle::newReal(turns == 0 || turns == 3 ? area.ury : area.lly);
    }
    return QPDFObjectHandle::newArray(
        {page, QPDFObjectHandle::newName("/XYZ"), x, y, QPDFObjectHandle::newNull()});
}

bool isOpenItem(QPDFObjectHandle &item)
{
    auto count = item.getKey("/Count");
    return count.isInteger() && count.getIntValue() > 0;
}

QPDFObjectHandle copyItem(QPDFObjectHandle &item, ObjectCopier &copier)
{
    auto result = QPDFObjectHandle::newDictionary();
    auto title = item.getKey("/Title");
    result.replaceKey("/Title",
                      title.isString() ? title.shallowCopy() : QPDFObjectHandle::newString(""));
    for (const auto *key : {"/A", "/C", "/F"}) {
        const auto value = item.getKey(key);
        result.replaceKey(key, copier.copy(value));
    }
    result.replaceKey("/Dest", copier.copyTarget(item.getKey("/Dest")));
    return result;
}

} // namespace

void OutlineTree::beginEntry(const std::string &title, const QPDFObjectHandle &page)
{
    auto entry = QPDFObjectHandle::newDictionary();
    entry.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(title));
    entry.replaceKey("/Dest", topOf(page));
    m_entry = add({m_target.makeIndirectObject(entry), Root});
}

void OutlineTree::addOutlines(const QPDFObjectHandle &outlines, ObjectCopier &copier)
{
    auto root = outlines;
    if (!root.isDictionary())
        return;
    std::set<QPDFObjGen> seen;
    std::vector<std::pair<QPDFObjectHandle, int>> open{{root.getKey("/First"), m_entry}};
    while (!open.empty()) {
        auto [item, parent] = open.back();
        open.pop_back();
        if (!item.isDictionary() || (item.isIndirect() && !seen.insert(item.getObjGen()).second))
            continue;
        auto copied = m_target.makeIndirectObject(copyItem(item, copier));
        const int index = add({copied, parent, isOpenItem(item)});
        open.emplace_back(item.getKey("/Next"), parent);
        open.emplace_back(item.getKey("/First"), index);
    }
}

int OutlineTree::add(const Item &item)
{
    m_items.push_back(item);
    return static_cast<int>(m_items.size()) - 1;
}

QPDFObjectHandle OutlineTree::write()
{
    chain();
    count();
    auto root = m_target.makeIndirectObject(QPDFObjectHandle::newDictionary());
    root.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
    root.replaceKey("/First", m_items[static_cast<size_t>(m_root.first)].dictionary);
    root.replaceKey("/Last", m_items[static_cast<size_t>(m_root.last)].dictionary);
    root.replaceKey("/Count", QPDFObjectHandle::newInteger(m_root.visible));
    for (int i = 0; i < static_cast<int>(m_items.size()); ++i)
        link(i, root);
    return root;
}

void OutlineTree::chain()
{
    for (size_t i = 0; i < m_items.size(); ++i) {
        auto &item = m_items[i];
        auto &parent = item.parent == Root ? m_root : m_items[static_cast<size_t>(item.parent)];
        const int index = static_cast<int>(i);
        item.previous = parent.last;
        if (parent.last == None)
            parent.first = index;
        else
            m_items[static_cast<size_t>(parent.last)].next = index;
        parent.last = index;
    }
}

void OutlineTree::count()
{
    for (auto item = m_items.rbegin(); item != m_items.rend(); ++item) {
        auto &parent = item->parent == Root ? m_root : m_items[static_cast<size_t>(item->parent)];
        parent.visible += 1 + (item->isOpen ? item->visible : 0);
    }
}

void OutlineTree::link(int index, const QPDFObjectHandle &root)
{
    auto &item = m_items[static_cast<size_t>(index)];
    const std::pair<const char *, int> neighbours[] = {{"/First", item.first},
                                                       {"/Last", item.last},
                                                       {"/Next", item.next},
                                                       {"/Prev", item.previous},
                                                       {"/Parent", item.parent}};
    for (const auto &[key, neighbour] : neighbours) {
        if (neighbour != None)
            item.dictionary.replaceKey(key, handle(neighbour, root));
    }
    if (item.visible > 0) {
        const auto visible = item.isOpen ? item.visible : -item.visible;
        item.dictionary.replaceKey("/Count", QPDFObjectHandle::newInteger(visible));
    }
}

QPDFObjectHandle OutlineTree::handle(int index, const QPDFObjectHandle &root) const
{
    return index == Root ? root : m_items[static_cast<size_t>(index)].dictionary;
}

} // namespace Quorlin
