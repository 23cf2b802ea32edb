#pragma once

#include "ui/NamedMenu.h"

namespace Quorlin {

class TextSource;

/// The menu of the list, `menu_lst`.
class ListMenu : public NamedMenu
{
    Q_OBJECT

public:
    explicit ListMenu(QWidget *parent);

    void setTexts(const TextSource &texts);
    /// What can be done with a list of this kind.
    void setState(bool isEmpty, bool isSelected);

    QAction *ss_lst_add;
    QAction *ss_lst_open;
    QAction *ss_lst_remove;
    QAction *ss_lst_clear;
    NamedMenu *ss_lst_move;
    QAction *ss_lst_first;
    QAction *ss_lst_previous;
    QAction *ss_lst_next;
    QAction *ss_lst_last;
};

} // namespace Quorlin
