#pragma once

#include "app/HandoffFrame.h"

namespace Quorlin {

/// Takes one frame out of bytes that arrive in pieces and may be anything. It never keeps more
/// than the longest frame; what follows a frame is dropped.
class FrameReader
{
public:
    enum class State { Incomplete, Complete, Garbage };

    /// @return what the bytes are so far; no bytes change that after Complete or Garbage.
    State add(const char *bytes, qsizetype count);

    [[nodiscard]] State state() const { return m_state; }
    /// Once the state is Complete.
    [[nodiscard]] const HandoffFrame &frame() const { return m_frame; }

    /// The first bytes of every frame.
    [[nodiscard]] static QByteArray magic();

private:
    State m_state = State::Incomplete;
    QByteArray m_head;
    quint32 m_expected = 0;
    HandoffFrame m_frame;

    [[nodiscard]] State readHead();
    [[nodiscard]] bool isHeadComplete() const;
};

} // namespace Quorlin
