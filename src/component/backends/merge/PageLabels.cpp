#include "component/backends/merge/PageLabels.h"

#include "component/backends/merge/KeyedTree.h"

#include <vector>

namespace Quorlin {

namespace {

QPDFObjectHandle decimalFrom(long long number)
{
    auto label = QPDFObjectHandle::newDictionary();
    label.replaceKey("/S", QPDFObjectHandle::newName("/D"));
    label.replaceKey("/St", QPDFObjectHandle::newInteger(number));
    return label;
}

} // namespace

void PageLabels::add(const QPDFObjectHandle &labels, long long first, long long pages,
                     ObjectCopier &copier)
{
    bool hasOwn = false;
    for (auto [index, label] : KeyedTree::read(labels, "/Nums")) {
        if (!index.isInteger() || !label.isDictionary())
            continue;
        const auto position = index.getIntValue();
        if (position < 0 || position >= pages)
            continue;
        m_ranges.insert_or_assign(first + position, copier.copy(label));
        hasOwn = true;
    }
    m_hasLabels = m_hasLabels || hasOwn;
    m_ranges.try_emplace(first, decimalFrom(hasOwn ? 1 : first + 1));
}

QPDFObjectHandle PageLabels::write(QPDF &target) const
{
    if (!m_hasLabels)
        return QPDFObjectHandle::newNull();
    std::vector<QPDFObjectHandle> numbers;
    for (const auto &[index, label] : m_ranges) {
        numbers.push_back(QPDFObjectHandle::newInteger(index));
        numbers.push_back(label);
    }
    auto root = QPDFObjectHandle::newDictionary();
    root.replaceKey("/Nums", QPDFObjectHandle::newArray(numbers));
    return target.makeIndirectObject(root);
}

} // namespace Quorlin
