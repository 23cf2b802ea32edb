#include "ui/FileList.h"

#include "ui/FileItem.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QStyleOptionFrame>
#include <QSysInfo>
#include <QTextLayout>
#include <QToolTip>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace Quorlin {

namespace {

/// Of a tip's line, in widths of an average letter, and of a tip in lines.
constexpr int TipLetters = 72;
constexpr int TipLines = 10;

/// Full path of a file of this computer; empty for any other address.
QString localPath(QUrl address)
{
    const auto host = address.host();
    const auto isHere = host.isEmpty() || host == QLatin1String("localhost") ||
                        host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
    if (!address.isLocalFile() || !isHere)
        return {};
    address.setHost(QString());
    return address.toLocalFile();
}

bool hasLocalPath(const QMimeData &data)
{
    const auto addresses = data.urls();
    return std::ranges::any_of(addresses,
                               [](const QUrl &address) { return !localPath(address).isEmpty(); });
}

/// Never lets the other side move its files away: they are only read here.
Qt::DropAction actionFor(const QDropEvent &event)
{
    for (const auto action : {Qt::CopyAction, Qt::LinkAction})
        if (event.possibleActions().testFlag(action))
            return action;
    return Qt::IgnoreAction;
}

/// A tip of any length would not fit onto the screen: it breaks, also within words.
QString broken(const QString &path, const QFont &font)
{
    const QFontMetrics metrics(font);
    const auto width = metrics.averageCharWidth() * TipLetters;
    const auto shown = metrics.elidedText(path, Qt::ElideMiddle, width * TipLines);
    QTextLayout layout(shown, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines.append(shown.mid(line.textStart(), line.textLength()).toHtmlEscaped());
    }
    layout.endLayout();
    return QStringLiteral("<p style='white-space:pre'>%1</p>")
        .arg(lines.join(QLatin1String("<br>")));
}

/// The first step of a walk selects the entry that has the ring of the focus: the only entry of a
/// list could not be selected by walking otherwise.
bool isWalk(const QKeyEvent &event)
{
    constexpr std::array Keys{Qt::Key_Up,  Qt::Key_Down,   Qt::Key_Home,
                              Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};
    return event.modifiers() == Qt::NoModifier &&
           std::ranges::find(Keys, event.key()) != Keys.end();
}

void answer(QDropEvent &event, bool isTaken)
{
    event.setDropAction(isTaken ? actionFor(event) : Qt::IgnoreAction);
    event.setAccepted(isTaken);
}

} // namespace

FileList::FileList(QWidget *parent) : QListWidget(parent), m_add(new QPushButton(viewport()))
{
    // An empty list would not tell anybody what to do with it. The button is for the mouse alone:
    // assistive tools see nothing but entries in a list, and the keyboard has keys of its own.
    m_add->setFocusPolicy(Qt::NoFocus);
    m_add->setObjectName(QStringLiteral("cmdAdd"));
    auto *const middle = new QVBoxLayout(viewport());
    middle->setSizeConstraint(QLayout::SetNoConstraint);
    middle->addWidget(m_add, 0, Qt::AlignCenter);
    // As long as the button lives: the list's own entries go after it.
    const auto offerToAdd = [this] { m_add->setVisible(count() == 0); };
    connect(model(), &QAbstractItemModel::rowsInserted, m_add, offerToAdd);
    connect(model(), &QAbstractItemModel::rowsRemoved, m_add, offerToAdd);
    connect(model(), &QAbstractItemModel::modelReset, m_add, offerToAdd);
    // The style draws this frame as the ring of the focus, and nothing otherwise.
    setFrameShape(QFrame::StyledPanel);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAcceptDrops(true);
}

void FileList::setBottomRoom(int pixels)
{
    setViewportMargins(0, 0, 0, std::max(pixels, 0));
}

void FileList::appendDocuments(const QStringList &documents)
{
    for (const auto &document : documents)
        addItem(new FileItem(document));
}

QStringList FileList::localPaths(const QMimeData &data)
{
    QStringList paths;
    for (const auto &address : data.urls()) {
        const auto path = localPath(address);
        if (!path.isEmpty())
            paths.append(path);
    }
    return paths;
}

void FileList::dragEnterEvent(QDragEnterEvent *event)
{
    setDraggedOver(isEnabled() && actionFor(*event) != Qt::IgnoreAction &&
                   hasLocalPath(*event->mimeData()));
    answer(*event, m_isDraggedOver);
}

void FileList::dragMoveEvent(QDragMoveEvent *event)
{
    setDraggedOver(m_isDraggedOver && isEnabled());
    answer(*event, m_isDraggedOver);
}

void FileList::dragLeaveEvent(QDragLeaveEvent *event)
{
    setDraggedOver(false);
    event->accept();
}

void FileList::dropEvent(QDropEvent *event)
{
    setDraggedOver(false);
    const auto paths = isEnabled() ? localPaths(*event->mimeData()) : QStringList();
    const auto isTaken = !paths.isEmpty() && actionFor(*event) != Qt::IgnoreAction;
    answer(*event, isTaken);
    if (isTaken)
        Q_EMIT filesDropped(paths);
}

void FileList::setDraggedOver(bool isOver)
{
    if (m_isDraggedOver == isOver)
        return;
    m_isDraggedOver = isOver;
    update();
}

/// The ring of the focus also shows that files can be dropped here.
void FileList::initStyleOption(QStyleOptionFrame *option) const
{
    QListWidget::initStyleOption(option);
    if (m_isDraggedOver)
        option->state |= QStyle::State_HasFocus;
}

bool FileList::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QListWidget::viewportEvent(event);
    const auto &help = *static_cast<QHelpEvent *>(event);
    if (const auto *const entry = itemAt(help.pos()))
        QToolTip::showText(
            help.globalPos(),
            broken(entry->data(Qt::AccessibleDescriptionRole).toString(), QToolTip::font()),
            viewport(), visualItemRect(entry));
    else
        QToolTip::hideText();
    return true;
}

void FileList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        askForMenu();
    else if (isWalk(*event) && currentItem() && !currentItem()->isSelected())
        currentItem()->setSelected(true);
    else
        QListWidget::keyPressEvent(event);
}

void FileList::keyReleaseEvent(QKeyEvent *event)
{
    QListWidget::keyReleaseEvent(event);
    // A key that is held down is not released in between.
    if (event->key() == Qt::Key_Delete && !event->isAutoRepeat())
        Q_EMIT deleteReleased();
}

void FileList::mousePressEvent(QMouseEvent *event)
{
    QListWidget::mousePressEvent(event);
    if (event->button() == Qt::RightButton)
        Q_EMIT menuAsked(event->globalPosition().toPoint());
}

/// A press soon after another one is told so; the right button's is one like any other.
void FileList::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton)
        mousePressEvent(event);
    else
        QListWidget::mouseDoubleClickEvent(event);
}

/// The mouse has had its menu with the press of its button.
void FileList::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept();
    if (event->reason() != QContextMenuEvent::Mouse)
        askForMenu();
}

/// Beside the current entry, where that is visible.
void FileList::askForMenu()
{
    const auto room = viewport()->rect();
    const auto entry = visualItemRect(currentItem()).intersected(room);
    const auto place = currentItem() && !entry.isEmpty() ? entry.center() : room.center();
    Q_EMIT menuAsked(viewport()->mapToGlobal(place));
}

} // namespace Quorlin
