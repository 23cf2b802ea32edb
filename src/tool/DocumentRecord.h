#pragma once

#include "component/protocol/Reason.h"

#include <QString>

namespace Quorlin {

/// One document on its way through the tool. Paths are absolute.
struct DocumentRecord
{
    QString input;
    QString printed;              ///< the PostScript file, once printed
    QString distilled;            ///< the PDF where the component left it, once distilled
    QString output;               ///< the PDF under its final name, once delivered
    Reason reason = Reason::None; ///< why it failed
    QString detail;               ///< in English, what is known beyond the reason; mostly nothing
    double seconds = 0;           ///< from the start of the run to its result or failure

    [[nodiscard]] bool failed() const { return reason != Reason::None; }

    /// Why it failed, for people: the reason's sentence and the detail, without a full stop.
    [[nodiscard]] QString failure() const
    {
        const auto sentence = reasonText(reason);
        return detail.isEmpty() ? sentence : QStringLiteral("%1 (%2)").arg(sentence, detail);
    }
};

} // namespace Quorlin
