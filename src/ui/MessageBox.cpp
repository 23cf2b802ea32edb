#include "ui/MessageBox.h"

#include "ui/MessageText.h"

#include <QAccessible>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace Quorlin {

namespace {

constexpr int Room = 20;
constexpr int BetweenTexts = 12;
constexpr int IconSide = 36;
/// What the frame, the button and the room around them may need of the screen's height.
constexpr int OtherHeight = 200;
constexpr int OtherWidth = 160;
/// A message is no document.
constexpr int MostHeight = 420;

} // namespace

MessageBox::MessageBox(const QString &text, MessageStyle style, const QString &title,
                       QWidget *parent, const QString &detail)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      m_text(new MessageText(text, this)),
      m_detail(detail.isEmpty() ? nullptr : new MessageText(detail, this))
{
    setWindowTitle(title);
    auto *const grid = new QGridLayout(this);
    grid->setContentsMargins(Room, Room, Room, Room - 4);
    grid->setHorizontalSpacing(style == MessageStyle::Plain ? 0 : Room - 4);
    grid->setVerticalSpacing(Room);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    addIcon(style);
    auto *const column = new QVBoxLayout;
    column->setSpacing(BetweenTexts);
    column->addWidget(m_text, 0, Qt::AlignLeft);
    if (m_detail)
        column->addWidget(m_detail, 0, Qt::AlignLeft);
    grid->addLayout(column, 0, 1, Qt::AlignVCenter | Qt::AlignLeft);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    grid->addWidget(buttons, 1, 0, 1, 2);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    buttons->button(QDialogButtonBox::Ok)->setFocus();
}

void MessageBox::addIcon(MessageStyle kind)
{
    if (kind == MessageStyle::Plain)
        return;
    const auto which = kind == MessageStyle::Critical ? QStyle::SP_MessageBoxCritical
                                                      : QStyle::SP_MessageBoxInformation;
    auto *const icon = new QLabel(this);
    icon->setPixmap(style()
                        ->standardIcon(which, nullptr, this)
                        .pixmap(QSize(IconSide, IconSide), devicePixelRatioF()));
    qobject_cast<QGridLayout *>(layout())->addWidget(icon, 0, 0, Qt::AlignTop);
}

void MessageBox::fit()
{
    const auto *const where = parentWidget() ? parentWidget()->screen() : screen();
    const auto room = where->availableSize() - QSize(OtherWidth, OtherHeight);
    const auto width = std::max(room.width(), 1);
    const auto height = std::clamp(room.height(), 1, MostHeight);
    m_text->fitInto(QSize(width, height));
    if (!m_detail)
        return;
    // What the text leaves, or half: both can be read, whatever their lengths.
    const auto left = std::max(height - m_text->height() - BetweenTexts, height / 2);
    m_detail->fitInto(QSize(width, left));
    m_text->fitInto(QSize(width, std::max(height - m_detail->height() - BetweenTexts, 1)));
}

QString MessageBox::wholeText() const
{
    const auto text = m_text->toPlainText();
    return m_detail ? text + QStringLiteral("\n\n") + m_detail->toPlainText() : text;
}

void MessageBox::showEvent(QShowEvent *event)
{
    fit();
    layout()->activate();
    QDialog::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

/// The whole message goes to the clipboard where nothing of it is selected.
void MessageBox::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(wholeText());
    else
        QDialog::keyPressEvent(event);
}

} // namespace Quorlin
