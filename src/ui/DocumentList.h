#pragma once

#include <QObject>
#include <QStringList>

namespace Quorlin {

class FileList;

/// The documents of the next conversion: their full paths, and the visible list of their names.
/// Entry n of the visible list always belongs to path n. A path may be in the list several times.
class DocumentList : public QObject
{
    Q_OBJECT

public:
    /// @param list shows the names; must outlive the object's use.
    explicit DocumentList(FileList &list, QObject *parent = nullptr);

    // The paths alone: whoever changes them changes the visible list as well, at the same place.
    // Positions count from 1; one that does not exist does no harm.

    /// Empty when there is no such position.
    [[nodiscard]] QString DocFullName(qint32 Index) const;
    /// The collection itself, not a copy.
    [[nodiscard]] const QStringList &DocFullNameList() const { return m_documents; }
    /// Inserts before a position that exists, appends otherwise.
    void AddDocFullName(const QString &Document, qint32 Index = 0);
    void RemoveDocFullName(qint32 Index);
    void DocFullNameClear();
    /// What the visible list shows of a path: the text after its last separator.
    [[nodiscard]] static QString GetNameFromFullPath(const QString &FullPath);

    [[nodiscard]] qint32 count() const { return qint32(m_documents.size()); }
    /// There is a current entry, and it is selected.
    [[nodiscard]] bool hasCurrent() const;

    // Both halves at once.

    /// Appends documents in their order.
    void addDocuments(const QStringList &documents);
    /// Does nothing without a current entry; its neighbour becomes the current one.
    void removeCurrent();
    void clear();

    // The current entry moves and stays the current one; where it cannot, nothing changes.
    void moveToFirst();
    void moveUp();
    void moveDown();
    void moveToLast();

Q_SIGNALS:
    /// The list holds other documents than before, or the same in another order.
    void changed();

private:
    [[nodiscard]] bool has(qint32 index) const { return index >= 1 && index <= count(); }
    void moveCurrent(int row);

    FileList &m_list;
    QStringList m_documents;
};

} // namespace Quorlin
