#include "ui/SystemFileDialogs.h"

#include "ui/ApplicationLook.h"
#include "ui/DocumentFilter.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QScreen>
#include <QStandardPaths>
#include <QTreeView>

namespace Quorlin {

namespace {

/// While a name is typed, a list of those that match is open. As long as it is, the toolkit takes
/// no note of another window becoming the active one.
class FileDialog : public QFileDialog
{
public:
    using QFileDialog::QFileDialog;

protected:
    void done(int result) override
    {
        if (auto *const names = QApplication::activePopupWidget())
            names->close();
        QFileDialog::done(result);
    }
};

/// In average letters and lines.
constexpr int ComfortableWidth = 92;
constexpr int ComfortableHeight = 30;

constexpr int KindColumn = 2;

/// The name takes what the other columns leave, so that nothing in them is cut. Its extension
/// tells the kind.
void arrangeColumns(const QFileDialog &dialog)
{
    const auto *const view = dialog.findChild<QTreeView *>(QStringLiteral("treeView"));
    if (!view)
        return;
    auto &header = *view->header();
    header.setStretchLastSection(false);
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(0, QHeaderView::Stretch);
    header.hideSection(KindColumn);
}

} // namespace

QStringList SystemFileDialogs::askForDocuments(const QString &title, const QString &filter)
{
    auto *const dialog = makeDialog(title, filter);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    return ask(dialog);
}

QString SystemFileDialogs::askForTarget(const QString &title, const QString &filter,
                                        const QString &proposedName)
{
    const QFileInfo proposal(proposedName);
    if (proposal.isAbsolute())
        m_folder = proposal.path();
    auto *const dialog = makeDialog(title, filter);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setDefaultSuffix(QStringLiteral("pdf"));
    dialog->selectFile(proposal.fileName());
    return ask(dialog).value(0);
}

QFileDialog *SystemFileDialogs::makeDialog(const QString &title, const QString &filter)
{
    if (m_folder.isEmpty() || !QFileInfo(m_folder).isDir())
        m_folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    // Not everybody has a folder for documents; its name would stand in the dialog for a file.
    if (!QFileInfo(m_folder).isDir())
        m_folder = QDir::homePath();
    ApplicationLook::ensure();
    auto *const dialog = new FileDialog(m_window, title, m_folder);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setSizeGripEnabled(false);
    dialog->setNameFilters(DocumentFilter::toolkitFilters(filter));
    const auto letters = dialog->fontMetrics();
    const QSize comfortable(letters.averageCharWidth() * ComfortableWidth,
                            letters.height() * ComfortableHeight);
    dialog->resize(comfortable.boundedTo(dialog->screen()->availableSize() * 0.9));
    arrangeColumns(*dialog);
    return dialog;
}

QStringList SystemFileDialogs::ask(QFileDialog *dialog)
{
    // The window may go, and the dialog with it, while the user is asked.
    const QPointer<QFileDialog> asked(dialog);
    const auto isChosen = dialog->exec() == QDialog::Accepted;
    if (!asked)
        return {};
    const auto files = isChosen ? dialog->selectedFiles() : QStringList();
    if (isChosen)
        m_folder = dialog->directory().absolutePath();
    delete dialog;
    return files;
}

} // namespace Quorlin
