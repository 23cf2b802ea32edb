#pragma once

#include "tool/ListInput.h"
#include "tool/NameList.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace Quorlin {

/// Reads lists of names, one after the other.
class ListReader : public QObject
{
    Q_OBJECT

public:
    /// @param lists files; "-" is standard input.
    ListReader(const QStringList &lists, NameList::Separator separator, QObject *parent = nullptr);

    /// Returns at once; finished() or failed() comes from the event loop, exactly once.
    void start();

Q_SIGNALS:
    /// Names are typed by a person now.
    void waitsForTyping();

    /// @param names of all lists, in their order and in the form of FileNames.
    void finished(const QStringList &names);

    /// @param text names the list and says what is wrong.
    void failed(const QString &text);

private:
    void readNext();
    void onArrived(const QByteArray &bytes);
    void onEnded(const QString &error);
    void fail(const QString &why);
    [[nodiscard]] QString listName() const;

    QStringList m_lists;
    NameList::Separator m_separator;
    qsizetype m_current = -1;
    std::unique_ptr<NameList> m_names;
    ListInput *m_input = nullptr;
    QStringList m_found;
};

} // namespace Quorlin
