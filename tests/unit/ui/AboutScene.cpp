#include "AboutScene.h"

#include "i18n/AppText.h"
#include "settings/RegistryStore.h"
#include "settings/SystemRegistry.h"
#include "skin/AppSkin.h"
#include "ui/mdlPartner.h"

#include <QFile>
#include <QTest>

namespace Quorlin {

AboutScene::AboutScene()
{
    const auto data = QStringLiteral(QUORLIN_SOURCE_DIR "/data");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path("user")));
    qputenv("XDG_CONFIG_DIRS", QFile::encodeName(m_folder.path("machine")));
    m_registry = std::make_unique<Registry>(SystemRegistry::store());
    m_registry->SetAppParam(RegistryRoot::CurrentUser,
                            QStringLiteral("Software\\Varnex Software\\Quorlin\\2.0"));
    writeLinks();
    AppText::Initialise(data, m_messages);
    AppText::LoadLanguage(QStringLiteral("english"));
    AppSkin::Initialise(data, m_messages, m_texts);
    AppSkin::SetSkin(QStringLiteral("Varnex"));
    if (!m_messages.all().isEmpty())
        qFatal("the shipped texts or skins cannot be loaded");
}

AboutScene::~AboutScene()
{
    AppSkin::Finish();
}

std::unique_ptr<frmAbout> AboutScene::opened(const QString &language, QWidget *owner)
{
    auto about = std::make_unique<frmAbout>(
        frmAbout::Surroundings{*m_registry, m_texts, language,
                               [this](const QString &address) { m_pages.append(address); }},
        owner);
    about->show();
    about->activateWindow();
    if (!QTest::qWaitForWindowActive(about.get()))
        qFatal("the about box does not become active");
    return about;
}

void AboutScene::writeLinks(const QByteArray &without) const
{
    QByteArray settings("[WebLinks]\nAdobeInternational = https://a.example/int\n"
                        "AdobeFrench = https://a.example/fr\nAdobeGerman = https://a.example/de\n"
                        "MakerHome = https://m.example/\nMakerEnglish = https://m.example/us\n");
    if (!without.isEmpty())
        settings.replace("\n" + without, "\nNo" + without);
    m_folder.write("Quorlin.ini", settings);
    mdlPartner::InitWebLinks(m_folder.path());
}

} // namespace Quorlin
