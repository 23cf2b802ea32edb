#include "component/protocol/LineBuffer.h"

#include <utility>

namespace Quorlin {

namespace {

/// A carriage return at the end belongs to the line end, also when the line feed is yet to come.
qsizetype sizeWithoutReturn(QByteArrayView line)
{
    return line.endsWith('\r') ? line.size() - 1 : line.size();
}

} // namespace

LineBuffer::LineBuffer(qsizetype maxLineBytes) : m_maxLineBytes(maxLineBytes) {}

void LineBuffer::append(QByteArrayView bytes)
{
    if (m_dropping) {
        const auto end = bytes.indexOf('\n');
        if (end < 0)
            return;
        m_dropping = false;
        bytes = bytes.sliced(end + 1);
    }
    m_pending.append(bytes);
}

std::optional<QByteArray> LineBuffer::takeLine()
{
    for (;;) {
        const auto end = m_pending.indexOf('\n', m_scanned);
        if (end < 0) {
            m_scanned = m_pending.size();
            if (sizeWithoutReturn(m_pending) > m_maxLineBytes) {
                m_pending.clear();
                m_scanned = 0;
                m_dropping = true;
                m_overflowed = true;
            }
            return std::nullopt;
        }
        QByteArray line = m_pending.left(end);
        m_pending.remove(0, end + 1);
        m_scanned = 0;
        line.truncate(sizeWithoutReturn(line));
        if (line.size() > m_maxLineBytes) {
            m_overflowed = true;
            continue;
        }
        return line;
    }
}

bool LineBuffer::takeOverflow()
{
    return std::exchange(m_overflowed, false);
}

} // namespace Quorlin
