#include "component/backends/postscript/PostScriptSplice.h"

namespace Quorlin {

namespace {

constexpr std::size_t PieceBytes = 256 * 1024;

bool starts(std::string_view line, std::string_view word)
{
    return line.substr(0, word.size()) == word;
}

/// A font file without a line end has this behind its last word.
bool endsResource(std::string_view line)
{
    return line.ends_with("%%EndResource\n");
}

} // namespace

PostScriptSplice::PostScriptSplice(SpliceParts parts, Write write)
    : m_parts(std::move(parts)), m_write(std::move(write)), m_out(m_parts.header)
{
}

bool PostScriptSplice::take(QByteArrayView piece)
{
    // What has been looked at is not looked at again: a line may be as long as the document wants.
    const auto search = m_pending.size();
    m_pending.append(piece.data(), static_cast<std::size_t>(piece.size()));
    const std::string_view text(m_pending);
    std::size_t start = 0;
    for (auto end = text.find('\n', search); end != std::string_view::npos;
         end = text.find('\n', start)) {
        line(text.substr(start, end + 1 - start));
        start = end + 1;
    }
    m_pending.erase(0, start);
    if (m_out.size() < PieceBytes)
        return true;
    const bool written = m_write(m_out);
    m_out.clear();
    return written;
}

bool PostScriptSplice::finish()
{
    if (!m_pending.empty())
        line(m_pending + "\n");
    m_pending.clear();
    const bool written = m_write(m_out);
    m_out.clear();
    return written;
}

void PostScriptSplice::line(std::string_view line)
{
    switch (m_section) {
    case Section::Header:
        return headerLine(line);
    case Section::PageSetup:
        if (starts(line, "%%EndPageSetup")) {
            m_out += m_parts.pageSetup(m_pages);
            m_section = Section::Pages;
            keep(line);
        }
        return;
    case Section::Pages:
    case Section::PageHeader:
        return line.front() == '%' ? pageLine(line) : keep(line);
    default:
        return m_inResource || line.front() == '%' ? structureLine(line) : keep(line);
    }
}

void PostScriptSplice::headerLine(std::string_view line)
{
    if (starts(line, "%!") || starts(line, "%%Title") || starts(line, "%%Creator") ||
        starts(line, "%%Author"))
        return;
    keep(line);
    if (starts(line, "%%EndComments"))
        m_section = Section::Prolog;
}

void PostScriptSplice::structureLine(std::string_view line)
{
    if (m_inResource) {
        m_inResource = !endsResource(line);
    } else if (starts(line, "%%BeginResource")) {
        m_inResource = true;
    } else if (m_section == Section::Prolog && starts(line, "%%EndProlog")) {
        m_out += m_parts.prolog;
        m_section = Section::Setup;
    } else if (m_section == Section::Setup && starts(line, "%%EndSetup")) {
        m_out += m_parts.setup;
        m_section = Section::Pages;
    }
    keep(line);
}

void PostScriptSplice::pageLine(std::string_view line)
{
    keep(line);
    if (starts(line, "%%Page: ")) {
        ++m_pages;
        m_section = Section::PageHeader;
    } else if (m_section == Section::PageHeader && starts(line, "%%BeginPageSetup")) {
        m_section = Section::PageSetup;
    } else if (starts(line, "%%Trailer")) {
        m_section = Section::Trailer;
    }
}

} // namespace Quorlin
