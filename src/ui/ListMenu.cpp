#include "ui/ListMenu.h"

namespace Quorlin {

ListMenu::ListMenu(QWidget *parent) : NamedMenu("menu_lst", parent)
{
    ss_lst_add = addEntry("ss_lst_add");
    addLine("ss_lst_sep1");
    ss_lst_open = addEntry("ss_lst_open");
    ss_lst_remove = addEntry("ss_lst_remove");
    ss_lst_move = addBranch("menu_lst_move", "ss_lst_move");
    ss_lst_first = ss_lst_move->addEntry("ss_lst_first");
    ss_lst_previous = ss_lst_move->addEntry("ss_lst_previous");
    ss_lst_move->addLine("ss_lst_sep3");
    ss_lst_next = ss_lst_move->addEntry("ss_lst_next");
    ss_lst_last = ss_lst_move->addEntry("ss_lst_last");
    addLine("ss_lst_sep2");
    ss_lst_clear = addEntry("ss_lst_clear");
    setKeys(*ss_lst_add, QKeySequence::Open);
    setKeys(*ss_lst_remove, Qt::Key_Delete);
    setKeys(*ss_lst_first, Qt::ALT | Qt::Key_Home);
    setKeys(*ss_lst_previous, Qt::ALT | Qt::Key_Up);
    setKeys(*ss_lst_next, Qt::ALT | Qt::Key_Down);
    setKeys(*ss_lst_last, Qt::ALT | Qt::Key_End);
}

void ListMenu::setTexts(const TextSource &texts)
{
    setText(*ss_lst_add, texts, "MenuLstAdd");
    setText(*ss_lst_open, texts, "MenuLstOpen");
    setText(*ss_lst_remove, texts, "MenuLstRemove");
    setText(*ss_lst_clear, texts, "MenuLstClear");
    setText(*ss_lst_move->menuAction(), texts, "MenuLstMove");
    setText(*ss_lst_first, texts, "MenuLstFirst");
    setText(*ss_lst_previous, texts, "MenuLstPrevious");
    setText(*ss_lst_next, texts, "MenuLstNext");
    setText(*ss_lst_last, texts, "MenuLstLast");
}

void ListMenu::setState(bool isEmpty, bool isSelected)
{
    const auto hasCurrent = !isEmpty && isSelected;
    ss_lst_add->setEnabled(true);
    ss_lst_open->setEnabled(hasCurrent);
    ss_lst_remove->setEnabled(hasCurrent);
    ss_lst_move->menuAction()->setEnabled(hasCurrent);
    ss_lst_clear->setEnabled(!isEmpty);
}

} // namespace Quorlin
