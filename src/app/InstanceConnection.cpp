#include "app/InstanceConnection.h"

#include "app/LocalSocket.h"

#include <QPointer>

#include <array>

namespace Quorlin {

namespace {

constexpr std::size_t BytesAtOnce = 4096;

} // namespace

InstanceConnection::InstanceConnection(Descriptor socket, const Handler &handler, QObject *parent)
    : QObject(parent), m_socket(std::move(socket)), m_handler(handler),
      m_notifier(m_socket.number(), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &InstanceConnection::read);
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &InstanceConnection::finish);
    m_limit.start(MostMilliseconds);
}

void InstanceConnection::read()
{
    while (!m_isFinished && m_reader.state() == FrameReader::State::Incomplete)
        if (!readMore())
            return;
    if (m_isFinished)
        return;
    if (m_reader.state() == FrameReader::State::Complete)
        handOn();
    else
        finish();
}

/// @return false when there is nothing to go on with.
bool InstanceConnection::readMore()
{
    std::array<char, BytesAtOnce> bytes;
    qsizetype count = 0;
    const auto outcome = LocalSocket::receive(m_socket, bytes.data(), bytes.size(), count);
    if (outcome == LocalSocket::Outcome::Closed)
        finish();
    else if (outcome == LocalSocket::Outcome::Done)
        m_reader.add(bytes.data(), count);
    return outcome == LocalSocket::Outcome::Done;
}

/// Whoever handles the frame may handle events, or end the server.
void InstanceConnection::handOn()
{
    m_notifier.setEnabled(false);
    m_limit.stop();
    m_isFinished = true;
    const QPointer<InstanceConnection> self(this);
    const auto handler = m_handler;
    const auto frame = m_reader.frame();
    handler(frame);
    if (!self)
        return;
    // A sender that does not wait for the answer any more is no failure.
    static_cast<void>(LocalSocket::sendAll(m_socket, QByteArray(1, HandoffFrame::Acknowledged),
                                           QDeadlineTimer(0)));
    Q_EMIT finished();
}

void InstanceConnection::close()
{
    m_isFinished = true;
    m_notifier.setEnabled(false);
    m_limit.stop();
    m_socket = Descriptor(-1);
}

void InstanceConnection::finish()
{
    if (m_isFinished)
        return;
    m_isFinished = true;
    Q_EMIT finished();
}

} // namespace Quorlin
