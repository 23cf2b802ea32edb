#include "component/backends/merge/FileBytes.h"

#include "component/backends/merge/MergeFailure.h"

#include <QFileInfo>

namespace Quorlin {

FileBytes::FileBytes(const QString &path) : m_file(path)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw MergeFailure(Reason::NotFound);
    if (!info.isFile())
        throw MergeFailure(Reason::NotRegular);
    if (info.size() == 0)
        throw MergeFailure(Reason::Empty);
    if (!m_file.open(QIODevice::ReadOnly))
        throw MergeFailure(Reason::NotReadable);
    m_size = static_cast<size_t>(m_file.size());
    m_data = reinterpret_cast<const char *>(m_file.map(0, m_file.size()));
    if (!m_data) {
        m_copy = m_file.readAll();
        m_data = m_copy.constData();
        m_size = static_cast<size_t>(m_copy.size());
    }
    m_file.close();
}

} // namespace Quorlin
