#include "ui/NamedMenu.h"

#include "winsupport/TextSource.h"

namespace Quorlin {

NamedMenu::NamedMenu(const char *name, QWidget *parent) : QMenu(parent)
{
    setObjectName(QLatin1String(name));
}

QAction *NamedMenu::addEntry(const char *name)
{
    auto *const entry = addAction(QString());
    entry->setObjectName(QLatin1String(name));
    return entry;
}

NamedMenu *NamedMenu::addBranch(const char *name, const char *entryName)
{
    auto *const branch = new NamedMenu(name, this);
    addMenu(branch)->setObjectName(QLatin1String(entryName));
    return branch;
}

void NamedMenu::addLine(const char *name)
{
    addSeparator()->setObjectName(QLatin1String(name));
}

void NamedMenu::setKeys(QAction &entry, const QKeySequence &keys)
{
    // An entry of a menu that pops up listens to no keys of this context.
    entry.setShortcutContext(Qt::WidgetShortcut);
    entry.setShortcut(keys);
    entry.setShortcutVisibleInContextMenu(true);
}

void NamedMenu::setText(QAction &entry, const QString &text)
{
    entry.setText(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")));
}

void NamedMenu::setText(QAction &entry, const TextSource &texts, const char *key)
{
    setText(entry, texts.text(QLatin1String(key)));
}

} // namespace Quorlin
