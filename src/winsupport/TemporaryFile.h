#pragma once

#include "winsupport/Descriptor.h"

#include <QByteArray>

namespace Quorlin {

/// A hidden file that takes a final name once it is complete, and is removed otherwise.
///
/// It stays locked while its program lives, so that one without a lock is known to be left over.
/// Errors are thrown as std::system_error. One source per system stands beside this header.
class TemporaryFile
{
public:
    /// @param folder the open folder; must stay open as long as the object lives.
    /// @param mode permissions, from which those are taken that new files do not get.
    TemporaryFile(int folder, unsigned int mode);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    [[nodiscard]] int descriptor() const { return m_file.number(); }

    /// Takes the final name, in the place of a file that has it, in one step.
    void rename(const QByteArray &name);

    /// Removes what programs that are no more have left in a folder. Cannot fail visibly: what
    /// cannot be removed stays.
    static void removeLeftOvers(int folder);

private:
    [[nodiscard]] bool tryName(unsigned int mode);

    int m_folder;
    QByteArray m_name;
    Descriptor m_file{-1};
};

} // namespace Quorlin
