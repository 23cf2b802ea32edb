#include "ui/CommandItems.h"

namespace Quorlin::CommandItems {

QStringList split(const QString &text)
{
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char(','));
}

} // namespace Quorlin::CommandItems
