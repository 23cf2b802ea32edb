#pragma once

#include "ui/FileDialogs.h"

#include <QPointer>
#include <QWidget>

class QFileDialog;

namespace Quorlin {

/// The toolkit's own dialogs. Those of the desktop would tell capitals in extensions apart, and
/// would not ask before a file is replaced whose extension was added to the user's name.
class SystemFileDialogs : public FileDialogs
{
public:
    /// @param window the dialogs stand over it; they end with it.
    explicit SystemFileDialogs(QWidget *window = nullptr) : m_window(window) {}

    void setWindow(QWidget *window) { m_window = window; }

    [[nodiscard]] QStringList askForDocuments(const QString &title, const QString &filter) override;
    [[nodiscard]] QString askForTarget(const QString &title, const QString &filter,
                                       const QString &proposedName) override;

private:
    [[nodiscard]] QFileDialog *makeDialog(const QString &title, const QString &filter);
    /// Deletes the dialog.
    [[nodiscard]] QStringList ask(QFileDialog *dialog);

    QPointer<QWidget> m_window;
    QString m_folder; ///< where the user chose last
};

} // namespace Quorlin
