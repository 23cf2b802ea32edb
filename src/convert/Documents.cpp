#include "convert/Documents.h"

#include "convert/ConvertLog.h"

#include <utility>

namespace Quorlin {

Documents::Documents(std::function<void()> cleared) : m_cleared(std::move(cleared)) {}

void Documents::Add(const QString &filename, const QString &text2, const QString &text3,
                    const QString &text4)
{
    if (m_locked) {
        qCWarning(convertLog) << "Add is ignored while the object works:" << filename;
        return;
    }
    m_entries.append(DocumentEntry(filename, text2, text3, text4));
}

qint32 Documents::Count() const
{
    return static_cast<qint32>(m_entries.size());
}

DocumentEntry Documents::Item(qint32 index) const
{
    return holds(index) ? m_entries.at(index - 1) : DocumentEntry();
}

void Documents::Clear()
{
    if (m_locked) {
        qCWarning(convertLog) << "Clear is ignored while the object works";
        return;
    }
    m_entries.clear();
    if (m_cleared)
        m_cleared();
}

void Documents::setOutputFilename(qint32 index, const QString &filename)
{
    if (holds(index))
        m_entries[index - 1].setOutputFilename(filename);
}

void Documents::setFailure(qint32 index, Reason reason, const QString &detail)
{
    if (holds(index))
        m_entries[index - 1].setFailure(reason, detail);
}

bool Documents::holds(qint32 index) const
{
    return index >= 1 && index <= m_entries.size();
}

} // namespace Quorlin
