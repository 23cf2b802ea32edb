#pragma once

#include "winsupport/Descriptor.h"

#include <QByteArray>

namespace Quorlin {

/// A lock that one process holds at a time and that ends with the process, however it ends. The
/// file stays; programs that the holder starts do not inherit the lock.
class InstanceLock
{
public:
    enum class Holder { Us, Others, Unknown };

    /// @param path of the lock's file, in the encoding of file names.
    explicit InstanceLock(QByteArray path);

    /// Takes the lock in one step when nobody has it.
    /// @return who holds it now; Unknown when there can be no lock.
    Holder take();
    void release();

    [[nodiscard]] bool isHeld() const { return m_file.isOpen(); }

private:
    QByteArray m_path;
    Descriptor m_file{-1};

    Holder tryToTake();
};

} // namespace Quorlin
