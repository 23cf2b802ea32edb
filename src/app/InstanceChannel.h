#pragma once

#include "app/HandoffFrame.h"

#include <QString>

#include <functional>
#include <memory>

namespace Quorlin {

/// Where the program's instances of one user and one screen meet: a mark that one of them holds,
/// and a way to send to the one that holds it. The mark ends with its holder's process, however
/// that ends. To be used from the thread of the windows.
class InstanceChannel
{
public:
    enum class Mark {
        Ours,   ///< this object holds it
        Others, ///< another instance holds it
        None    ///< there is no channel: nobody can be met
    };
    using Handler = std::function<void(const HandoffFrame &)>;

    /// Time in which a frame must be taken.
    static constexpr int DeliveryMilliseconds = 2000;

    /// @param folder where to meet, made when it is not there; empty means the user's own.
    explicit InstanceChannel(const QString &folder = {});
    ~InstanceChannel();
    InstanceChannel(const InstanceChannel &) = delete;
    InstanceChannel &operator=(const InstanceChannel &) = delete;

    /// Takes the mark when nobody holds it, in one step. @return who holds it now.
    Mark claim();

    /// Takes frames from now on, through the event loop. Needs the mark.
    /// @return false when the system refuses; it is worth another try later.
    bool listen(const Handler &handler);
    [[nodiscard]] bool isListening() const;

    /// Stops listening and gives the mark up. May be called by the handler.
    void giveUp();

    /// Whether somebody of the same user listens. Does not need that one's co-operation, so that
    /// a busy instance is found too.
    [[nodiscard]] bool isServerThere() const;

    /// Sends a frame and waits until it was taken, for DeliveryMilliseconds at the most. One that
    /// was sent is taken later when the receiver was busy.
    /// @return true when it was taken in time.
    bool deliver(const HandoffFrame &frame) const;
    /// Sends a frame without waiting for anything. @return false when nobody listens.
    bool post(const HandoffFrame &frame) const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace Quorlin
