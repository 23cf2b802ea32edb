#include "quorlin-skin/SkinShow.h"

#include "i18n/AppText.h"
#include "skin/AppSkin.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"
#include "ui/FileList.h"
#include "ui/PictureBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTextStream>

namespace Quorlin {

void StreamMessages::show(const QString &text, MessageStyle, const QString &title)
{
    QTextStream(stderr) << title << ": " << text << '\n';
    m_hasShown = true;
}

SkinShow::SkinShow(const SkinShowOptions &options) : m_isWorking(options.isWorking)
{
    AppText::Initialise(options.applicationFolder, m_messages);
    AppText::LoadLanguage(options.language);
    m_main.setTexts(m_texts, AppText::GetLanguage());
    m_about.setTexts(m_texts, AppText::GetLanguage(), QStringLiteral(QUORLIN_VERSION));
    for (const auto &quality : AppText::GetQualityList())
        m_main.cmbCompression->addItem(quality.text);
    m_main.OptShow->setChecked(true);
    if (!options.isEmpty)
        addDocuments();

    AppSkin::Initialise(options.applicationFolder, m_messages, m_texts);
    AppSkin::SetWindow(SkinForm::Main, m_mainWindow);
    AppSkin::SetWindow(SkinForm::About, m_aboutBox);
    wear(options.skin);
    if (m_isWorking)
        showWork();
}

SkinShow::~SkinShow()
{
    AppSkin::Finish();
}

void SkinShow::wear(const QString &skin)
{
    AppSkin::SetSkin(skin);
    const auto isBuiltIn = AppSkin::GetSkinName() == QLatin1String("None");
    m_main.setLook(AppSkin::GetLook(), isBuiltIn);
    m_about.setLook(AppSkin::GetLook(), isBuiltIn);
    if (const auto zone = AppSkin::GetMinimiseZone())
        m_main.LblMin->setGeometry(zone->left(0), zone->top(0), zone->right(0) - zone->left(0),
                                   zone->bottom(0) - zone->top(0));
    // A skin shows every control that it places.
    m_main.PctInfo->setVisible(m_isWorking);
    m_main.BarProgress->setVisible(m_isWorking);
}

void SkinShow::addDocuments()
{
    const QStringList names{
        QStringLiteral("Thistlemere Handbook.docx"),
        QStringLiteral("Harvest 2025.xlsx"),
        QStringLiteral("Spring Fair.pptx"),
        QStringLiteral("Grüße aus Thistlemere.odt"),
        QStringLiteral("Minutes of the annual meeting of the seed exchange with "
                       "all its annexes and the list of members.docx"),
        QStringLiteral("Membership.pdf"),
        QStringLiteral("Meadow.png"),
        QStringLiteral("Seed labels.ps"),
        QStringLiteral("Budget.ods"),
        QStringLiteral("Invitation.rtf"),
        QStringLiteral("Plan of the garden.svg"),
        QStringLiteral("Letter to the council.doc")};
    m_main.LstFile->addItems(names);
    m_main.LstFile->setCurrentRow(1);
}

/// What the window looks like in the middle of a conversion.
void SkinShow::showWork()
{
    for (auto *const control : m_main.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (control->objectName() != QLatin1String("PctInfo") &&
            control->objectName() != QLatin1String("imgIcon"))
            control->setEnabled(false);
    }
    m_main.setInfo(AppText::GetText(TextKey::InfoConvert));
    m_main.BarProgress->Percent(53);
}

} // namespace Quorlin
