#include "ui/Appearance.h"

#include "i18n/AppText.h"
#include "skin/AppSkin.h"
#include "skin/controls/KelLabel.h"
#include "ui/AccessKeys.h"
#include "ui/AppMenu.h"
#include "ui/ApplicationLook.h"
#include "ui/FormLook.h"
#include "ui/ListMenu.h"
#include "ui/MainForm.h"

#include <QMenu>

namespace Quorlin {

Appearance::Appearance(MainForm &form, AppMenu &application, ListMenu &list,
                       const TextSource &texts)
    : m_form(form), m_application(application), m_list(list), m_texts(texts)
{
    connect(&m_application, &AppMenu::languageChosen, this, &Appearance::setLanguage);
    connect(&m_application, &AppMenu::skinChosen, this, &Appearance::setSkin);
}

QString Appearance::language() const
{
    return AppText::GetLanguage();
}

void Appearance::setLanguage(const QString &name)
{
    AppText::LoadLanguage(name);
    m_dialogLanguage.set(language());
    m_form.setTexts(m_texts, language());
    m_application.setTexts(m_texts);
    m_list.setTexts(m_texts);
    m_application.markLanguage(language());
    markAccessKeys();
    Q_EMIT languageChanged();
    if (m_wearsSkin)
        showLook();
}

void Appearance::markAccessKeys()
{
    const QList<KelLabel *> labels{m_form.LblLibConvert, m_form.LblMail, m_form.LblShow,
                                   m_form.LblLink, m_form.LblCompress};
    QStringList captions;
    for (const auto *const label : labels)
        captions.append(label->Caption());
    captions = AccessKeys::marked(captions);
    for (qsizetype at = 0; at < labels.size(); ++at)
        labels.at(at)->Caption(captions.at(at));
}

QString Appearance::skin() const
{
    return AppSkin::GetSkinName();
}

void Appearance::setSkin(const QString &name)
{
    AppSkin::SetSkin(name);
    m_wearsSkin = true;
    m_application.markSkin(skin());
    showLook();
    Q_EMIT skinChanged();
}

void Appearance::showLook()
{
    const auto look = AppSkin::GetLook();
    ApplicationLook::wear(look);
    m_form.setLook(look, skin() == QLatin1String("None"));
    for (auto *const menu : m_form.findChildren<QMenu *>())
        menu->setFont(FormLook::font(look, look.fontSize()));
    const auto zone = AppSkin::GetMinimiseZone();
    m_form.LblMin->setVisible(zone.has_value());
    if (zone)
        m_form.LblMin->setGeometry(zone->left(0), zone->top(0), zone->right(0) - zone->left(0),
                                   zone->bottom(0) - zone->top(0));
}

void Appearance::fillMenus()
{
    m_application.setLanguages(AppText::GetLanguageList());
    m_application.setSkins(AppSkin::GetSkinList());
    m_application.markLanguage(language());
    m_application.markSkin(skin());
}

} // namespace Quorlin
