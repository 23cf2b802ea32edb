#include "component/backends/office/ProgressIndicator.h"

#include <algorithm>
#include <utility>

namespace Quorlin {

ProgressIndicator::ProgressIndicator(std::function<void(int)> report, int first, int last)
    : m_report(std::move(report)), m_first(first), m_last(last), m_highest(first)
{
}

void ProgressIndicator::start(const rtl::OUString &, sal_Int32 range)
{
    m_range = std::max(1, static_cast<int>(range));
}

void ProgressIndicator::end() {}

void ProgressIndicator::setText(const rtl::OUString &) {}

void ProgressIndicator::setValue(sal_Int32 value)
{
    const auto range = m_range.load();
    const auto part = std::clamp<sal_Int64>(value, 0, range) * (m_last - m_first) / range;
    const auto percent = m_first + static_cast<int>(part);
    if (percent <= m_highest)
        return;
    m_highest = percent;
    m_report(percent);
}

void ProgressIndicator::reset() {}

} // namespace Quorlin
