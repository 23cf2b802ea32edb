#include "component/backends/merge/LayerSet.h"

#include "component/backends/merge/ArrayItems.h"

#include <set>

namespace Quorlin {

namespace {

std::set<QPDFObjGen> idsOf(const QPDFObjectHandle &array)
{
    std::set<QPDFObjGen> ids;
    for (const auto &item : itemsOf(array))
        ids.insert(item.getObjGen());
    return ids;
}

} // namespace

void LayerSet::add(const QPDFObjectHandle &properties, ObjectCopier &copier)
{
    auto source = properties;
    if (!source.isDictionary())
        return;
    const auto layers = itemsOf(source.getKey("/OCGs"));
    for (const auto &layer : layers)
        m_layers.push_back(copier.copy(layer));
    auto configuration = source.getKey("/D");
    if (!configuration.isDictionary())
        return;
    for (const auto *key : {"/Order", "/AS", "/RBGroups", "/Locked"}) {
        for (const auto &item : itemsOf(configuration.getKey(key)))
            m_lists[key].push_back(copier.copy(item));
    }
    addHidden(configuration, layers, copier);
}

void LayerSet::addHidden(QPDFObjectHandle &configuration,
                         const std::vector<QPDFObjectHandle> &layers, ObjectCopier &copier)
{
    const bool isOffAtFirst = configuration.getKey("/BaseState").isNameAndEquals("/OFF");
    const auto on = idsOf(configuration.getKey("/ON"));
    const auto off = idsOf(configuration.getKey("/OFF"));
    for (const auto &layer : layers) {
        const auto id = layer.getObjGen();
        if (off.contains(id) || (isOffAtFirst && !on.contains(id)))
            m_hidden.push_back(copier.copy(layer));
    }
}

QPDFObjectHandle LayerSet::write(QPDF &target) const
{
    if (m_layers.empty())
        return QPDFObjectHandle::newNull();
    auto configuration = QPDFObjectHandle::newDictionary();
    for (const auto &[key, items] : m_lists)
        configuration.replaceKey(key, QPDFObjectHandle::newArray(items));
    if (!m_hidden.empty())
        configuration.replaceKey("/OFF", QPDFObjectHandle::newArray(m_hidden));
    auto properties = QPDFObjectHandle::newDictionary();
    properties.replaceKey("/OCGs", QPDFObjectHandle::newArray(m_layers));
    properties.replaceKey("/D", configuration);
    return target.makeIndirectObject(properties);
}

} // namespace Quorlin
