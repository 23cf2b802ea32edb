#pragma once

#include <qpdf/QPDFObjectHandle.hh>

#include <set>
#include <string>

namespace Quorlin {

/// Gives every embedded Type 1 program of a document a name of its own.
///
/// The printing tool writes only the first of several programs with one name, although each of
/// them may hold other glyphs, as the parts of a large font do.
class Type1Names
{
public:
    Type1Names();

    /// Renames the program of this font, if it has one and its name is taken.
    void separate(QPDFObjectHandle font);

private:
    [[nodiscard]] std::string freeName(const std::string &wanted, const std::string &given);

    std::set<std::string> m_taken;
    std::set<QPDFObjGen> m_seen;
};

} // namespace Quorlin
