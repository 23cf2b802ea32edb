#include "component/backends/merge/OutputFile.h"

#include "component/backends/merge/MergeFailure.h"
#include "component/confinement/DiskRoom.h"

#include <QFileInfo>

#include <filesystem>

namespace Quorlin {

namespace {

constexpr qsizetype BufferSize = 1048576;
constexpr int MaxNames = 100;

} // namespace

OutputFile::OutputFile(const QString &path) : Pipeline("output", nullptr), m_path(path)
{
    for (int i = 1; i <= MaxNames && !m_file.isOpen(); ++i) {
        m_file.setFileName(QStringLiteral("%1.part%2").arg(path).arg(i));
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered) &&
            !m_file.exists())
            break;
    }
    if (!m_file.isOpen())
        throw MergeFailure(Reason::NotAllowed,
                           QStringLiteral("cannot write %1: %2").arg(path, m_file.errorString()));
    m_buffer.reserve(BufferSize);
}

OutputFile::~OutputFile()
{
    if (!m_file.isOpen())
        return;
    m_file.close();
    m_file.remove();
}

void OutputFile::write(const unsigned char *data, size_t length)
{
    const auto size = static_cast<qsizetype>(length);
    if (m_buffer.size() + size > BufferSize)
        flush();
    const auto *bytes = reinterpret_cast<const char *>(data);
    if (size < BufferSize)
        m_buffer.append(bytes, size);
    else if (m_file.write(bytes, size) != size)
        fail(size);
}

void OutputFile::flush()
{
    if (m_file.write(m_buffer) != m_buffer.size())
        fail(m_buffer.size());
    m_buffer.resize(0);
}

void OutputFile::commit()
{
    flush();
    std::error_code error;
    std::filesystem::rename(QFileInfo(m_file).filesystemFilePath(),
                            QFileInfo(m_path).filesystemFilePath(), error);
    if (error)
        throw MergeFailure(Reason::NotAllowed, QStringLiteral("cannot write %1").arg(m_path));
    m_file.close();
}

void OutputFile::fail(qint64 needed) const
{
    const bool isFull = DiskRoom::isShort(QFileInfo(m_path).absolutePath(), needed);
    throw MergeFailure(isFull ? Reason::NoRoom : Reason::EngineFailed,
                       QStringLiteral("cannot write %1: %2").arg(m_path, m_file.errorString()));
}

} // namespace Quorlin
