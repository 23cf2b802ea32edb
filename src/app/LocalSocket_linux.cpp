#include "app/LocalSocket.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace Quorlin {

namespace {

// The sticky bit keeps cleaners of temporary folders away.
constexpr mode_t Mode = S_ISVTX | 0600;

bool setAddress(sockaddr_un &address, const QByteArray &path)
{
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    return true;
}

Descriptor makeSocket()
{
    return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

const sockaddr *general(const sockaddr_un &address)
{
    return reinterpret_cast<const sockaddr *>(&address);
}

/// Waits until the socket can be used again. @return false when the time is over.
bool waitFor(const Descriptor &socket, short event, const QDeadlineTimer &deadline)
{
    pollfd waiting = {socket.number(), event, 0};
    const auto result = ::poll(&waiting, 1, static_cast<int>(deadline.remainingTime()));
    return result > 0 || (result < 0 && errno == EINTR);
}

LocalSocket::Outcome afterFailure()
{
    return errno == EAGAIN || errno == EINTR ? LocalSocket::Outcome::NothingYet
                                             : LocalSocket::Outcome::Closed;
}

} // namespace

namespace LocalSocket {

/// The name appears when the socket listens already, and takes the place of a dead one at once.
Descriptor listenAt(const QByteArray &path)
{
    const auto newPath = path + ".new";
    sockaddr_un address = {};
    if (!setAddress(address, newPath))
        return Descriptor(-1);
    auto socket = makeSocket();
    ::unlink(newPath.constData());
    const bool works =
        socket.isOpen() && ::bind(socket.number(), general(address), sizeof address) == 0 &&
        ::chmod(newPath.constData(), Mode) == 0 && ::listen(socket.number(), SOMAXCONN) == 0 &&
        std::rename(newPath.constData(), path.constData()) == 0;
    return works ? std::move(socket) : Descriptor(-1);
}

void removeName(const QByteArray &path)
{
    ::unlink(path.constData());
}

Descriptor acceptFrom(const Descriptor &listener, bool &mayGoOn)
{
    Descriptor socket(::accept4(listener.number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    mayGoOn = socket.isOpen() || errno == EAGAIN || errno == EINTR || errno == ECONNABORTED;
    return socket;
}

Descriptor connectTo(const QByteArray &path)
{
    sockaddr_un address = {};
    auto socket = makeSocket();
    const bool works = socket.isOpen() && setAddress(address, path) &&
                       ::connect(socket.number(), general(address), sizeof address) == 0;
    return works ? std::move(socket) : Descriptor(-1);
}

bool isOfSameUser(const Descriptor &socket)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    return ::getsockopt(socket.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == ::geteuid();
}

Outcome receive(const Descriptor &socket, char *bytes, qsizetype most, qsizetype &count)
{
    const auto result = ::recv(socket.number(), bytes, static_cast<std::size_t>(most), 0);
    count = result > 0 ? result : 0;
    if (result > 0)
        return Outcome::Done;
    return result == 0 ? Outcome::Closed : afterFailure();
}

bool sendAll(const Descriptor &socket, const QByteArray &bytes, const QDeadlineTimer &deadline)
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const auto result = ::send(socket.number(), bytes.constData() + sent,
                                   static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (result >= 0)
            sent += result;
        else if (afterFailure() == Outcome::Closed || !waitFor(socket, POLLOUT, deadline))
            return false;
    }
    return true;
}

int receiveByte(const Descriptor &socket, const QDeadlineTimer &deadline)
{
    for (;;) {
        char byte = 0;
        qsizetype count = 0;
        const auto outcome = receive(socket, &byte, 1, count);
        if (outcome == Outcome::Done)
            return static_cast<uchar>(byte);
        if (outcome == Outcome::Closed || !waitFor(socket, POLLIN, deadline))
            return -1;
    }
}

} // namespace LocalSocket

} // namespace Quorlin
