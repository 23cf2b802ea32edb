#pragma once

#include "convert/ConversionSettings.h"
#include "skin/controls/WidgetSkinWindow.h"
#include "ui/DocumentList.h"
#include "ui/MainForm.h"
#include "ui/MainSurroundings.h"
#include "ui/ReasonWords.h"
#include "ui/ReceivedTexts.h"
#include "ui/RefusedFiles.h"
#include "ui/UserSettings.h"

#include <QTimer>

#include <memory>
#include <optional>

namespace Quorlin {

class AppMenu;
class Appearance;
class Arrivals;
class Conversion;
class ConvertRequests;
class JobControls;
class ListCommands;
class ListMenu;

/// The main window: collects documents, lets the user choose, and converts. It remembers its
/// options when it goes, and its going ends the program.
///
/// The texts and the skin of the program are those of AppText and AppSkin, which must have been
/// initialised and must last longer than the window.
class frmMain : public MainForm
{
    Q_OBJECT
    /// Name of the language in use; writing it shows all texts in that language.
    Q_PROPERTY(QString Language READ Language WRITE Language)

public:
    using Surroundings = MainSurroundings;

    explicit frmMain(const Surroundings &surroundings);
    ~frmMain() override;

    /// Reads what the user chose and prepares everything. @return false when the program must
    /// end: the user has been told, and the window has been unloaded.
    [[nodiscard]] bool load();

    /// 1 when the program was started with documents, else 0.
    [[nodiscard]] int StartMode() const { return m_startMode; }
    void StartMode(int mode) { m_startMode = mode; }

    /// A conversion runs; what the user does with the list, the options and Convert is ignored.
    [[nodiscard]] bool AtWork() const;
    /// The list of documents; positions count from 1. These members touch only the paths, not
    /// what is visible of them.
    [[nodiscard]] QString DocFullName(qint32 Index) const { return m_list.DocFullName(Index); }
    [[nodiscard]] const QStringList &DocFullNameList() const { return m_list.DocFullNameList(); }
    void AddDocFullName(const QString &Document, qint32 Index = 0)
    {
        m_list.AddDocFullName(Document, Index);
    }
    void RemoveDocFullName(qint32 Index) { m_list.RemoveDocFullName(Index); }
    void DocFullNameClear() { m_list.DocFullNameClear(); }
    [[nodiscard]] static QString GetNameFromFullPath(const QString &FullPath)
    {
        return DocumentList::GetNameFromFullPath(FullPath);
    }

    [[nodiscard]] QString Language() const;
    void Language(const QString &name);

    /// Adds the documents and folders that a command text names, separated by ",". With "/p" in
    /// front of them they are converted, unless the user has gathered others.
    void AddCommandLineFiles(const QString &text);
    /// Not everything that was added has been looked at yet.
    [[nodiscard]] bool isTakingIn() const;
    /// Takes what another program has left for this one.
    void ReadPendingFile();
    /// A command text of another start. It is handled a little later, or as soon as the window is
    /// shown. Texts that come until then are joined by ";" and are one path from then on; that is
    /// kept as it always was.
    Q_INVOKABLE void ReceiveMessage(const QString &Message);

    /// Starts the PDF component, so that the first conversion need not wait for it. To be called
    /// when the window is on the screen.
    void warmUp();

    /// Ends the window at the system's wish, even while it works.
    void endBySystem();

Q_SIGNALS:
    /// The settings are written; the program may end.
    void unloaded();

protected:
    void closeEvent(QCloseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    [[nodiscard]] bool loadSteps();
    [[nodiscard]] bool makeComponent();
    [[nodiscard]] bool isFree() const;
    void connectButtons();
    void connectOptions();
    void connectList();
    void connectArrivals();
    void unload();
    void saveSettings();
    void restorePosition();
    void startConversion();
    void convertNow();
    void openFile(const QString &fileName);
    void workingModeChanged(bool working);
    void showQualities();
    void ss_lst_add_Click();
    void ss_app_about_Click();
    void LblHelp_Click();

    Surroundings m_surroundings;
    UserSettings m_settings;
    DocumentList m_list;
    std::unique_ptr<JobControls> m_controls;
    ReasonWords m_reasons{[this] { return Language(); }};
    RefusedFiles m_refused;
    ReceivedTexts m_received;
    std::unique_ptr<ConvertRequests> m_requests;
    std::unique_ptr<Arrivals> m_arrivals;
    AppMenu *menu_app;
    ListMenu *menu_lst;
    std::unique_ptr<ListCommands> m_listCommands;
    std::unique_ptr<Appearance> m_appearance;
    std::optional<ConversionSettings> m_conversionSettings;
    std::unique_ptr<Conversion> m_conversion;
    WidgetSkinWindow m_skinWindow{*this};
    QTimer m_patience; ///< runs when Convert was pressed while documents still arrive
    bool m_isLoaded = false;
    bool m_endedBySystem = false;
    bool m_isUnloaded = false;
    int m_startMode = 0;
};

} // namespace Quorlin
