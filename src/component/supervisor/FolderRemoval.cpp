#include "component/supervisor/FolderRemoval.h"

#include <QDir>
#include <QFile>

#include <filesystem>
#include <string>
#include <vector>

namespace Quorlin::FolderRemoval {

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> entriesOf(const fs::path &folder)
{
    std::vector<fs::path> entries;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        entries.push_back(entry->path());
    return entries;
}

bool isFolder(const fs::path &path)
{
    std::error_code error;
    return fs::is_directory(fs::symlink_status(path, error));
}

/// Moves what is below the folders of one folder up into it, so that no path becomes longer than
/// the system takes.
class Flattening
{
public:
    explicit Flattening(fs::path root) : m_root(std::move(root)) {}

    void run()
    {
        for (m_changed = true; m_changed;) {
            m_changed = false;
            for (const auto &entry : entriesOf(m_root))
                take(entry);
        }
    }

private:
    void take(const fs::path &entry)
    {
        std::error_code error;
        if (isFolder(entry)) {
            fs::permissions(entry, fs::perms::owner_all, fs::perm_options::add, error);
            for (const auto &inner : entriesOf(entry))
                isFolder(inner) ? lift(inner) : removeOne(inner);
        }
        removeOne(entry);
    }

    void lift(const fs::path &folder)
    {
        std::error_code error;
        fs::rename(folder, m_root / (".removed-" + std::to_string(++m_count)), error);
        m_changed = m_changed || !error;
    }

    void removeOne(const fs::path &path)
    {
        std::error_code error;
        m_changed = fs::remove(path, error) || m_changed;
    }

    fs::path m_root;
    int m_count = 0;
    bool m_changed = false;
};

} // namespace

bool remove(const QString &path)
{
    if (path.isEmpty() || QDir(path).removeRecursively())
        return true;
    const fs::path root(QFile::encodeName(path).toStdString());
    std::error_code error;
    fs::permissions(root, fs::perms::owner_all, fs::perm_options::add, error);
    Flattening(root).run();
    return fs::remove(root, error);
}

} // namespace Quorlin::FolderRemoval
