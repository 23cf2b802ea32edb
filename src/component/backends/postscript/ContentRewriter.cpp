#include "component/backends/postscript/ContentRewriter.h"

#include "component/backends/postscript/ActualText.h"
#include "component/backends/postscript/PdfName.h"
#include "component/backends/postscript/PostScriptText.h"

namespace Quorlin {

namespace {

/// Deeper than this no viewer follows a stream either.
constexpr std::size_t MaxLevels = 10000;

std::string matrixOperands(const Matrix &matrix)
{
    auto text = PostScriptText::matrix(matrix);
    return text.substr(1, text.size() - 2);
}

} // namespace

ContentRewriter::ContentRewriter(const Names &names) : m_names(names) {}

std::optional<std::string> ContentRewriter::rewrite(std::string_view content)
{
    m_content = content;
    m_out.clear();
    m_out.reserve(content.size() + content.size() / 8);
    m_copied = 0;
    m_levels.assign(1, {});
    m_used.clear();
    m_contents.clear();
    m_inSpan = false;
    m_invisible = false;
    ContentScanner scanner(content);
    while (scanner.next()) {
        handle(scanner);
        if (m_levels.size() > MaxLevels || m_contents.size() > MaxLevels)
            return std::nullopt;
    }
    if (scanner.brokenOff())
        return std::nullopt;
    copyTo(content.size());
    if (m_inSpan)
        draw(m_names.endSpan);
    for (std::size_t open = m_levels.size(); open > 1; --open)
        m_out += "\nQ";
    return std::move(m_out);
}

void ContentRewriter::handle(const ContentScanner &scanner)
{
    const auto op = scanner.op();
    if (op == "q")
        save();
    else if (op == "Q")
        restore(scanner);
    else if (op == "cm")
        m_levels.back().matrix = Matrix{scanner.number(5), scanner.number(4), scanner.number(3),
                                        scanner.number(2), scanner.number(1), scanner.number(0)}
                                     .then(m_levels.back().matrix);
    else if (op == "gs")
        applyState(scanner);
    else if (op == "Do")
        drawObject(scanner);
    else if (op == "sh")
        shade(scanner);
    else if (op == "BDC" || op == "BMC")
        beginContent(scanner);
    else if (op == "EMC")
        endContent(scanner);
    else if (op == "Tr")
        setTextMode(scanner);
}

void ContentRewriter::copyTo(std::size_t end)
{
    m_out.append(m_content.substr(m_copied, end - m_copied));
    m_copied = end;
}

void ContentRewriter::draw(const std::string &name)
{
    m_out += "\n/" + name + " Do\n";
    m_used.insert(name);
}

void ContentRewriter::drawMask(const MaskMarks &mask)
{
    draw(mask.begin);
    m_out += "q";
    draw(mask.form);
    m_out += "Q";
    draw(mask.end);
}

void ContentRewriter::save()
{
    m_levels.push_back(m_levels.back());
}

void ContentRewriter::restore(const ContentScanner &scanner)
{
    if (m_levels.size() == 1) {
        copyTo(scanner.begin());
        dropTo(scanner.end());
        return;
    }
    const auto *inner = m_levels.back().mask;
    m_levels.pop_back();
    const auto &outer = m_levels.back();
    if (!outer.mask || outer.mask == inner || !outer.matrix.invertible())
        return;
    copyTo(scanner.end());
    const auto back = outer.maskMatrix.then(outer.matrix.inverted());
    if (!back.invertible())
        return;
    m_out += "\n" + matrixOperands(back) + " cm";
    drawMask(*outer.mask);
    m_out += matrixOperands(back.inverted()) + " cm\n";
}

void ContentRewriter::applyState(const ContentScanner &scanner)
{
    const auto found = m_names.states.find(decodedName(scanner.operand(0)));
    if (found == m_names.states.end())
        return;
    copyTo(scanner.end());
    const auto &marks = found->second;
    if (marks.values)
        draw(*marks.values);
    auto &level = m_levels.back();
    level.isPlain = false;
    if (marks.clearMask) {
        draw(*marks.clearMask);
        level.mask = nullptr;
    }
    if (!marks.mask)
        return;
    drawMask(*marks.mask);
    level.mask = &*marks.mask;
    level.maskMatrix = level.matrix;
}

void ContentRewriter::drawObject(const ContentScanner &scanner)
{
    const auto name = decodedName(scanner.operand(0));
    const auto found = m_names.maskedImages.find(name);
    PictureUses::Use use{{}, false};
    if (m_names.usePicture && m_levels.back().isPlain && m_contents.empty())
        use = m_names.usePicture(name, m_levels.back().matrix);
    if (found == m_names.maskedImages.end() && use.mark.empty())
        return;
    copyTo(scanner.begin());
    if (use.again)
        dropTo(scanner.end());
    else if (found != m_names.maskedImages.end())
        for (const auto &mark : found->second)
            draw(mark);
    if (!use.mark.empty())
        draw(use.mark);
}

void ContentRewriter::shade(const ContentScanner &scanner)
{
    const auto found = m_names.shadings.find(decodedName(scanner.operand(0)));
    if (found == m_names.shadings.end())
        return;
    copyTo(scanner.begin());
    dropTo(scanner.end());
    draw(found->second);
}

void ContentRewriter::beginContent(const ContentScanner &scanner)
{
    std::string span;
    if (scanner.op() == "BDC" && !m_inSpan) {
        const auto named = m_names.spans.find(decodedName(scanner.operand(0)));
        const auto text = named == m_names.spans.end() ? actualText(scanner.operands())
                                                       : std::optional<std::u16string>();
        if (named != m_names.spans.end())
            span = named->second;
        else if (text)
            span = m_names.startSpan(*text);
    }
    m_contents.push_back(!span.empty());
    if (span.empty())
        return;
    m_inSpan = true;
    copyTo(scanner.end());
    draw(span);
}

void ContentRewriter::endContent(const ContentScanner &scanner)
{
    if (m_contents.empty())
        return;
    const bool ours = m_contents.back();
    m_contents.pop_back();
    if (!ours)
        return;
    m_inSpan = false;
    copyTo(scanner.begin());
    draw(m_names.endSpan);
}

void ContentRewriter::setTextMode(const ContentScanner &scanner)
{
    const bool invisible = scanner.operand(0) == "3";
    if (m_names.invisible.empty() || (!invisible && !m_invisible))
        return;
    copyTo(invisible ? scanner.begin() : scanner.end());
    if (invisible) {
        m_out += " 0 Tr";
        dropTo(scanner.end());
    }
    draw(invisible ? m_names.invisible : m_names.visible);
    m_invisible = true;
}

} // namespace Quorlin
