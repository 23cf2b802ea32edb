#include "component/backends/merge/FormFields.h"

#include "component/backends/merge/ArrayItems.h"

#include <set>

namespace Quorlin {

namespace {

constexpr const char *Delimiters = " \t\r\n\f/[](){}<>%";

/// A default appearance such as "/Helv 12 Tf 0 g" with its resource names replaced.
std::string withNames(const std::string &appearance,
                      const std::map<std::string, std::string> &renames)
{
    std::string result;
    for (size_t at = 0; at < appearance.size();) {
        const auto end = std::min(appearance.find_first_of(Delimiters, at + 1), appearance.size());
        const auto word = appearance.substr(at, end - at);
        const auto renamed = renames.find(word);
        result += renamed == renames.end() ? word : renamed->second;
        at = end;
    }
    return result;
}

void adaptField(QPDFObjectHandle &field, const std::map<std::string, std::string> &fonts)
{
    auto appearance = field.getKey("/DA");
    if (appearance.isString())
        field.replaceKey(
            "/DA", QPDFObjectHandle::newString(withNames(appearance.getStringValue(), fonts)));
    if (field.getKey("/FT").isNameAndEquals("/Sig"))
        field.removeKey("/V");
}

} // namespace

void FormFields::add(const QPDFObjectHandle &form, ObjectCopier &copier)
{
    auto source = form;
    if (!source.isDictionary())
        return;
    auto copied = QPDFObjectHandle::newDictionary();
    for (const auto *key : {"/DA", "/Q", "/DR", "/CO"})
        copied.replaceKey(key, copier.copy(source.getKey(key)));
    const auto fields = copyFields(source, copier);
    copier.run();
    for (auto field : fields) {
        if (field.isDictionary())
            addTopField(field, copied);
    }
    adaptFields(fields, addResources(copied.getKey("/DR")));
    for (const auto &item : itemsOf(copied.getKey("/CO")))
        m_calculated.push_back(item);
    auto needed = source.getKey("/NeedAppearances");
    m_needsAppearances = m_needsAppearances || (needed.isBool() && needed.getBoolValue());
}

std::vector<QPDFObjectHandle> FormFields::copyFields(QPDFObjectHandle &form, ObjectCopier &copier)
{
    std::vector<QPDFObjectHandle> fields;
    std::set<QPDFObjGen> seen;
    for (const auto &item : itemsOf(form.getKey("/Fields"))) {
        auto field = copier.copy(item);
        if (!field.isIndirect())
            field = m_target.makeIndirectObject(field);
        if (seen.insert(field.getObjGen()).second)
            fields.push_back(field);
    }
    return fields;
}

void FormFields::addTopField(QPDFObjectHandle &field, QPDFObjectHandle &form)
{
    auto name = field.getKey("/T");
    if (name.isString())
        field.replaceKey("/T", QPDFObjectHandle::newString(m_names.reserve(name.getStringValue())));
    for (const auto *key : {"/DA", "/Q"}) {
        auto value = form.getKey(key);
        if (field.getKey(key).isNull() && value.isScalar())
            field.replaceKey(key, value.shallowCopy());
    }
    m_fields.push_back(field);
}

FormFields::Renames FormFields::addResources(QPDFObjectHandle resources)
{
    Renames renames;
    if (!resources.isDictionary())
        return renames;
    for (auto [category, entries] : resources.getDictAsMap()) {
        if (!entries.isDictionary())
            continue;
        auto &known = m_resources[category];
        for (const auto &[name, value] : entries.getDictAsMap()) {
            auto free = name;
            int number = 1;
            while (known.contains(free) && !known[free].isSameObjectAs(value))
                free = name + "_" + std::to_string(++number);
            known.try_emplace(free, value);
            if (free != name && category == "/Font")
                renames.emplace(name, free);
        }
    }
    return renames;
}

void FormFields::adaptFields(const std::vector<QPDFObjectHandle> &fields, const Renames &fonts)
{
    std::set<QPDFObjGen> seen;
    auto open = fields;
    while (!open.empty()) {
        auto field = open.back();
        open.pop_back();
        if (!field.isDictionary() || (field.isIndirect() && !seen.insert(field.getObjGen()).second))
            continue;
        adaptField(field, fonts);
        const auto kids = itemsOf(field.getKey("/Kids"));
        open.insert(open.end(), kids.begin(), kids.end());
    }
}

QPDFObjectHandle FormFields::write() const
{
    if (m_fields.empty())
        return QPDFObjectHandle::newNull();
    auto form = QPDFObjectHandle::newDictionary();
    form.replaceKey("/Fields", QPDFObjectHandle::newArray(m_fields));
    auto resources = QPDFObjectHandle::newDictionary();
    for (const auto &[category, entries] : m_resources)
        resources.replaceKey(category, QPDFObjectHandle::newDictionary(entries));
    form.replaceKey("/DR", resources);
    if (!m_calculated.empty())
        form.replaceKey("/CO", QPDFObjectHandle::newArray(m_calculated));
    if (m_needsAppearances)
        form.replaceKey("/NeedAppearances", QPDFObjectHandle::newBool(true));
    return m_target.makeIndirectObject(form);
}

} // namespace Quorlin
