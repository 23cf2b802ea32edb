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
    /// @param text and @param detail shown as they are, never as marked-up text. The detail is a
    /// second paragraph below the text; empty for none.
    MessageBox(const QString &text, MessageStyle style, const QString &title,
               QWidget *parent = nullptr, const QString &detail = {});

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addIcon(MessageStyle style);
    void fit();
    [[nodiscard]] QString wholeText() const;

    MessageText *m_text;
    MessageText *m_detail; ///< nullptr when there is none
};

} // namespace Quorlin
