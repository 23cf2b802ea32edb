#include "ui/JobControls.h"

#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"
#include "ui/DocumentList.h"
#include "ui/FileDialogs.h"
#include "ui/FileList.h"
#include "ui/MainForm.h"
#include "ui/PictureBox.h"

#include <QCheckBox>
#include <QComboBox>

#include <utility>

namespace Quorlin {

JobControls::JobControls(MainForm &form, const DocumentList &list, FileDialogs &dialogs)
    : m_form(form), m_list(list), m_dialogs(dialogs)
{
}

void JobControls::setWorkingMode(bool working)
{
    if (working && !m_isWorking)
        m_focus = m_form.focusWidget();
    m_isWorking = working;
    enable(!working);
    showState();
    // Once: the window stays usable while further results of the job are delivered.
    if (auto *const before = working ? nullptr : std::exchange(m_focus, nullptr).data())
        before->setFocus(Qt::OtherFocusReason);
    Q_EMIT workingModeChanged(working);
}

void JobControls::enable(bool on)
{
    const QList<QWidget *> controls{
        m_form.lblTitle,    m_form.lblClose,    m_form.LblMin,        m_form.LblHelp,
        m_form.LblConvert,  m_form.LblCompress, m_form.LblLibConvert, m_form.LblFirst,
        m_form.LblPrevious, m_form.LblNext,     m_form.LblLast,       m_form.LblMail,
        m_form.LblShow,     m_form.LblLink,     m_form.OptMail,       m_form.OptShow,
        m_form.OptLink,     m_form.LstFile,     m_form.cmbCompression};
    for (auto *const control : controls)
        control->setEnabled(on);
    m_form.BarProgress->Enabled(on);
}

void JobControls::showState()
{
    m_form.PctInfo->setVisible(m_isWorking);
    m_form.BarProgress->setVisible(m_isWorking);
}

QStringList JobControls::documents() const
{
    return m_list.DocFullNameList();
}

bool JobControls::merges() const
{
    return m_form.OptLink->isChecked();
}

bool JobControls::showsResult() const
{
    return m_form.OptShow->isChecked();
}

int JobControls::compression() const
{
    return m_form.cmbCompression->currentIndex();
}

void JobControls::setInfo(const QString &text)
{
    m_form.setInfo(text);
}

void JobControls::setBarValue(int value)
{
    m_form.BarProgress->Value(value);
}

void JobControls::setBarPercent(int percent)
{
    m_form.BarProgress->Percent(qint16(percent));
}

QString JobControls::askForTarget(const QString &title, const QString &filter,
                                  const QString &proposedName)
{
    return m_dialogs.askForTarget(title, filter, proposedName);
}

} // namespace Quorlin
