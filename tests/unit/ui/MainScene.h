#pragma once

#include "i18n/AppTextSource.h"
#include "settings/Registry.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"
#include "ui/FileDialogs.h"
#include "ui/WindowServices.h"
#include "ui/frmMain.h"

#include <QStringList>

#include <memory>

namespace Quorlin {

/// Answers for the user, and writes down what was asked.
class KeptDialogs : public FileDialogs
{
public:
    [[nodiscard]] QStringList askForDocuments(const QString &title, const QString &filter) override;
    [[nodiscard]] QString askForTarget(const QString &title, const QString &filter,
                                       const QString &proposedName) override;

    QStringList documents; ///< the user's choice
    QString target;        ///< the user's choice
    QStringList questions; ///< title, filter and proposed name, joined by "|"
};

/// Writes down what the window asks of the program around it.
class KeptServices : public WindowServices
{
public:
    void pHook(QWidget &window) override;
    void pUnhook() override;
    void CreateTaskbarProxy(QWidget &window, const QString &caption) override;
    void DestroyTaskbarProxy(QWidget &window) override;

    QStringList calls;
};

/// A program around the main window: the shipped texts and skins, a registry of its own and a
/// component that converts nothing but behaves as the documents' names ask.
class MainScene
{
public:
    MainScene();
    ~MainScene();
    MainScene(const MainScene &) = delete;
    MainScene &operator=(const MainScene &) = delete;

    /// Takes this as the program's folder from the next window on.
    void setProgramFolder(const QString &folder) { m_programFolder = folder; }
    void setComponent(const QString &program) { m_component = program; }

    /// A new window, not loaded yet; the one before goes.
    frmMain &make();
    /// A new window, loaded, shown and active.
    frmMain &open();
    /// Ends the window as a user does, if it lets itself.
    void close();
    [[nodiscard]] frmMain &window() { return *m_window; }

    /// Writes a document into the scene's folder, and returns its path.
    QString write(const char *name) const;
    /// The same for several; they are put into the list.
    void fill(const QList<QByteArray> &names);
    /// Waits until the list holds so many documents.
    [[nodiscard]] bool hasDocuments(qsizetype count);
    /// Presses Convert and waits for the end of the job.
    [[nodiscard]] bool convert();

    [[nodiscard]] Registry &registry() { return *m_registry; }
    void remember(const char *name, const QString &value);
    void setForMachine(const char *name, const QString &value);
    [[nodiscard]] QString remembered(const char *name);

    [[nodiscard]] const TestFolder &folder() const { return m_folder; }

    KeptMessages messages;
    KeptDialogs dialogs;
    KeptServices services;
    QStringList opened; ///< files
    QStringList pages;

private:
    void end();

    TestFolder m_folder;
    AppTextSource m_texts;
    QString m_programFolder;
    QString m_component;
    std::unique_ptr<Registry> m_registry;
    std::unique_ptr<frmMain> m_window;
};

} // namespace Quorlin
