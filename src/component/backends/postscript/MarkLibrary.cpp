#include "component/backends/postscript/MarkLibrary.h"

namespace Quorlin {

MarkLibrary::MarkLibrary(QPDF &pdf) : m_pdf(pdf) {}

std::string MarkLibrary::add(QPDFObjectHandle object)
{
    auto name = "QuorlinMark" + std::to_string(m_objects.size());
    m_objects.emplace(name, object);
    return name;
}

std::string MarkLibrary::mark(const std::string &postScript)
{
    const auto known = m_marks.find(postScript);
    if (known != m_marks.end())
        return known->second;
    auto stream = QPDFObjectHandle::newStream(&m_pdf, postScript + "\n");
    stream.getDict().replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
    stream.getDict().replaceKey("/Subtype", QPDFObjectHandle::newName("/PS"));
    return m_marks[postScript] = add(stream);
}

void MarkLibrary::empty(const std::string &name)
{
    const auto found = m_objects.find(name);
    if (found != m_objects.end())
        found->second.replaceStreamData("\n", QPDFObjectHandle::newNull(),
                                        QPDFObjectHandle::newNull());
}

std::string MarkLibrary::alias(QPDFObjectHandle xObject)
{
    auto &name = m_aliases[xObject.getObjGen()];
    if (name.empty())
        name = add(xObject);
    return name;
}

void MarkLibrary::addTo(QPDFObjectHandle xObjects, const MarkNames &names) const
{
    for (const auto &name : names) {
        const auto found = m_objects.find(name);
        if (found != m_objects.end())
            xObjects.replaceKey("/" + name, found->second);
    }
}

} // namespace Quorlin
