#pragma once

#include <QListWidget>

class QMimeData;
class QPushButton;

namespace Quorlin {

/// The visible list of documents. Files and folders can be dropped onto it; it tells what the
/// user asks for and does nothing of it itself.
class FileList : public QListWidget
{
    Q_OBJECT

public:
    explicit FileList(QWidget *parent = nullptr);

    /// The button in the middle of the list while it is empty.
    [[nodiscard]] QPushButton *addButton() const { return m_add; }

    /// Leaves so many pixels above the lower edge free of entries.
    void setBottomRoom(int pixels);

    /// Adds an entry at the end for each of these paths.
    void appendDocuments(const QStringList &documents);

    /// The paths that a drag brings, in its order: only those of this computer's files.
    [[nodiscard]] static QStringList localPaths(const QMimeData &data);

Q_SIGNALS:
    /// Full paths of files and folders, in the order of the drop.
    void filesDropped(const QStringList &paths);
    /// The Delete key has been released.
    void deleteReleased();
    /// The right mouse button has been pressed, or the key for a menu. @param place on the screen.
    void menuAsked(const QPoint &place);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void initStyleOption(QStyleOptionFrame *option) const override;

private:
    void setDraggedOver(bool isOver);
    void askForMenu();

    QPushButton *m_add;
    bool m_isDraggedOver = false; ///< with files that can be dropped here
};

} // namespace Quorlin
