#pragma once

#include <QTextEdit>

namespace Quorlin {

/// A text that is shown whole, whatever it is made of: it breaks where it must, also within words,
/// and scrolls when it is too long. It can be selected.
class MessageText : public QTextEdit
{
    Q_OBJECT

public:
    explicit MessageText(const QString &text, QWidget *parent = nullptr);

    /// Takes the size that its text needs, but not more than this.
    void fitInto(const QSize &most);
};

} // namespace Quorlin
