#pragma once

#include "component/protocol/Reason.h"

#include <QString>

#include <stdexcept>

namespace Quorlin {

/// Why a merge came to nothing.
class MergeFailure : public std::runtime_error
{
public:
    /// @param detail what exactly is wrong, in English, without a full stop; empty means the
    ///        reason's own text.
    explicit MergeFailure(Reason reason, const QString &detail = {})
        : std::runtime_error("merge failed"), m_reason(reason),
          m_text(detail.isEmpty() ? reasonText(reason) : detail)
    {
    }

    [[nodiscard]] Reason reason() const { return m_reason; }
    [[nodiscard]] const QString &text() const { return m_text; }

private:
    Reason m_reason;
    QString m_text;
};

} // namespace Quorlin
