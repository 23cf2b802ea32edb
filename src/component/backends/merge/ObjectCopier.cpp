#include "component/backends/merge/ObjectCopier.h"

#include <algorithm>
#include <utility>

namespace Quorlin {

namespace {

// Bounds for looking at what an object refers to; larger ones are copied without looking whether
// another document has them too.
constexpr int MaxDescribedDepth = 12;
constexpr size_t MaxDescription = 65536;
constexpr size_t LeastDescriptionBudget = 16777216;

std::uint64_t idOf(const QPDFObjectHandle &object)
{
    const auto id = object.getObjGen();
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(id.getObj())) << 32) |
           static_cast<std::uint32_t>(id.getGen());
}

std::string typeOf(QPDFObjectHandle &dictionary)
{
    auto type = dictionary.getKey("/Type");
    return type.isName() ? type.getName() : std::string();
}

/// Objects that belong to one document as a whole and have their own way into the merged one.
bool staysBehind(const std::string &type)
{
    return type == "/Page" || type == "/Pages" || type == "/Catalog" || type == "/StructElem" ||
           type == "/StructTreeRoot" || type == "/Outlines";
}

bool isShareable(QPDFObjectHandle &dictionary)
{
    const auto type = typeOf(dictionary);
    return !staysBehind(type) && type != "/OCG" && type != "/OCMD" &&
           !dictionary.getKey("/S").isNameAndEquals("/GoTo");
}

/// An object to be filled later. It is not null: a dictionary drops keys whose value is null.
QPDFObjectHandle newPlaceholder(QPDF &target)
{
    return target.makeIndirectObject(QPDFObjectHandle::newBool(false));
}

bool isStructureKey(const std::string &key)
{
    return key == "/StructParent" || key == "/StructParents";
}

} // namespace

ObjectCopier::ObjectCopier(SourceDocument &source, QPDF &target, DestinationNames &names,
                           SharedObjects &shared)
    : m_source(source), m_target(target), m_names(names), m_shared(shared),
      m_descriptionBudget(LeastDescriptionBudget)
{
    for (const auto &node : source.pageNodes())
        m_copies.emplace(idOf(node), QPDFObjectHandle::newNull());
}

std::vector<QPDFObjectHandle> ObjectCopier::copyPages(const QPDFObjectHandle &parent)
{
    for (const auto &page : m_source.pages()) {
        m_pages.push_back(newPlaceholder(m_target));
        if (page.dictionary.isIndirect())
            m_copies.try_emplace(idOf(page.dictionary), m_pages.back());
    }
    for (size_t i = 0; i < m_pages.size(); ++i)
        fillPage(m_source.pages()[i], parent, m_pages[i]);
    return m_pages;
}

void ObjectCopier::fillPage(const SourcePage &page, const QPDFObjectHandle &parent,
                            const QPDFObjectHandle &to)
{
    auto from = page.dictionary;
    auto made = copyDictionary(from);
    for (size_t i = 0; i < page.inherited.size(); ++i) {
        const std::string key = SourcePage::InheritedKeys[i];
        if (page.inherited[i].isInitialized() && !made.hasKey(key))
            made.replaceKey(key, copy(page.inherited[i]));
    }
    if (!made.hasKey("/MediaBox"))
        made.replaceKey("/MediaBox", QPDFObjectHandle::parse("[0 0 612 792]"));
    if (!made.hasKey("/Resources"))
        made.replaceKey("/Resources", QPDFObjectHandle::newDictionary());
    made.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
    made.replaceKey("/Parent", parent);
    m_target.replaceObject(to.getObjGen(), made);
}

QPDFObjectHandle ObjectCopier::copy(QPDFObjectHandle value)
{
    return value.isIndirect() ? copyReference(value, 0) : copyDirect(value);
}

QPDFObjectHandle ObjectCopier::copyReference(QPDFObjectHandle &reference, int depth)
{
    const auto known = m_copies.find(idOf(reference));
    if (known != m_copies.end())
        return known->second;
    auto made = copyIndirect(reference, depth);
    if (made.isIndirect() || made.isNull())
        m_copies.emplace(idOf(reference), made);
    return made;
}

QPDFObjectHandle ObjectCopier::copyIndirect(QPDFObjectHandle &reference, int depth)
{
    if (reference.isStream())
        return copyStream(reference, depth);
    if (reference.isArray())
        return placeholder(reference);
    if (!reference.isDictionary())
        return reference.isScalar() ? reference.shallowCopy() : QPDFObjectHandle::newNull();
    const auto type = typeOf(reference);
    if (staysBehind(type))
        return QPDFObjectHandle::newNull();
    return type == "/Font" ? copyFont(reference, depth) : placeholder(reference);
}

QPDFObjectHandle ObjectCopier::placeholder(const QPDFObjectHandle &from)
{
    auto to = newPlaceholder(m_target);
    m_pending.push_back({from, to, nullptr});
    return to;
}

QPDFObjectHandle ObjectCopier::copyStream(QPDFObjectHandle &stream, int depth)
{
    const auto data = m_source.rawStream(stream);
    const auto description = describe(stream, depth);
    if (description) {
        const auto shared = m_shared.find(*description, data);
        if (shared.isInitialized())
            return shared;
    }
    auto to = QPDFObjectHandle::newStream(&m_target);
    m_pending.push_back({stream, to, data});
    if (description)
        m_shared.keep(*description, data, to);
    return to;
}

QPDFObjectHandle ObjectCopier::copyFont(QPDFObjectHandle &font, int depth)
{
    const auto description = describe(font, depth);
    if (!description)
        return placeholder(font);
    auto shared = m_shared.find(*description, nullptr);
    if (!shared.isInitialized()) {
        shared = placeholder(font);
        m_shared.keep(*description, nullptr, shared);
    }
    return shared;
}

QPDFObjectHandle ObjectCopier::copyDirect(QPDFObjectHandle &value)
{
    switch (value.getTypeCode()) {
    case ::ot_dictionary:
        return staysBehind(typeOf(value)) ? QPDFObjectHandle::newNull() : copyDictionary(value);
    case ::ot_array: {
        auto items = value.getArrayAsVector();
        for (auto &item : items)
            item = copy(item);
        return QPDFObjectHandle::newArray(items);
    }
    default:
        return value.isScalar() ? value.shallowCopy() : QPDFObjectHandle::newNull();
    }
}

QPDFObjectHandle ObjectCopier::copyDictionary(QPDFObjectHandle &dictionary)
{
    auto result = QPDFObjectHandle::newDictionary();
    const auto entries = dictionary.getDictAsMap();
    for (const auto &[key, value] : entries) {
        if (!isStructureKey(key))
            result.replaceKey(key, isTarget(key, entries) ? copyTarget(value) : copy(value));
    }
    return result;
}

bool ObjectCopier::isTarget(const std::string &key, const Dictionary &entries)
{
    const auto has = [&entries](const char *entry, const char *name) {
        const auto found = entries.find(entry);
        auto value = found == entries.end() ? QPDFObjectHandle() : found->second;
        return value.isInitialized() && value.isNameAndEquals(name);
    };
    return (key == "/D" && has("/S", "/GoTo")) || (key == "/Dest" && has("/Subtype", "/Link"));
}

QPDFObjectHandle ObjectCopier::copyTarget(QPDFObjectHandle target)
{
    if (target.isName() || target.isString())
        return QPDFObjectHandle::newString(m_names.renamed(target));
    if (!target.isArray() || target.getArrayNItems() == 0)
        return target.isArray() ? copy(target) : QPDFObjectHandle::newNull();
    auto page = target.getArrayItem(0);
    if (!page.isInteger())
        return copy(target);
    auto items = target.getArrayAsVector();
    for (auto &item : items)
        item = copy(item);
    const auto number = page.getIntValue();
    const bool exists = number >= 0 && number < static_cast<long long>(m_pages.size());
    items[0] = exists ? m_pages[static_cast<size_t>(number)] : QPDFObjectHandle::newNull();
    return QPDFObjectHandle::newArray(items);
}

QPDFObjectHandle ObjectCopier::copyNamedTarget(QPDFObjectHandle target)
{
    if (!target.isDictionary())
        return copyTarget(target);
    auto result = copyDictionary(target);
    result.replaceKey("/D", copyTarget(target.getKey("/D")));
    return result;
}

std::optional<std::string> ObjectCopier::describe(QPDFObjectHandle &object, int depth)
{
    const auto id = idOf(object);
    if (m_descriptionBudget == 0 || !m_describing.insert(id).second)
        return {};
    std::string text;
    const bool isWhole = object.isStream() ? appendContent(text, object.getDict(), depth + 1)
                                           : appendContent(text, object, depth + 1);
    m_describing.erase(id);
    m_descriptionBudget -= std::min(m_descriptionBudget, text.size());
    return isWhole ? std::optional(std::move(text)) : std::nullopt;
}

bool ObjectCopier::append(std::string &text, QPDFObjectHandle value, int depth)
{
    return value.isIndirect() ? appendReference(text, value, depth)
                              : appendContent(text, value, depth);
}

bool ObjectCopier::appendContent(std::string &text, QPDFObjectHandle value, int depth)
{
    if (depth > MaxDescribedDepth || text.size() > MaxDescription)
        return false;
    if (value.isDictionary())
        return appendDictionary(text, value, depth);
    if (!value.isArray()) {
        text += value.isScalar() ? value.unparseResolved() + ' ' : "null ";
        return true;
    }
    text += '[';
    for (const auto &item : value.getArrayAsVector()) {
        if (!append(text, item, depth + 1))
            return false;
    }
    text += ']';
    return true;
}

bool ObjectCopier::appendDictionary(std::string &text, QPDFObjectHandle &dictionary, int depth)
{
    if (!isShareable(dictionary))
        return false;
    text += "<<";
    for (const auto &[key, value] : dictionary.getDictAsMap()) {
        if (isStructureKey(key))
            continue;
        text += key;
        text += ' ';
        if (!append(text, value, depth + 1))
            return false;
    }
    text += ">>";
    return true;
}

bool ObjectCopier::appendReference(std::string &text, QPDFObjectHandle &value, int depth)
{
    if (depth > MaxDescribedDepth || m_describing.contains(idOf(value)))
        return false;
    if (value.isStream()) {
        text += '@' + std::to_string(copyReference(value, depth).getObjectID()) + ' ';
        return true;
    }
    m_describing.insert(idOf(value));
    const bool isWhole = appendContent(text, value, depth + 1);
    m_describing.erase(idOf(value));
    return isWhole;
}

void ObjectCopier::run()
{
    while (!m_pending.empty()) {
        auto pending = std::move(m_pending.back());
        m_pending.pop_back();
        fill(pending);
    }
}

void ObjectCopier::fill(Pending &pending)
{
    if (pending.data)
        fillStream(pending);
    else
        m_target.replaceObject(pending.to.getObjGen(), copyDirect(pending.from));
}

void ObjectCopier::fillStream(Pending &pending)
{
    auto dictionary = pending.from.getDict();
    auto made = copyDictionary(dictionary);
    const auto filter = made.getKey("/Filter");
    const auto parameters = made.getKey("/DecodeParms");
    pending.to.replaceDict(made);
    pending.to.replaceStreamData(pending.data, filter, parameters);
}

} // namespace Quorlin
