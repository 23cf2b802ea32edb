#include "component/backends/postscript/StreamBytes.h"

#include <qpdf/Pipeline.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <exception>
#include <stdexcept>

namespace Quorlin {

namespace {

class BoundedBuffer : public Pipeline
{
public:
    explicit BoundedBuffer(std::size_t maxBytes)
        : Pipeline("bounded buffer", nullptr), m_maxBytes(maxBytes)
    {
    }

    void write(unsigned char const *data, size_t length) override
    {
        if (length > m_maxBytes - m_bytes.size())
            throw std::length_error("a stream is too long");
        m_bytes.append(reinterpret_cast<const char *>(data), length);
    }

    void finish() override {}

    [[nodiscard]] std::string take() { return std::move(m_bytes); }

private:
    std::size_t m_maxBytes;
    std::string m_bytes;
};

bool append(std::string &bytes, QPDFObjectHandle stream)
{
    const auto part = streamBytes(stream, MaxStreamBytes - bytes.size());
    if (!part)
        return false;
    bytes += *part;
    bytes += '\n';
    return bytes.size() < MaxStreamBytes;
}

} // namespace

std::optional<std::string> streamBytes(QPDFObjectHandle stream, std::size_t maxBytes)
{
    BoundedBuffer buffer(maxBytes);
    try {
        bool filtered = false;
        if (!stream.pipeStreamData(&buffer, &filtered, 0, qpdf_dl_specialized, true) || !filtered)
            return std::nullopt;
    } catch (const std::exception &) {
        return std::nullopt;
    }
    return buffer.take();
}

std::optional<std::string> pageBytes(QPDFObjectHandle page)
{
    auto contents = page.getKey("/Contents");
    std::string bytes;
    if (contents.isStream())
        return append(bytes, contents) ? std::optional(std::move(bytes)) : std::nullopt;
    if (!contents.isArray())
        return bytes;
    for (auto stream : contents.aitems())
        if (stream.isStream() && !append(bytes, stream))
            return std::nullopt;
    return bytes;
}

} // namespace Quorlin
