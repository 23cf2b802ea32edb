#include "component/backends/merge/NamePool.h"

namespace Quorlin {

namespace {

std::string numbered(const std::string &name, int number)
{
    const auto suffix = "-" + std::to_string(number);
    if (!name.starts_with("\xfe\xff"))
        return name + suffix;
    auto wide = name;
    for (const char c : suffix) {
        wide += '\0';
        wide += c;
    }
    return wide;
}

} // namespace

std::string NamePool::reserve(const std::string &wished)
{
    if (m_reserved.insert(wished).second)
        return wished;
    auto &number = m_lastNumber.try_emplace(wished, 1).first->second;
    for (;;) {
        auto name = numbered(wished, ++number);
        if (m_reserved.insert(name).second)
            return name;
    }
}

void NamePool::setValue(const std::string &name, const QPDFObjectHandle &value)
{
    m_values.insert_or_assign(name, value);
}

} // namespace Quorlin
