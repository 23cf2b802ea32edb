#pragma once

#include "ui/NamedMenu.h"

namespace Quorlin {

class TextSource;

/// The menu of the application, `menu_app`.
class AppMenu : public NamedMenu
{
    Q_OBJECT

public:
    explicit AppMenu(QWidget *parent);

    void setTexts(const TextSource &texts);

    /// The entries of `ss_app_language`; without any, it is disabled.
    void setLanguages(const QStringList &names);
    /// The entries of `ss_app_skin`; without any, it is disabled.
    void setSkins(const QStringList &names);

    /// Marks what is in use; nothing is marked when there is no such entry.
    void markLanguage(const QString &name);
    void markSkin(const QString &name);

Q_SIGNALS:
    void languageChosen(const QString &name);
    void skinChosen(const QString &name);
    void aboutChosen();

private:
    NamedMenu *m_languages;
    NamedMenu *m_skins;
    QAction *m_classic;
    QAction *m_advanced;
    QAction *m_about;
};

} // namespace Quorlin
