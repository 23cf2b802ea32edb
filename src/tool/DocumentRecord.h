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
    QString text;                 ///< the same in words
    double seconds = 0;           ///< from the start of the run to its result or failure

    [[nodiscard]] bool failed() const { return reason != Reason::None; }
};

} // namespace Quorlin
