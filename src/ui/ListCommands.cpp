#include "ui/ListCommands.h"

#include "skin/controls/KelLabel.h"
#include "ui/DocumentList.h"
#include "ui/FileList.h"
#include "ui/ListMenu.h"
#include "ui/MainForm.h"

#include <QCheckBox>
#include <QPushButton>
#include <QShortcut>

#include <utility>

namespace Quorlin {

namespace {

/// From this many documents on, nothing is sent by mail.
constexpr qsizetype TooManyToSend = 2;

} // namespace

ListCommands::ListCommands(MainForm &form, DocumentList &list, ListMenu &menu,
                           std::function<bool()> isWorking)
    : m_form(form), m_list(list), m_menu(menu), m_isWorking(std::move(isWorking))
{
    connectButtons();
    connectMenu();
    connectKeys();
    connect(&m_list, &DocumentList::changed, this, &ListCommands::applyMailRule);
}

void ListCommands::connectButtons()
{
    const auto button = [this](KelLabel *label, Action action) {
        connect(label, &KelLabel::Click, this, [this, action] { run(action); });
    };
    button(m_form.LblFirst, &DocumentList::moveToFirst);
    button(m_form.LblPrevious, &DocumentList::moveUp);
    button(m_form.LblNext, &DocumentList::moveDown);
    button(m_form.LblLast, &DocumentList::moveToLast);
    connect(m_form.LstFile->addButton(), &QPushButton::clicked, this, &ListCommands::add);
}

void ListCommands::connectMenu()
{
    const auto entry = [this](QAction *action, Action command) {
        connect(action, &QAction::triggered, this, [this, command] { run(command); });
    };
    entry(m_menu.ss_lst_remove, &DocumentList::removeCurrent);
    entry(m_menu.ss_lst_first, &DocumentList::moveToFirst);
    entry(m_menu.ss_lst_previous, &DocumentList::moveUp);
    entry(m_menu.ss_lst_next, &DocumentList::moveDown);
    entry(m_menu.ss_lst_last, &DocumentList::moveToLast);
    connect(m_menu.ss_lst_add, &QAction::triggered, this, &ListCommands::add);
    connect(m_menu.ss_lst_clear, &QAction::triggered, this, &ListCommands::clear);
    connect(m_menu.ss_lst_open, &QAction::triggered, this, &ListCommands::open);
}

void ListCommands::connectKeys()
{
    connect(m_form.LstFile, &FileList::deleteReleased, this,
            [this] { run(&DocumentList::removeCurrent); });
    connect(m_form.LstFile, &FileList::menuAsked, this, &ListCommands::showMenu);
    addKey(QKeySequence::Open, [this] { add(); });
    addKey(Qt::Key_Insert, [this] { add(); });
    addListKey(Qt::ALT | Qt::Key_Home, &DocumentList::moveToFirst);
    addListKey(Qt::ALT | Qt::Key_Up, &DocumentList::moveUp);
    addListKey(Qt::ALT | Qt::Key_Down, &DocumentList::moveDown);
    addListKey(Qt::ALT | Qt::Key_End, &DocumentList::moveToLast);
}

void ListCommands::addKey(const QKeySequence &keys, const std::function<void()> &action)
{
    connect(new QShortcut(keys, &m_form), &QShortcut::activated, this, action);
}

/// Elsewhere these keys have other meanings: Alt+Down opens a choice.
void ListCommands::addListKey(const QKeySequence &keys, Action action)
{
    auto *const shortcut = new QShortcut(keys, m_form.LstFile);
    shortcut->setContext(Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, action] { run(action); });
}

void ListCommands::run(Action action)
{
    if (!m_isWorking())
        (m_list.*action)();
}

void ListCommands::add()
{
    if (!m_isWorking())
        Q_EMIT addAsked();
}

void ListCommands::clear()
{
    if (m_isWorking())
        return;
    Q_EMIT cleared();
    m_list.clear();
}

void ListCommands::open()
{
    const auto path = m_list.DocFullName(m_form.LstFile->currentRow() + 1);
    if (!m_isWorking() && !path.isEmpty())
        Q_EMIT openAsked(path);
}

void ListCommands::applyMailRule()
{
    const auto canSend = m_list.DocFullNameList().size() < TooManyToSend && !m_isWorking();
    m_form.OptMail->setEnabled(canSend);
    m_form.LblMail->setEnabled(canSend);
}

void ListCommands::showMenu(const QPoint &place)
{
    if (m_isWorking())
        return;
    m_menu.setState(m_list.DocFullNameList().isEmpty(), m_list.hasCurrent());
    m_menu.popup(place);
}

} // namespace Quorlin
