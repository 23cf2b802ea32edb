#pragma once

#include <QListWidgetItem>

namespace Quorlin {

/// A document's entry in the visible list: shows its name, and tells its full path to those who
/// point at it or listen to it. Keeps the path only, so that thousands of entries cost little.
class FileItem : public QListWidgetItem
{
public:
    explicit FileItem(const QString &fullPath) : m_fullPath(fullPath) {}

    /// What the list shows of a path: the text after the last separator, extension included.
    [[nodiscard]] static QString nameOf(const QString &fullPath);

    [[nodiscard]] QVariant data(int role) const override;

private:
    QString m_fullPath;
};

} // namespace Quorlin
