#pragma once

#include <QDeadlineTimer>
#include <QString>

namespace Quorlin {

/// The right to write a store, which one process or object at a time can have. It ends with the
/// object and with the process, however that ends.
///
/// Who waits comes next: a writer that asks again at once stands behind it.
class WriterLock
{
public:
    enum class State { Held, Busy, Denied };

    /// Waits until the right is given or the deadline has passed.
    /// @param path a file that is made when it is missing, readable by its owner alone. Its
    /// folder must be there. It stays empty and is never removed.
    WriterLock(const QString &path, const QDeadlineTimer &deadline);
    ~WriterLock();
    WriterLock(const WriterLock &) = delete;
    WriterLock &operator=(const WriterLock &) = delete;

    /// Denied when the file cannot be opened or is no ordinary file.
    [[nodiscard]] State state() const { return m_state; }

private:
    int m_handle;
    State m_state;
};

} // namespace Quorlin
