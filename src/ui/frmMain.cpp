#include "ui/frmMain.h"

#include "i18n/AppText.h"
#include "i18n/mdli18n.h"
#include "skin/AppSkin.h"
#include "skin/controls/KelLabel.h"
#include "ui/AppMenu.h"
#include "ui/Appearance.h"
#include "ui/Arrivals.h"
#include "ui/CommandItems.h"
#include "ui/Conversion.h"
#include "ui/ConvertRequests.h"
#include "ui/DocumentFilter.h"
#include "ui/FileDialogs.h"
#include "ui/FileList.h"
#include "ui/JobControls.h"
#include "ui/ListCommands.h"
#include "ui/ListMenu.h"
#include "ui/QualityChoice.h"
#include "ui/WindowPlace.h"
#include "ui/WindowServices.h"
#include "ui/frmAbout.h"
#include "ui/mdlPartner.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QShortcut>

#include <chrono>
#include <exception>
#include <utility>

namespace Quorlin {

namespace {

/// After this, Convert takes the documents that are in the list: a folder of a network that does
/// not answer must not keep the others from being converted.
constexpr std::chrono::seconds LongestWait(2);

} // namespace

frmMain::frmMain(const Surroundings &surroundings)
    : m_surroundings(surroundings), m_settings(surroundings.registry, surroundings.programFolder),
      m_list(*LstFile),
      m_controls(std::make_unique<JobControls>(*this, m_list, surroundings.dialogs)),
      m_refused(surroundings.messages, surroundings.texts, &m_reasons),
      m_requests(std::make_unique<ConvertRequests>(
          m_list, m_refused,
          ConvertRequests::Window{[this] { return isFree(); }, [this] { convertNow(); }})),
      m_arrivals(std::make_unique<Arrivals>(
          m_list, m_refused, [this] { return AtWork() || m_requests->isPending(); })),
      menu_app(new AppMenu(this)), menu_lst(new ListMenu(this)),
      m_listCommands(
          std::make_unique<ListCommands>(*this, m_list, *menu_lst, [this] { return AtWork(); })),
      m_appearance(std::make_unique<Appearance>(*this, *menu_app, *menu_lst, surroundings.texts))
{
    connect(m_controls.get(), &JobControls::workingModeChanged, this, &frmMain::workingModeChanged);
    connect(m_appearance.get(), &Appearance::languageChanged, this, &frmMain::showQualities);
    connect(m_appearance.get(), &Appearance::skinChanged, m_controls.get(),
            &JobControls::showState);
    connectButtons();
    connectOptions();
    connectList();
    connectArrivals();
}

frmMain::~frmMain()
{
    AppSkin::SetWindow(SkinForm::Main, {});
}

void frmMain::connectButtons()
{
    connect(lblClose, &KelLabel::Click, this, &QWidget::close);
    connect(LblMin, &KelLabel::Click, this, &QWidget::showMinimized);
    connect(LblHelp, &KelLabel::Click, this, &frmMain::LblHelp_Click);
    connect(LblConvert, &KelLabel::Click, this, &frmMain::startConversion);
    connect(LblLibConvert, &KelLabel::AccessKeyPress, this, &frmMain::startConversion);
    connect(menu_app, &AppMenu::aboutChosen, this, &frmMain::ss_app_about_Click);
    connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
            &frmMain::LblHelp_Click);
}

/// A caption does what its option does.
void frmMain::connectOptions()
{
    const auto connectCaption = [this](KelLabel *caption, QCheckBox *option) {
        const auto toggle = [this, option] {
            if (!AtWork())
                option->toggle();
        };
        connect(caption, &KelLabel::Click, this, toggle);
        connect(caption, &KelLabel::AccessKeyPress, this, toggle);
    };
    connectCaption(LblShow, OptShow);
    connectCaption(LblLink, OptLink);
    connectCaption(LblMail, OptMail);
    connect(LblCompress, &KelLabel::AccessKeyPress, this,
            [this] { cmbCompression->setFocus(Qt::ShortcutFocusReason); });
}

void frmMain::connectList()
{
    connect(m_listCommands.get(), &ListCommands::addAsked, this, &frmMain::ss_lst_add_Click);
    connect(m_listCommands.get(), &ListCommands::cleared, m_requests.get(),
            &ConvertRequests::cancel);
    connect(m_listCommands.get(), &ListCommands::cleared, m_arrivals.get(), &Arrivals::cancel);
    connect(m_listCommands.get(), &ListCommands::openAsked, this, &frmMain::openFile);
    connect(LstFile, &FileList::filesDropped, this, [this](const QStringList &paths) {
        if (!AtWork())
            m_arrivals->add(paths);
    });
}

void frmMain::connectArrivals()
{
    connect(&m_received, &ReceivedTexts::due, this, &frmMain::AddCommandLineFiles);
    connect(m_requests.get(), &ConvertRequests::settled, m_arrivals.get(), &Arrivals::takeWaiting);
    connect(m_arrivals.get(), &Arrivals::settled, this, [this] {
        if (m_patience.isActive())
            convertNow();
    });
    m_patience.setSingleShot(true);
    m_patience.setInterval(LongestWait);
    connect(&m_patience, &QTimer::timeout, this, &frmMain::convertNow);
}

bool frmMain::load()
{
    try {
        if (loadSteps())
            return true;
    } catch (const std::exception &) {
        m_surroundings.messages.show(
            QStringLiteral("Erreur inconnu lors du chargement de l'application"),
            MessageStyle::Plain, QStringLiteral("Quorlin"));
    }
    unload();
    return false;
}

bool frmMain::loadSteps()
{
    mdli18n::AdaptFormFonts(*this);
    m_controls->showState();
    m_surroundings.services.pHook(*this);
    OptShow->setChecked(m_settings.showsResult());
    OptLink->setChecked(m_settings.merges());
    const auto language = m_settings.language();
    if (!makeComponent())
        return false;
    m_appearance->setLanguage(language);
    cmbCompression->setCurrentIndex(m_settings.quality(cmbCompression->count()));
    m_surroundings.services.CreateTaskbarProxy(*this, windowTitle());
    AppSkin::SetWindow(SkinForm::Main, m_skinWindow);
    m_appearance->setSkin(m_settings.skin());
    m_appearance->fillMenus();
    restorePosition();
    m_isLoaded = true;
    return true;
}

/// The component's objects, and what the driver needs to know of printer and qualities.
bool frmMain::makeComponent()
{
    const auto &texts = m_surroundings.texts;
    if (!Conversion::canBeMade(m_surroundings.component)) {
        m_surroundings.messages.show(texts.text(QStringLiteral("ErrorPDFLibNotFound")),
                                     MessageStyle::Critical,
                                     texts.text(QStringLiteral("ErrorWindowTitle")));
        return false;
    }
    m_conversionSettings = ConversionSettings::load(m_surroundings.programFolder);
    if (!m_conversionSettings) {
        m_surroundings.messages.show(
            QStringLiteral("Quorlin V2 is corrupted, reinstall the product."),
            MessageStyle::Critical, texts.text(QStringLiteral("ErrorWindowTitle")));
        return false;
    }
    const Conversion::Surroundings surroundings{
        *m_controls, m_surroundings.messages, texts,
        [this](const QString &fileName) { openFile(fileName); }, m_reasons};
    m_conversion =
        std::make_unique<Conversion>(m_surroundings.component, *m_conversionSettings, surroundings);
    return true;
}

void frmMain::warmUp()
{
    m_conversion->warm();
}

void frmMain::restorePosition()
{
    if (const auto place = WindowPlace::choose(m_settings.position(), size()))
        move(*place);
}

bool frmMain::AtWork() const
{
    return m_controls->isWorking();
}

QString frmMain::Language() const
{
    return m_appearance->language();
}

void frmMain::Language(const QString &name)
{
    m_appearance->setLanguage(name);
}

void frmMain::showQualities()
{
    QualityChoice choice(*cmbCompression);
    m_conversionSettings->jobOptions.refresh(
        choice, [](const QString &key) { return AppText::GetQualityText(key); });
}

void frmMain::AddCommandLineFiles(const QString &text)
{
    const auto items = CommandItems::split(text);
    if (CommandItems::verbOf(items) == CommandItems::Verb::Print)
        m_requests->add(items);
    else
        m_arrivals->add(items);
}

bool frmMain::isTakingIn() const
{
    return m_arrivals->isBusy() || m_requests->isBusy();
}

/// Nothing happens by itself under a message or a menu, nor before all results are delivered.
bool frmMain::isFree() const
{
    return m_conversion && !m_conversion->isDelivering() && !AtWork() && !m_refused.isTelling() &&
           !QApplication::activePopupWidget();
}

void frmMain::ReadPendingFile()
{
    const auto text = m_settings.takePendingFile();
    if (!text.isEmpty())
        AddCommandLineFiles(text);
}

void frmMain::ReceiveMessage(const QString &Message)
{
    m_received.receive(Message);
}

void frmMain::showEvent(QShowEvent *event)
{
    MainForm::showEvent(event);
    m_received.windowShown();
}

void frmMain::ss_lst_add_Click()
{
    const auto &texts = m_surroundings.texts;
    m_arrivals->add(m_surroundings.dialogs.askForDocuments(
        texts.text(QStringLiteral("DialogOpenTitle")), DocumentFilter::text(texts)));
}

/// Documents that still arrive belong to the job that the user asks for.
void frmMain::startConversion()
{
    if (AtWork())
        return;
    if (m_arrivals->isBusy())
        m_patience.start();
    else
        convertNow();
}

void frmMain::convertNow()
{
    m_patience.stop();
    m_conversion->LblConvert_Click();
}

/// Nothing opens any more when the user has seen the program end.
void frmMain::openFile(const QString &fileName)
{
    if (!m_isUnloaded)
        m_surroundings.openFile(fileName);
}

void frmMain::workingModeChanged(bool working)
{
    m_requests->workingModeChanged(working);
    if (working)
        return;
    m_arrivals->takeWaiting();
    m_listCommands->applyMailRule();
}

void frmMain::LblHelp_Click()
{
    if (!AtWork())
        m_surroundings.openLink(mdlPartner::GetProductLink(Language()));
}

void frmMain::ss_app_about_Click()
{
    auto *const about = new frmAbout(
        {m_surroundings.registry, m_surroundings.texts, Language(), m_surroundings.openLink}, this);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->setWindowModality(Qt::WindowModal);
    about->show();
}

void frmMain::contextMenuEvent(QContextMenuEvent *event)
{
    if (!AtWork())
        menu_app->popup(event->globalPos());
}

/// A press soon after another one is told so, and asks for no menu by itself.
void frmMain::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton && !AtWork())
        menu_app->popup(event->globalPosition().toPoint());
    else
        MainForm::mouseDoubleClickEvent(event);
}

/// Whatever has the focus: not every keyboard has a key for menus.
void frmMain::keyPressEvent(QKeyEvent *event)
{
    const auto isMenuKey = event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier;
    if (isMenuKey && !AtWork())
        menu_app->popup(mapToGlobal(lblTitle->geometry().bottomLeft()));
    else
        MainForm::keyPressEvent(event);
}

void frmMain::closeEvent(QCloseEvent *event)
{
    if (AtWork() && !m_endedBySystem) {
        event->ignore();
        return;
    }
    event->accept();
    // Settings that somebody else is writing just now can take a while.
    hide();
    unload();
}

void frmMain::endBySystem()
{
    m_endedBySystem = true;
    close();
    unload();
}

void frmMain::unload()
{
    if (std::exchange(m_isUnloaded, true))
        return;
    m_patience.stop();
    m_requests->cancel();
    m_surroundings.services.pUnhook();
    for (auto *const about : findChildren<frmAbout *>())
        about->close();
    saveSettings();
    m_surroundings.services.DestroyTaskbarProxy(*this);
    Q_EMIT unloaded();
}

/// What was never in use keeps what is remembered of it: a program that could not start must not
/// forget what the user had chosen.
void frmMain::saveSettings()
{
    if (m_startMode == 1)
        m_settings.clearStart();
    m_settings.setShowsResult(OptShow->isChecked());
    m_settings.setMerges(OptLink->isChecked());
    if (!m_isLoaded)
        return;
    m_settings.setQuality(cmbCompression->currentIndex());
    m_settings.setLanguage(Language());
    m_settings.setSkin(m_appearance->skin());
    m_settings.setPosition(pos());
}

} // namespace Quorlin
