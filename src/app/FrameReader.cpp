#include "app/FrameReader.h"

#include <QtEndian>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr qsizetype VersionAt = 4;
constexpr qsizetype KindAt = 6;
constexpr qsizetype TagAt = 8;
constexpr qsizetype CountAt = 12;

template <typename Number>
Number numberAt(const QByteArray &head, qsizetype position)
{
    return qFromLittleEndian<Number>(head.constData() + position);
}

} // namespace

QByteArray FrameReader::magic()
{
    return QByteArrayLiteral("QRLN");
}

FrameReader::State FrameReader::add(const char *bytes, qsizetype count)
{
    if (m_state != State::Incomplete)
        return m_state;
    const auto ofHead = std::min(count, HandoffFrame::HeadBytes - m_head.size());
    m_head.append(bytes, ofHead);
    if (ofHead > 0)
        m_state = readHead();
    if (m_state != State::Incomplete || !isHeadComplete())
        return m_state;
    const auto missing = static_cast<qsizetype>(m_expected) - m_frame.bytes.size();
    m_frame.bytes.append(bytes + ofHead, std::min(count - ofHead, missing));
    if (m_frame.bytes.size() == static_cast<qsizetype>(m_expected))
        m_state = State::Complete;
    return m_state;
}

bool FrameReader::isHeadComplete() const
{
    return m_head.size() == HandoffFrame::HeadBytes;
}

/// Somebody who speaks another language is known by the first byte.
FrameReader::State FrameReader::readHead()
{
    const auto beginning = m_head.left(VersionAt);
    if (!magic().startsWith(beginning))
        return State::Garbage;
    if (!isHeadComplete())
        return State::Incomplete;
    m_frame.kind = HandoffFrame::Kind{numberAt<quint16>(m_head, KindAt)};
    m_frame.tag = numberAt<quint32>(m_head, TagAt);
    m_expected = numberAt<quint32>(m_head, CountAt);
    const bool holds = numberAt<quint16>(m_head, VersionAt) == HandoffFrame::Version &&
                       m_expected > 0 && m_expected <= HandoffFrame::mostBytes(m_frame.kind);
    return holds ? State::Incomplete : State::Garbage;
}

} // namespace Quorlin
