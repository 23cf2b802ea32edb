#pragma once

#include <com/sun/star/task/XStatusIndicator.hpp>
#include <cppuhelper/implbase1.hxx>

#include <atomic>
#include <functional>

namespace Quorlin {

/// Turns the engine's status bar into per cent of one phase of the work.
class ProgressIndicator : public cppu::WeakImplHelper1<css::task::XStatusIndicator>
{
public:
    /// @param report called from any thread with values from first to last, never falling.
    ProgressIndicator(std::function<void(int)> report, int first, int last);

    void SAL_CALL start(const rtl::OUString &text, sal_Int32 range) override;
    void SAL_CALL end() override;
    void SAL_CALL setText(const rtl::OUString &text) override;
    void SAL_CALL setValue(sal_Int32 value) override;
    void SAL_CALL reset() override;

private:
    std::function<void(int)> m_report;
    int m_first;
    int m_last;
    std::atomic<int> m_range = 100;
    std::atomic<int> m_highest;
};

} // namespace Quorlin
