#include "MainScene.h"

#include "i18n/AppText.h"
#include "settings/LayeredRegistry.h"
#include "skin/AppSkin.h"
#include "skin/controls/KelLabel.h"
#include "ui/UserSettings.h"
#include "ui/mdlPartner.h"

#include <QTest>

namespace Quorlin {

namespace {

constexpr int LongestJob = 20'000;

} // namespace

QStringList KeptDialogs::askForDocuments(const QString &title, const QString &filter)
{
    questions.append(title + QLatin1Char('|') + filter);
    return documents;
}

QString KeptDialogs::askForTarget(const QString &title, const QString &filter,
                                  const QString &proposedName)
{
    questions.append(title + QLatin1Char('|') + filter + QLatin1Char('|') + proposedName);
    return target;
}

void KeptServices::pHook(QWidget &)
{
    calls.append(QStringLiteral("pHook"));
}

void KeptServices::pUnhook()
{
    calls.append(QStringLiteral("pUnhook"));
}

void KeptServices::CreateTaskbarProxy(QWidget &, const QString &caption)
{
    calls.append(QStringLiteral("CreateTaskbarProxy ") + caption);
}

void KeptServices::DestroyTaskbarProxy(QWidget &)
{
    calls.append(QStringLiteral("DestroyTaskbarProxy"));
}

MainScene::MainScene()
    : m_programFolder(QStringLiteral(QUORLIN_SOURCE_DIR "/data")),
      m_component(QStringLiteral(QUORLIN_FAKE_COMPONENT))
{
    qputenv("LC_ALL", "C.UTF-8");
    const auto store = std::make_shared<LayeredRegistry>(m_folder.path("user/registry.db"),
                                                         m_folder.path("machine/registry.db"));
    m_registry = std::make_unique<Registry>(store);
    m_registry->SetAppParam(RegistryRoot::CurrentUser, UserSettings::key());
}

MainScene::~MainScene()
{
    end();
}

/// The window goes before the skin that it wears.
void MainScene::end()
{
    const auto hadWindow = m_window != nullptr;
    m_window.reset();
    if (hadWindow)
        AppSkin::Finish();
}

frmMain &MainScene::make()
{
    end();
    AppText::Initialise(m_programFolder, messages);
    AppText::LoadDefaultTexts();
    AppSkin::Initialise(m_programFolder, messages, m_texts);
    mdlPartner::InitWebLinks(m_programFolder);
    ComponentSettings component;
    component.program = m_component;
    m_window = std::make_unique<frmMain>(
        frmMain::Surroundings{*m_registry, messages, m_texts, dialogs, services, m_programFolder,
                              component, [this](const QString &file) { opened.append(file); },
                              [this](const QString &page) { pages.append(page); }});
    return *m_window;
}

frmMain &MainScene::open()
{
    auto &window = make();
    if (!window.load())
        qFatal("the window cannot be loaded");
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window does not become active");
    return window;
}

void MainScene::close()
{
    m_window->close();
}

QString MainScene::write(const char *name) const
{
    return m_folder.write(name, QByteArray("content of ") + name);
}

void MainScene::fill(const QList<QByteArray> &names)
{
    QStringList paths;
    for (const auto &name : names)
        paths.append(write(name.constData()));
    const auto count = m_window->DocFullNameList().size() + paths.size();
    m_window->AddCommandLineFiles(paths.join(QLatin1Char(',')));
    if (!hasDocuments(count))
        qFatal("the documents do not arrive");
}

bool MainScene::hasDocuments(qsizetype count)
{
    return QTest::qWaitFor([this, count] {
        return m_window->DocFullNameList().size() == count && !m_window->isTakingIn();
    });
}

bool MainScene::convert()
{
    Q_EMIT m_window->LblConvert->Click();
    return QTest::qWaitFor([this] { return !m_window->AtWork(); }, LongestJob);
}

void MainScene::remember(const char *name, const QString &value)
{
    m_registry->SetAppData(QLatin1String(name), value);
}

void MainScene::setForMachine(const char *name, const QString &value)
{
    m_registry->SetKey(RegistryRoot::LocalMachine, UserSettings::key(), RegistryType::Text,
                       QLatin1String(name), value);
}

QString MainScene::remembered(const char *name)
{
    return m_registry->GetAppData(QLatin1String(name));
}

} // namespace Quorlin
