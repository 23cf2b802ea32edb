#include "component/supervisor/OutputNames.h"

#include "component/supervisor/ExclusiveFile.h"

namespace Quorlin::OutputNames {

QString hiddenName(const QString &folder, const QString &base, const QString &extension, int number)
{
    const auto counter = number == 0 ? QString() : QString::number(number + 1);
    return folder + QLatin1Char('/') + base + QLatin1Char('.') + extension + counter +
           QLatin1Char('~');
}

QString missingName(const QString &folder, const QString &base, const QString &extension)
{
    for (int number = 0;; ++number) {
        const auto name = hiddenName(folder, base, extension, number);
        if (ExclusiveFile::identityOf(name).isEmpty())
            return name;
    }
}

} // namespace Quorlin::OutputNames
