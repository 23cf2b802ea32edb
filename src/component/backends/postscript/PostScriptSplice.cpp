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
    std::string_view rest(piece.data(), static_cast<std::size_t>(piece.size()));
    std::string joined;
    if (!m_pending.empty()) {
        joined = std::move(m_pending);
        joined.append(rest);
        rest = joined;
    }
    for (auto end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
        line(rest.substr(0, end + 1));
        rest.remove_prefix(end + 1);
    }
    m_pending = rest;
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
