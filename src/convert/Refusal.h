#pragma once

#include "component/protocol/Reason.h"

#include <QString>

namespace Quorlin {

/// Why a file was not taken.
class Refusal
{
public:
    Refusal() = default;
    explicit Refusal(Reason reason) : m_reason(reason) {}

    /// 42 for a PostScript file that is not one, 0 for no refusal; the other codes are the
    /// numbers of Reason.
    [[nodiscard]] qint32 code() const { return static_cast<qint32>(m_reason); }

    [[nodiscard]] Reason reason() const { return m_reason; }

    /// A sentence for people, in English, without a full stop.
    [[nodiscard]] QString text() const { return reasonText(m_reason); }

private:
    Reason m_reason = Reason::None;
};

} // namespace Quorlin
