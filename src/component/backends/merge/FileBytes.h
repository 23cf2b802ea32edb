#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace Quorlin {

/// The bytes of one file, mapped into memory where the file system allows it.
///
/// The file is closed once it is mapped, so that thousands of inputs need no descriptors.
class FileBytes
{
public:
    /// Throws MergeFailure when the path is not an ordinary file that can be read.
    explicit FileBytes(const QString &path);

    [[nodiscard]] const char *data() const { return m_data; }
    [[nodiscard]] size_t size() const { return m_size; }

private:
    QFile m_file;
    QByteArray m_copy;
    const char *m_data = nullptr;
    size_t m_size = 0;
};

} // namespace Quorlin
