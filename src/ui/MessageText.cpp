#include "ui/MessageText.h"

#include <QAccessibleWidget>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Quorlin {

namespace {

/// Lines longer than this are hard to read, in widths of an average letter.
constexpr int ComfortableLetters = 62;

/// To assistive tools it is the text of a message, not a field.
QAccessibleInterface *spoken(const QString &type, QObject *object)
{
    auto *const text = qobject_cast<MessageText *>(object);
    if (type != QLatin1String(MessageText::staticMetaObject.className()) || !text)
        return nullptr;
    return new QAccessibleWidget(text, QAccessible::StaticText);
}

} // namespace

MessageText::MessageText(const QString &text, QWidget *parent) : QTextEdit(parent)
{
    QAccessible::installFactory(&spoken);
    setReadOnly(true);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::ClickFocus);
    auto colours = palette();
    colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    colours.setColor(QPalette::Text, colours.color(QPalette::WindowText));
    setPalette(colours);
    viewport()->setCursor(Qt::IBeamCursor);
    document()->setDocumentMargin(2);
    setPlainText(text);
    setAccessibleName(text);
}

void MessageText::fitInto(const QSize &most)
{
    document()->setDefaultFont(font());
    // A copy: the text's own document is broken anew to the width of a scroll bar that comes or
    // goes.
    const std::unique_ptr<QTextDocument> copy(document()->clone());
    auto &page = *copy;
    page.setTextWidth(-1);
    const auto comfortable = fontMetrics().averageCharWidth() * ComfortableLetters;
    const auto width = std::min({int(std::ceil(page.idealWidth())) + 1, comfortable, most.width()});
    page.setTextWidth(width);
    const auto height = int(std::ceil(page.size().height()));
    const auto scrolls = height > most.height();
    // Only a text that scrolls is a place for the keyboard.
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    setFixedSize(width + (scrolls ? verticalScrollBar()->sizeHint().width() : 0),
                 std::min(height, most.height()));
}

} // namespace Quorlin
