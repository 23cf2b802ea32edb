#pragma once

#include <qpdf/QPDF.hh>

#include <map>
#include <set>
#include <string>

namespace Quorlin {

/// The names of one kind in the merged document; each is given out once.
class NamePool
{
public:
    /// The wished name, or a similar one when another document has it already. Names are the
    /// bytes of a PDF text string; UTF-16 stays UTF-16.
    [[nodiscard]] std::string reserve(const std::string &wished);

    void setValue(const std::string &name, const QPDFObjectHandle &value);

    /// Names with their values, for a name tree.
    [[nodiscard]] const std::map<std::string, QPDFObjectHandle> &values() const { return m_values; }

private:
    std::set<std::string> m_reserved;
    std::map<std::string, int> m_lastNumber;
    std::map<std::string, QPDFObjectHandle> m_values;
};

} // namespace Quorlin
