#pragma once

#include <QObject>

#include <functional>

class QKeySequence;

namespace Quorlin {

class DocumentList;
class ListMenu;
class MainForm;

/// What the user does with the documents that are in the list: the buttons beside it, its menu
/// and its keys. While a conversion runs, nothing of it has an effect.
class ListCommands : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the object. @param isWorking whether a conversion runs.
    ListCommands(MainForm &form, DocumentList &list, ListMenu &menu,
                 std::function<bool()> isWorking);

    /// A result can be sent only as long as there is one: with two documents or more, the option
    /// is disabled.
    void applyMailRule();

Q_SIGNALS:
    /// The user wants to add documents.
    void addAsked();
    /// The user has emptied the list, and wants nothing in it that is still on its way.
    void cleared();
    /// The user wants to see a document.
    void openAsked(const QString &path);

private:
    using Action = void (DocumentList::*)();

    void connectButtons();
    void connectMenu();
    void connectKeys();
    void addKey(const QKeySequence &keys, const std::function<void()> &action);
    void addListKey(const QKeySequence &keys, Action action);
    void run(Action action);
    void add();
    void clear();
    void open();
    void showMenu(const QPoint &place);

    MainForm &m_form;
    DocumentList &m_list;
    ListMenu &m_menu;
    std::function<bool()> m_isWorking;
};

} // namespace Quorlin
