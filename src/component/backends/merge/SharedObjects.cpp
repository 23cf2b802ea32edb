#include "component/backends/merge/SharedObjects.h"

#include <algorithm>
#include <string_view>

namespace Quorlin {

namespace {

constexpr size_t SampleSize = 64;

std::string_view view(const std::shared_ptr<Buffer> &data)
{
    if (!data)
        return {};
    const Buffer &bytes = *data;
    return {reinterpret_cast<const char *>(bytes.getBuffer()), bytes.getSize()};
}

/// Length and samples keep streams of the same description apart, so that the whole data is
/// compared only where it is almost certainly equal.
std::string keyOf(const std::string &description, const std::shared_ptr<Buffer> &data)
{
    const auto bytes = view(data);
    auto key = description;
    key += '\n';
    key += std::to_string(bytes.size());
    key += '\n';
    key += bytes.substr(0, SampleSize);
    key += bytes.substr(bytes.size() / 2, SampleSize);
    key += bytes.substr(bytes.size() - std::min(bytes.size(), SampleSize));
    return key;
}

} // namespace

QPDFObjectHandle SharedObjects::find(const std::string &description,
                                     const std::shared_ptr<Buffer> &data) const
{
    const auto entries = m_entries.find(keyOf(description, data));
    if (entries == m_entries.end())
        return {};
    for (const auto &entry : entries->second) {
        if (view(entry.data) == view(data))
            return entry.object;
    }
    return {};
}

void SharedObjects::keep(const std::string &description, const std::shared_ptr<Buffer> &data,
                         const QPDFObjectHandle &object)
{
    m_entries[keyOf(description, data)].push_back({data, object});
}

} // namespace Quorlin
