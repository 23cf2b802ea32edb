#pragma once

#include "convert/ReasonTexts.h"

#include <functional>

namespace Quorlin {

/// Reasons in the language of the window. Language files have no such texts: what is not French or
/// German is English.
class ReasonWords : public ReasonTexts
{
public:
    /// @param language gives the name of the language in use.
    explicit ReasonWords(std::function<QString()> language);

    [[nodiscard]] QString sentence(Reason reason) const override;
    [[nodiscard]] QString advice(Reason reason) const override;
    [[nodiscard]] QString introduce(const QString &detail) const override;
    [[nodiscard]] QString more(qsizetype count) const override;

private:
    std::function<QString()> m_language;
};

} // namespace Quorlin
