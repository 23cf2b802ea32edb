#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace Quorlin {

/// Walks over the operators of a decoded content stream without building objects.
///
/// Strings, comments and inline images are stepped over. The bytes must outlive the scanner.
/// Damaged content ends the walk or is skipped; it never fails.
class ContentScanner
{
public:
    explicit ContentScanner(std::string_view content);

    /// Goes to the next operator. @return false at the end of the content.
    [[nodiscard]] bool next();

    /// The operator; "BI" stands for a whole inline image.
    [[nodiscard]] std::string_view op() const { return m_op; }

    /// Where the operator's operands begin (or the operator itself, when there are none).
    [[nodiscard]] std::size_t begin() const { return m_begin; }

    /// The first byte after the operator.
    [[nodiscard]] std::size_t end() const { return m_position; }

    /// The bytes of all operands.
    [[nodiscard]] std::string_view operands() const;

    /// The operand at this distance from the operator, 0 being the last one; empty when absent.
    /// Names keep their slash; of a string, an array or a dictionary only the mark is seen.
    [[nodiscard]] std::string_view operand(std::size_t fromLast) const;

    /// The same as a number; 0 when it is none.
    [[nodiscard]] double number(std::size_t fromLast) const;

    /// True when the content broke off inside a string or an inline image.
    [[nodiscard]] bool brokenOff() const { return m_brokenOff; }

private:
    static constexpr std::size_t MaxOperands = 6;

    void skipString();
    void skipHexString();
    void skipInlineImage();
    void skipRegular();
    [[nodiscard]] bool looksLikeContent(std::size_t position) const;
    void push(std::string_view operand);
    bool readToken(std::string_view &token);

    std::string_view m_content;
    std::size_t m_position = 0;
    std::size_t m_begin = 0;
    std::string_view m_op;
    std::array<std::string_view, MaxOperands> m_operands;
    std::size_t m_pushed = 0;
    std::size_t m_count = 0;
    bool m_brokenOff = false;
};

} // namespace Quorlin
