#pragma once

#include "ui/DialogLanguage.h"

#include <QObject>

namespace Quorlin {

class AppMenu;
class ListMenu;
class MainForm;
class TextSource;

/// What the main window says and what it looks like: the language and the skin in use.
class Appearance : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the object.
    Appearance(MainForm &form, AppMenu &application, ListMenu &list, const TextSource &texts);

    /// Name of the language in use.
    [[nodiscard]] QString language() const;
    /// Shows all texts in a language; the built-in ones when there is no such language, which the
    /// user is told.
    void setLanguage(const QString &name);

    /// Name of the skin in use.
    [[nodiscard]] QString skin() const;
    /// Wears a skin; the built-in layout when there is no such skin, which the user is told.
    /// @throws NumberedError when a control refuses what the skin wants of it.
    void setSkin(const QString &name);

    /// Offers all languages and skins that there are.
    void fillMenus();

Q_SIGNALS:
    void languageChanged();
    /// A skin has shown every control that it places.
    void skinChanged();

private:
    void markAccessKeys();
    void showLook();

    MainForm &m_form;
    AppMenu &m_application;
    ListMenu &m_list;
    const TextSource &m_texts;
    DialogLanguage m_dialogLanguage;
    bool m_wearsSkin = false;
};

} // namespace Quorlin
