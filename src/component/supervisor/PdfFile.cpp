#include "component/supervisor/PdfFile.h"

#include <QFile>

#include <algorithm>

namespace Quorlin::PdfFile {

bool looksWhole(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.read(5).startsWith("%PDF-"))
        return false;
    constexpr qint64 TailBytes = 1024;
    if (!file.seek(std::max<qint64>(0, file.size() - TailBytes)))
        return false;
    return file.read(TailBytes).contains("%%EOF");
}

} // namespace Quorlin::PdfFile
