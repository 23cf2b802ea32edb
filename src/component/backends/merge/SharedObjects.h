#pragma once

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Quorlin {

/// Streams and fonts of the merged document that several inputs have in common.
///
/// Equal means equal bytes and an equal description, which the caller makes from everything
/// that the object refers to.
class SharedObjects
{
public:
    /// The object that was kept for the same description and data; uninitialised: none.
    [[nodiscard]] QPDFObjectHandle find(const std::string &description,
                                        const std::shared_ptr<Buffer> &data) const;

    /// @param data null for an object that is not a stream.
    void keep(const std::string &description, const std::shared_ptr<Buffer> &data,
              const QPDFObjectHandle &object);

private:
    struct Entry
    {
        std::shared_ptr<Buffer> data;
        QPDFObjectHandle object;
    };

    std::unordered_map<std::string, std::vector<Entry>> m_entries;
};

} // namespace Quorlin
