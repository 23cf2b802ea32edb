#pragma once

#include <QMenu>

namespace Quorlin {

class TextSource;

/// A menu whose entries have names, and whose texts are shown as they are: a "&" in them is no
/// mark of an access key.
class NamedMenu : public QMenu
{
    Q_OBJECT

public:
    NamedMenu(const char *name, QWidget *parent);

    /// An entry without a text yet.
    QAction *addEntry(const char *name);
    /// A menu within this one, without a title yet.
    NamedMenu *addBranch(const char *name, const char *entryName);
    void addLine(const char *name);

    /// Shows keys beside an entry. They are only shown: whoever owns the menu answers to them.
    static void setKeys(QAction &entry, const QKeySequence &keys);

    static void setText(QAction &entry, const QString &text);
    /// The text of a key.
    static void setText(QAction &entry, const TextSource &texts, const char *key);
};

} // namespace Quorlin
