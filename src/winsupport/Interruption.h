#pragma once

#include <QObject>

#include <memory>

namespace Quorlin {

/// Tells of the user's or the system's wish that the program end (interrupt and terminate).
///
/// The first wish is told from the event loop; a second one ends the program at once, as if
/// nobody listened. One object per program. One source per system stands beside this header.
class Interruption : public QObject
{
    Q_OBJECT

public:
    explicit Interruption(QObject *parent = nullptr);
    ~Interruption() override;

Q_SIGNALS:
    /// @param number of the signal: 2 for interrupt, 15 for terminate.
    void requested(int number);

private:
    struct Channel;
    std::unique_ptr<Channel> m_channel;
};

} // namespace Quorlin
