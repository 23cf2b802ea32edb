#include "component/backends/merge/KeyedTree.h"

#include <set>

namespace Quorlin::KeyedTree {

namespace {

constexpr size_t LeafSize = 128;

void appendLeaf(Entries &entries, const std::vector<QPDFObjectHandle> &leaf)
{
    for (size_t i = 0; i + 1 < leaf.size(); i += 2)
        entries.emplace_back(leaf[i], leaf[i + 1]);
}

class NameTreeWriter
{
public:
    explicit NameTreeWriter(QPDF &pdf) : m_pdf(pdf) {}

    void add(const std::string &name, const QPDFObjectHandle &value)
    {
        m_leaf.push_back(QPDFObjectHandle::newString(name));
        m_leaf.push_back(value);
        if (m_leaf.size() == 2 * LeafSize)
            finishLeaf();
    }

    QPDFObjectHandle finish()
    {
        finishLeaf();
        auto root = QPDFObjectHandle::newDictionary();
        root.replaceKey("/Kids", QPDFObjectHandle::newArray(m_kids));
        return m_pdf.makeIndirectObject(root);
    }

private:
    void finishLeaf()
    {
        if (m_leaf.empty())
            return;
        auto node = QPDFObjectHandle::newDictionary();
        node.replaceKey("/Limits",
                        QPDFObjectHandle::newArray(
                            {m_leaf[0].shallowCopy(), m_leaf[m_leaf.size() - 2].shallowCopy()}));
        node.replaceKey("/Names", QPDFObjectHandle::newArray(m_leaf));
        m_kids.push_back(m_pdf.makeIndirectObject(node));
        m_leaf.clear();
    }

    QPDF &m_pdf;
    std::vector<QPDFObjectHandle> m_leaf;
    std::vector<QPDFObjectHandle> m_kids;
};

} // namespace

Entries read(const QPDFObjectHandle &root, const std::string &leafKey)
{
    Entries entries;
    std::set<QPDFObjGen> seen;
    std::vector<QPDFObjectHandle> open{root};
    while (!open.empty()) {
        auto node = open.back();
        open.pop_back();
        if (!node.isDictionary() || (node.isIndirect() && !seen.insert(node.getObjGen()).second))
            continue;
        auto leaf = node.getKey(leafKey);
        if (leaf.isArray())
            appendLeaf(entries, leaf.getArrayAsVector());
        auto kids = node.getKey("/Kids");
        if (!kids.isArray())
            continue;
        const auto list = kids.getArrayAsVector();
        open.insert(open.end(), list.rbegin(), list.rend());
    }
    return entries;
}

QPDFObjectHandle writeNames(QPDF &pdf, const std::map<std::string, QPDFObjectHandle> &entries)
{
    NameTreeWriter writer(pdf);
    for (const auto &[name, value] : entries)
        writer.add(name, value);
    return writer.finish();
}

} // namespace Quorlin::KeyedTree
