#pragma once

#include <QString>

#include <optional>

namespace Quorlin {

class Journal;

/// The private folder that all workers of one component work in, mode 0700.
class WorkFolder
{
public:
    /// @param journal written to before the folder is made; outlives this object.
    explicit WorkFolder(Journal &journal);
    ~WorkFolder();
    WorkFolder(const WorkFolder &) = delete;
    WorkFolder &operator=(const WorkFolder &) = delete;

    /// Makes it. @return false when the folder for temporary files cannot be written.
    [[nodiscard]] bool create();

    [[nodiscard]] const QString &path() const { return m_path; }

    /// A new folder inside, empty; nothing when the disk is full.
    [[nodiscard]] std::optional<QString> newFolder(const QString &kind);

    /// A name that is given once.
    [[nodiscard]] QString uniqueName();

    /// Removes it with everything in it.
    void remove();

    /// Whether a path has the form of a working folder that belongs to this user.
    [[nodiscard]] static bool isWorkFolder(const QString &path);

private:
    Journal &m_journal;
    QString m_path;
    int m_count = 0;
};

} // namespace Quorlin
