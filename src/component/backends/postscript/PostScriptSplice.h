#pragma once

#include <QByteArray>

#include <functional>
#include <string>
#include <string_view>

namespace Quorlin {

/// What is put into the output of pdftops, and where.
struct SpliceParts
{
    std::string header;                        ///< the first lines of the file
    std::string prolog;                        ///< at the end of the prolog
    std::string setup;                         ///< at the end of the set-up
    std::function<std::string(int)> pageSetup; ///< instead of a page's own; pages from 1
};

/// Rewrites the output of pdftops while it arrives.
///
/// Only the structuring comments are looked at, each where it may stand, so that nothing inside
/// a font or a picture can pass for one.
class PostScriptSplice
{
public:
    using Write = std::function<bool(const std::string &bytes)>;

    /// @param write takes the result piece by piece; false when it cannot be written.
    PostScriptSplice(SpliceParts parts, Write write);

    /// Takes the next piece. @return false when the result cannot be written.
    [[nodiscard]] bool take(QByteArrayView piece);

    /// To be called at the end. @return false when the result cannot be written.
    [[nodiscard]] bool finish();

    /// The pages that have begun so far.
    [[nodiscard]] int pages() const { return m_pages; }

    /// True when the file had every section and its end.
    [[nodiscard]] bool whole() const { return m_section == Section::Trailer; }

private:
    enum class Section { Header, Prolog, Setup, Pages, PageHeader, PageSetup, Trailer };

    void line(std::string_view line);
    void headerLine(std::string_view line);
    void structureLine(std::string_view line);
    void pageLine(std::string_view line);
    void keep(std::string_view line) { m_out.append(line); }

    SpliceParts m_parts;
    Write m_write;
    Section m_section = Section::Header;
    std::string m_pending;
    std::string m_out;
    int m_pages = 0;
    bool m_inResource = false;
};

} // namespace Quorlin
