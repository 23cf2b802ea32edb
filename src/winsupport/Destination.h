#pragma once

#include "winsupport/Descriptor.h"

#include <QByteArray>

#include <optional>

namespace Quorlin {

/// Where a copy goes: an open folder and a name in it, all links at the end of the path
/// followed. Errors are thrown as std::system_error.
///
/// One source per system stands beside this header.
class Destination
{
public:
    /// What is kept of a file that is replaced.
    struct Existing
    {
        unsigned int mode;
        unsigned int owner;
        unsigned int group;
    };

    /// Fails when the folder cannot be opened or the links lead in a circle.
    explicit Destination(const QByteArray &path);

    [[nodiscard]] int folder() const { return m_folder.number(); }
    [[nodiscard]] const QByteArray &name() const { return m_name; }

    /// The file to be replaced; nothing when there is none. Fails when it may not be replaced.
    /// @param source an open file, which may not be the same one.
    [[nodiscard]] std::optional<Existing> existing(int source) const;

    /// Has the folder's change of names on the disk. @param file the open file that was renamed.
    void syncNames(int file) const;

private:
    QByteArray m_path;
    QByteArray m_name;
    Descriptor m_folder;
    bool m_folderCanSync;
};

} // namespace Quorlin
