#include "ui/DocumentList.h"

#include "ui/FileItem.h"
#include "ui/FileList.h"

#include <QSignalBlocker>

#include <algorithm>

namespace Quorlin {

DocumentList::DocumentList(FileList &list, QObject *parent) : QObject(parent), m_list(list) {}

QString DocumentList::DocFullName(qint32 Index) const
{
    return has(Index) ? m_documents.at(Index - 1) : QString();
}

void DocumentList::AddDocFullName(const QString &Document, qint32 Index)
{
    m_documents.insert(has(Index) ? Index - 1 : count(), Document);
    Q_EMIT changed();
}

void DocumentList::RemoveDocFullName(qint32 Index)
{
    if (!has(Index))
        return;
    m_documents.removeAt(Index - 1);
    Q_EMIT changed();
}

void DocumentList::DocFullNameClear()
{
    if (m_documents.isEmpty())
        return;
    m_documents.clear();
    Q_EMIT changed();
}

QString DocumentList::GetNameFromFullPath(const QString &FullPath)
{
    return FileItem::nameOf(FullPath);
}

bool DocumentList::hasCurrent() const
{
    const auto *const current = m_list.currentItem();
    return current && current->isSelected();
}

void DocumentList::addDocuments(const QStringList &documents)
{
    if (documents.isEmpty())
        return;
    m_documents += documents;
    m_list.appendDocuments(documents);
    Q_EMIT changed();
}

void DocumentList::removeCurrent()
{
    if (!hasCurrent())
        return;
    const auto row = m_list.currentRow();
    {
        const QSignalBlocker untilBothAreInStep(this);
        RemoveDocFullName(row + 1);
    }
    delete m_list.takeItem(row);
    m_list.setCurrentRow(std::min(row, m_list.count() - 1));
    Q_EMIT changed();
}

void DocumentList::clear()
{
    m_list.clear();
    DocFullNameClear();
}

void DocumentList::moveToFirst()
{
    moveCurrent(0);
}

void DocumentList::moveUp()
{
    moveCurrent(m_list.currentRow() - 1);
}

void DocumentList::moveDown()
{
    moveCurrent(m_list.currentRow() + 1);
}

void DocumentList::moveToLast()
{
    moveCurrent(m_list.count() - 1);
}

void DocumentList::moveCurrent(int row)
{
    const auto from = m_list.currentRow();
    if (!hasCurrent() || row < 0 || row >= m_list.count() || row == from)
        return;
    {
        const QSignalBlocker untilBothAreInStep(this);
        const auto document = DocFullName(from + 1);
        RemoveDocFullName(from + 1);
        AddDocFullName(document, row + 1);
    }
    m_list.insertItem(row, m_list.takeItem(from));
    m_list.setCurrentRow(row);
    Q_EMIT changed();
}

} // namespace Quorlin
