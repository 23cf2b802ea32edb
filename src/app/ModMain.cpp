#include "app/ModMain.h"

#include "app/CommandText.h"
#include "app/HandoffFrame.h"
#include "app/SystemServices.h"
#include "app/mdlMultipleInstanceDialog.h"
#include "convert/mdlOpenFile.h"
#include "i18n/AppText.h"
#include "i18n/AppTextSource.h"
#include "settings/IniFile.h"
#include "settings/Registry.h"
#include "settings/SystemRegistry.h"
#include "skin/AppSkin.h"
#include "ui/FileList.h"
#include "ui/MessageBoxes.h"
#include "ui/SystemFileDialogs.h"
#include "ui/frmMain.h"
#include "ui/mdlPartner.h"
#include "winsupport/Interruption.h"

#include <QApplication>
#include <QFileInfo>
#include <QPoint>
#include <QTimer>

#include <chrono>
#include <exception>
#include <optional>

namespace Quorlin::ModMain {

namespace {

constexpr int CannotStart = 1;
/// After this, the window has been painted; what the first moment does not need begins.
constexpr auto FirstMoment = std::chrono::milliseconds(100);
/// Both remember the same place; a window that covers another one whole would look like it.
constexpr QPoint BesideTheOther(28, 28);

/// What a component is made of, or nothing, however its making fails.
template <typename Made>
std::unique_ptr<Made> tryToMake(const std::function<std::unique_ptr<Made>()> &make)
{
    try {
        return make();
    } catch (const std::exception &) {
        return nullptr;
    }
}

void complain(MessageService &messages, const char *text)
{
    messages.show(QLatin1String(text), MessageStyle::Critical, QStringLiteral("Error"));
}

QString programFolder()
{
    return QFileInfo(QCoreApplication::applicationFilePath()).canonicalPath();
}

/// The texts and the skin of the program, as long as the program uses them.
class Presentation
{
public:
    Presentation(const QString &folder, MessageService &messages)
    {
        AppText::Initialise(folder, messages);
        AppSkin::Initialise(folder, messages, texts);
    }
    ~Presentation() { AppSkin::Finish(); }
    Presentation(const Presentation &) = delete;
    Presentation &operator=(const Presentation &) = delete;

    AppTextSource texts;
};

/// Gives the documents to the instance that runs already, in several texts when one has no room
/// for them.
/// @return the exit code; nothing when that instance has ended meanwhile and this is now the first.
std::optional<int> handOver(const QStringList &items, MessageService &messages)
{
    switch (mdlMultipleInstanceDialog::WaitForServer()) {
    case ServerSearch::Result::ServerFound:
        for (const auto &text : CommandText::parts(items, HandoffFrame::MostCharacters))
            mdlMultipleInstanceDialog::SendData(text);
        return 0;
    case ServerSearch::Result::NotAnswering:
        messages.show(QStringLiteral("L'application Quorlin ne répond pas."), MessageStyle::Plain,
                      QStringLiteral("Quorlin"));
        return CannotStart;
    case ServerSearch::Result::NowFirst:
        break;
    }
    return std::nullopt;
}

void connectEnd(frmMain &window, const Interruption &interruption, bool &hasEnded)
{
    QObject::connect(&window, &frmMain::unloaded, &window, [&hasEnded] { hasEnded = true; });
    // Not quit(), which does nothing for a message that is shown before the program's own loop
    // runs.
    QObject::connect(
        &window, &frmMain::unloaded, qApp, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
    QObject::connect(&interruption, &Interruption::requested, &window, &frmMain::endBySystem);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &window, &frmMain::endBySystem);
}

/// The window's life, from its load until the program is to end.
/// @param isFirst no other window of the program was there before.
int showWindow(Registry &registry, MessageBoxes &messages, const QString &commandText, bool isFirst)
{
    const auto folder = programFolder();
    const Presentation presentation(folder, messages);
    SystemFileDialogs dialogs;
    SystemServices services;
    frmMain window({registry,
                    messages,
                    presentation.texts,
                    dialogs,
                    services,
                    folder,
                    {},
                    &mdlOpenFile::ShellOpenFile,
                    &mdlPartner::OpenLink});
    messages.setWindow(&window);
    dialogs.setWindow(&window);
    Interruption interruption;
    bool hasEnded = false;
    connectEnd(window, interruption, hasEnded);
    if (!window.load())
        return CannotStart;
    // The end may come while the load shows a message.
    if (hasEnded)
        return 0;
    if (!isFirst)
        window.move(window.pos() + BesideTheOther);
    window.StartMode(commandText.isEmpty() ? 0 : 1);
    window.show();
    window.LstFile->clear();
    if (!commandText.isEmpty())
        window.AddCommandLineFiles(commandText);
    QTimer::singleShot(FirstMoment, &window, [&window] {
        window.warmUp();
        window.ReadPendingFile();
    });
    return QApplication::exec();
}

} // namespace

SettingsComponents SettingsComponents::ofSystem()
{
    return {[] { return std::make_unique<IniFile>(); },
            [] { return std::make_unique<Registry>(SystemRegistry::store()); }};
}

bool CheckIniFileComponent(const SettingsComponents &components, MessageService &messages)
{
    if (tryToMake(components.makeIniFile))
        return true;
    complain(messages, "Can't find the xbIniFile component");
    return false;
}

std::unique_ptr<Registry> CheckRegistryComponent(const SettingsComponents &components,
                                                 MessageService &messages)
{
    auto registry = tryToMake(components.makeRegistry);
    if (!registry)
        complain(messages, "Can't find the xbRegistry component");
    return registry;
}

bool CheckSettingsFiles(const QString &programFolder, MessageService &messages)
{
    if (QFileInfo(programFolder + QLatin1String("/Settings")).isDir() &&
        QFileInfo(programFolder + QLatin1String("/Quorlin.ini")).isFile())
        return true;
    complain(messages, "Quorlin V2 is corrupted, reinstall the product.");
    return false;
}

int Main(const QStringList &arguments)
{
    MessageBoxes messages;
    const auto components = SettingsComponents::ofSystem();
    const auto folder = programFolder();
    if (!CheckIniFileComponent(components, messages))
        return CannotStart;
    const auto registry = CheckRegistryComponent(components, messages);
    if (!registry || !CheckSettingsFiles(folder, messages))
        return CannotStart;
    registry->SetAppParam(RegistryRoot::CurrentUser, UserSettings::key());
    mdlPartner::InitWebLinks(folder);
    const auto commandText = CommandText::make(arguments);
    const auto isFirst = !mdlMultipleInstanceDialog::PrevInstance();
    if (!isFirst && !commandText.isEmpty()) {
        if (const auto code = handOver(CommandText::items(arguments), messages))
            return *code;
    }
    return showWindow(*registry, messages, commandText, isFirst);
}

} // namespace Quorlin::ModMain
