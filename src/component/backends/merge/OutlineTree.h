#pragma once

#include "component/backends/merge/ObjectCopier.h"

#include <qpdf/QPDF.hh>

#include <string>
#include <vector>

namespace Quorlin {

/// The merged document's bookmarks, collected document by document.
class OutlineTree
{
public:
    /// @param target must outlive this object.
    explicit OutlineTree(QPDF &target) : m_target(target) {}

    /// Starts a document that has a top-level entry of its own; the following addOutlines()
    /// goes beneath it. @param title UTF-8. @param page a page of the merged document.
    void beginEntry(const std::string &title, const QPDFObjectHandle &page);

    /// Adds the bookmarks that the input's catalog names: levels, state, targets, colours.
    void addOutlines(const QPDFObjectHandle &outlines, ObjectCopier &copier);

    [[nodiscard]] bool isEmpty() const { return m_items.empty(); }

    /// Makes the tree. @return the object for the catalog's /Outlines.
    [[nodiscard]] QPDFObjectHandle write();

private:
    struct Item
    {
        QPDFObjectHandle dictionary;
        int parent = Root;
        bool isOpen = false;
        int first = None;
        int last = None;
        int next = None;
        int previous = None;
        long long visible = 0; ///< descendants shown when it is open
    };
    static constexpr int Root = -1;
    static constexpr int None = -2;

    int add(const Item &item);
    void chain();
    void count();
    void link(int index, const QPDFObjectHandle &root);
    [[nodiscard]] QPDFObjectHandle handle(int index, const QPDFObjectHandle &root) const;

    QPDF &m_target;
    int m_entry = Root; ///< what the current document's bookmarks stand beneath
    std::vector<Item> m_items;
    Item m_root;
};

} // namespace Quorlin
