#include "skin/LeadingNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace Quorlin {

namespace {

bool isDigit(QChar ch)
{
    return ch >= QLatin1Char('0') && ch <= QLatin1Char('9');
}

/// Reads a text from left to right into a form that every parser understands.
class NumberText
{
public:
    explicit NumberText(QStringView rest) : m_rest(rest) {}

    [[nodiscard]] std::string take()
    {
        skipBlanks();
        takeSign();
        auto digits = takeDigits();
        if (startsWith(u'.')) {
            step('.');
            digits += takeDigits();
        }
        if (digits == 0)
            return {};
        takeExponent();
        return m_number;
    }

private:
    [[nodiscard]] bool startsWith(char16_t ch) const
    {
        return !m_rest.isEmpty() && m_rest.front() == QChar(ch);
    }

    void step(char taken)
    {
        m_number += taken;
        m_rest = m_rest.sliced(1);
    }

    void skipBlanks()
    {
        const auto isBlank = [](QChar ch) {
            return ch == QLatin1Char(' ') || ch == QLatin1Char('\t');
        };
        m_rest = m_rest.sliced(std::ranges::find_if_not(m_rest, isBlank) - m_rest.begin());
    }

    /// A plus says nothing, and the parser does not take it.
    void takeSign()
    {
        if (startsWith(u'-'))
            step('-');
        else if (startsWith(u'+'))
            m_rest = m_rest.sliced(1);
    }

    [[nodiscard]] qsizetype takeDigits()
    {
        const auto end = std::ranges::find_if_not(m_rest, isDigit);
        const auto count = end - m_rest.begin();
        for (qsizetype at = 0; at < count; ++at)
            m_number += m_rest[at].toLatin1();
        m_rest = m_rest.sliced(count);
        return count;
    }

    /// An "E" that no digits follow is no exponent.
    void takeExponent()
    {
        if (!startsWith(u'e') && !startsWith(u'E') && !startsWith(u'd') && !startsWith(u'D'))
            return;
        const auto before = m_number.size();
        step('e');
        takeSign();
        if (takeDigits() == 0)
            m_number.resize(before);
    }

    QStringView m_rest;
    std::string m_number;
};

} // namespace

qint16 leadingNumber(QStringView text)
{
    const auto number = NumberText(text).take();
    double value = 0;
    const auto *const end = number.data() + number.size();
    const auto result = std::from_chars(number.data(), end, value);
    // Too large and too small a number both end here.
    if (result.ec != std::errc())
        return 0;
    const auto rounded = std::nearbyint(value);
    using Limits = std::numeric_limits<qint16>;
    return rounded >= Limits::min() && rounded <= Limits::max() ? qint16(rounded) : qint16(0);
}

} // namespace Quorlin
