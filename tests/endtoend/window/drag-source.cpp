#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QTextStream>
#include <QUrl>

namespace {

const char *word(Qt::DropAction action)
{
    switch (action) {
    case Qt::CopyAction:
        return "copy";
    case Qt::MoveAction:
    case Qt::TargetMoveAction:
        return "move";
    case Qt::LinkAction:
        return "link";
    default:
        return "ignore";
    }
}

void tell(const char *what, const char *detail = "")
{
    QTextStream(stdout) << what << ' ' << detail << Qt::endl;
}

/// Paths, addresses where they have a scheme, or a text after "--text".
QMimeData *contentOf(const QStringList &things)
{
    auto *const content = new QMimeData;
    if (things.value(0) == QLatin1String("--text")) {
        content->setText(things.value(1));
        return content;
    }
    QList<QUrl> urls;
    for (const auto &thing : things) {
        const auto isAddress = thing.contains(QLatin1String("://"));
        urls.append(isAddress ? QUrl(thing) : QUrl::fromLocalFile(thing));
    }
    content->setUrls(urls);
    return content;
}

/// What a file manager does with the entries that are chosen in it, or an editor with its text.
class DragSource : public QLabel
{
public:
    explicit DragSource(const QStringList &things) : m_things(things)
    {
        setText(QStringLiteral("Drag from here"));
        setWindowTitle(QStringLiteral("Files"));
        setFixedSize(160, 80);
    }

protected:
    void mousePressEvent(QMouseEvent *event) override { m_pressed = event->position().toPoint(); }

    void mouseMoveEvent(QMouseEvent *event) override
    {
        const auto way = event->position().toPoint() - m_pressed;
        if (way.manhattanLength() >= QApplication::startDragDistance())
            drag();
    }

private:
    QStringList m_things;
    QPoint m_pressed;

    void drag()
    {
        auto *const drag = new QDrag(this);
        drag->setMimeData(contentOf(m_things));
        connect(drag, &QDrag::actionChanged, this,
                [](Qt::DropAction action) { tell("over", word(action)); });
        tell("begun");
        tell("done", word(drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction)));
    }
};

} // namespace

/// drag-source FILE… or drag-source --text TEXT: a window from which that can be dragged; tells on
/// standard output how the drag goes.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    DragSource source(QApplication::arguments().mid(1));
    source.show();
    return QApplication::exec();
}
