#pragma once

#include "winsupport/MessageService.h"

#include <QDialog>

namespace Quorlin {

class MessageText;

/// A message with its icon and a button. It is never larger than the screen: a long text scrolls.
class MessageBox : public QDialog
{
    Q_OBJECT

public:
    /// @param text shown as it is, never as marked-up text.
    MessageBox(const QString &text, MessageStyle style, const QString &title,
               QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addIcon(MessageStyle style);
    void fit();

    MessageText *m_text;
};

} // namespace Quorlin
