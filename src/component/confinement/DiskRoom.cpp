#include "component/confinement/DiskRoom.h"

#include <QFile>

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace Quorlin::DiskRoom {

bool isShort(const QString &folder, qint64 bytes)
{
    std::error_code error;
    const auto space = std::filesystem::space(QFile::encodeName(folder).toStdString(), error);
    return !error && space.capacity > 0 && space.available < static_cast<std::uintmax_t>(bytes);
}

} // namespace Quorlin::DiskRoom
