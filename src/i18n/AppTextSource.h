#pragma once

#include "winsupport/TextSource.h"

namespace Quorlin {

/// The texts of AppText for those who do not know it.
class AppTextSource : public TextSource
{
public:
    [[nodiscard]] QString text(const QString &key) const override;
};

} // namespace Quorlin
