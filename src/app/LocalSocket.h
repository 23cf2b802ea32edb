#pragma once

#include "winsupport/Descriptor.h"

#include <QByteArray>
#include <QDeadlineTimer>

namespace Quorlin {

/// Stream sockets between processes of this machine, named by a path in the encoding of file
/// names. No call waits unless it takes a deadline; no program that is started inherits one.
namespace LocalSocket {

enum class Outcome { Done, NothingYet, Closed };

/// Listens under a name, in place of whatever stood there. Not open when that is impossible.
[[nodiscard]] Descriptor listenAt(const QByteArray &path);
/// Takes the name away, so that nobody can connect any more.
void removeName(const QByteArray &path);

/// The next who wants to speak; not open when there is none.
/// @param mayGoOn false when the system is out of what a connection needs, so that it would be
/// vain to ask again at once.
[[nodiscard]] Descriptor acceptFrom(const Descriptor &listener, bool &mayGoOn);

/// Not open when nobody listens there, or too many wait already.
[[nodiscard]] Descriptor connectTo(const QByteArray &path);

/// True when the process at the other end runs for the same user as this one.
[[nodiscard]] bool isOfSameUser(const Descriptor &socket);

/// Reads at most `most` bytes. @param count how many came; 0 unless the outcome is Done.
[[nodiscard]] Outcome receive(const Descriptor &socket, char *bytes, qsizetype most,
                              qsizetype &count);

/// Sends all bytes. @return false when the other end is gone or the time over.
[[nodiscard]] bool sendAll(const Descriptor &socket, const QByteArray &bytes,
                           const QDeadlineTimer &deadline);
/// Reads one byte. @return -1 when the other end is gone or the time over.
[[nodiscard]] int receiveByte(const Descriptor &socket, const QDeadlineTimer &deadline);

} // namespace LocalSocket

} // namespace Quorlin
