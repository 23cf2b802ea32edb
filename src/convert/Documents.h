#pragma once

#include "convert/DocumentEntry.h"

#include <QList>

#include <functional>

namespace Quorlin {

/// The ordered list of documents of one component object; positions count from 1.
///
/// While its object works the list is locked: Add and Clear then change nothing.
class Documents
{
public:
    /// @param cleared called by every Clear that took effect.
    explicit Documents(std::function<void()> cleared = {});

    /// Appends one document. @param text3 the job-options file for PDFDistiller, else empty;
    /// @param text2 and @param text4 are kept and mean nothing.
    void Add(const QString &filename, const QString &text2 = {}, const QString &text3 = {},
             const QString &text4 = {});

    [[nodiscard]] qint32 Count() const;

    /// The entry at a position from 1; an entry of empty texts for any other position.
    [[nodiscard]] DocumentEntry Item(qint32 index) const;

    /// Empties the list. What the component made for it and nobody fetched is removed.
    void Clear();

    void setLocked(bool locked) { m_locked = locked; }

    /// Notes the output of the entry at a position from 1; any other position is ignored.
    void setOutputFilename(qint32 index, const QString &filename);

    /// Notes why the entry at a position from 1 failed; any other position is ignored.
    void setFailure(qint32 index, Reason reason, const QString &detail);

private:
    [[nodiscard]] bool holds(qint32 index) const;

    QList<DocumentEntry> m_entries;
    std::function<void()> m_cleared;
    bool m_locked = false;
};

} // namespace Quorlin
