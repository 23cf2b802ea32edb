#include "ui/AppMenu.h"

#include <QActionGroup>

#include <utility>

namespace Quorlin {

namespace {

/// One entry for each name, in order, of which one can be marked.
void fill(NamedMenu &menu, const char *entryName, QStringList names)
{
    names.sort(Qt::CaseInsensitive);
    menu.clear();
    delete menu.findChild<QActionGroup *>();
    auto *const group = new QActionGroup(&menu);
    for (const auto &name : std::as_const(names)) {
        auto *const entry = menu.addEntry(entryName);
        NamedMenu::setText(*entry, name);
        entry->setData(name);
        entry->setCheckable(true);
        group->addAction(entry);
    }
    menu.menuAction()->setEnabled(!names.isEmpty());
}

void mark(const NamedMenu &menu, const QString &name)
{
    for (auto *const entry : menu.actions())
        entry->setChecked(entry->data().toString() == name);
}

} // namespace

AppMenu::AppMenu(QWidget *parent)
    : NamedMenu("menu_app", parent), m_languages(addBranch("menu_app_language", "ss_app_language")),
      m_skins(addBranch("menu_app_skin", "ss_app_skin"))
{
    addLine("ss_app_sep1");
    m_classic = addEntry("ss_app_classic");
    m_advanced = addEntry("ss_app_advanced");
    addLine("ss_app_sep2");
    addLine("ss_app_sep3");
    m_about = addEntry("ss_app_about");
    // There is one presentation only: entries that do nothing would be a riddle.
    m_classic->setVisible(false);
    m_advanced->setVisible(false);
    connect(m_languages, &QMenu::triggered, this,
            [this](const QAction *entry) { Q_EMIT languageChosen(entry->data().toString()); });
    connect(m_skins, &QMenu::triggered, this,
            [this](const QAction *entry) { Q_EMIT skinChosen(entry->data().toString()); });
    connect(m_about, &QAction::triggered, this, &AppMenu::aboutChosen);
}

void AppMenu::setTexts(const TextSource &texts)
{
    setText(*m_languages->menuAction(), texts, "MenuAppLanguage");
    setText(*m_skins->menuAction(), texts, "MenuAppSkin");
    setText(*m_classic, texts, "MenuAppClassic");
    setText(*m_advanced, texts, "MenuAppAdvanced");
    setText(*m_about, texts, "MenuAppAbout");
}

void AppMenu::setLanguages(const QStringList &names)
{
    fill(*m_languages, "ss_app_language_item", names);
}

void AppMenu::setSkins(const QStringList &names)
{
    fill(*m_skins, "ss_app_skin_item", names);
}

void AppMenu::markLanguage(const QString &name)
{
    mark(*m_languages, name);
}

void AppMenu::markSkin(const QString &name)
{
    mark(*m_skins, name);
}

} // namespace Quorlin
