#include "component/backends/merge/DestinationNames.h"

#include "component/backends/merge/KeyedTree.h"

namespace Quorlin {

DestinationNames::DestinationNames(SourceDocument &source, NamePool &pool) : m_pool(pool)
{
    auto names = source.catalogEntry("/Names");
    if (names.isDictionary()) {
        for (auto [key, target] : KeyedTree::read(names.getKey("/Dests"), "/Names")) {
            if (key.isString())
                add(m_tree, key.getStringValue(), target);
        }
    }
    auto dictionary = source.catalogEntry("/Dests");
    if (dictionary.isDictionary()) {
        for (const auto &[key, target] : dictionary.getDictAsMap())
            add(m_dictionary, key.substr(1), target);
    }
}

void DestinationNames::add(Names &names, const std::string &name, QPDFObjectHandle target)
{
    if (names.contains(name) || !(target.isArray() || target.isDictionary()))
        return;
    const auto newName = m_pool.reserve(name);
    names.emplace(name, newName);
    m_targets.emplace_back(newName, target);
}

std::string DestinationNames::renamed(QPDFObjectHandle reference)
{
    const bool isName = reference.isName();
    const auto name = isName ? reference.getName().substr(1) : reference.getStringValue();
    for (const auto *names : {isName ? &m_dictionary : &m_tree, isName ? &m_tree : &m_dictionary}) {
        if (const auto found = names->find(name); found != names->end())
            return found->second;
    }
    const auto [unknown, isNew] = m_unknown.try_emplace(name);
    if (isNew)
        unknown->second = m_pool.reserve(name);
    return unknown->second;
}

} // namespace Quorlin
