#pragma once

#include "convert/JobWindow.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace Quorlin {

class DocumentList;
class FileDialogs;
class MainForm;

/// The controls of the main window as a conversion sees them.
class JobControls : public QObject, public JobWindow
{
    Q_OBJECT

public:
    /// All must outlive the object.
    JobControls(MainForm &form, const DocumentList &list, FileDialogs &dialogs);

    [[nodiscard]] bool isWorking() const override { return m_isWorking; }
    void setWorkingMode(bool working) override;
    [[nodiscard]] QStringList documents() const override;
    [[nodiscard]] bool merges() const override;
    [[nodiscard]] bool showsResult() const override;
    [[nodiscard]] int compression() const override;
    void setInfo(const QString &text) override;
    void setBarValue(int value) override;
    void setBarPercent(int percent) override;
    [[nodiscard]] QString askForTarget(const QString &title, const QString &filter,
                                       const QString &proposedName) override;

    /// What is visible exactly while a conversion runs is so again, whatever a skin made of it.
    void showState();

Q_SIGNALS:
    void workingModeChanged(bool working);

private:
    void enable(bool on);

    MainForm &m_form;
    const DocumentList &m_list;
    FileDialogs &m_dialogs;
    bool m_isWorking = false;
    QPointer<QWidget> m_focus; ///< where the focus was before the work
};

} // namespace Quorlin
