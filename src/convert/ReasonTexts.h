#pragma once

#include "component/protocol/Reason.h"

#include <QString>

namespace Quorlin {

/// What users of a window are told of reasons. This class says it in English, others in the
/// language in use.
class ReasonTexts
{
public:
    ReasonTexts() = default;
    virtual ~ReasonTexts() = default;
    ReasonTexts(const ReasonTexts &) = delete;
    ReasonTexts &operator=(const ReasonTexts &) = delete;

    /// What happened: a sentence with its full stop.
    [[nodiscard]] virtual QString sentence(Reason reason) const;

    /// What one can do about it: whole sentences; empty for Reason::None.
    [[nodiscard]] virtual QString advice(Reason reason) const;

    /// Introduces what the component knows beyond the reason. @param detail in English.
    [[nodiscard]] virtual QString introduce(const QString &detail) const;

    /// Says that further documents failed. @param count at least 1.
    [[nodiscard]] virtual QString more(qsizetype count) const;
};

} // namespace Quorlin
