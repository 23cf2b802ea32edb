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

/// What a file manager does with the entries that are chosen in it.
class DragSource : public QLabel
{
public:
    explicit DragSource(QList<QUrl> urls) : m_urls(std::move(urls))
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
    QList<QUrl> m_urls;
    QPoint m_pressed;

    void drag()
    {
        auto *const drag = new QDrag(this);
        auto *const content = new QMimeData;
        content->setUrls(m_urls);
        drag->setMimeData(content);
        connect(drag, &QDrag::actionChanged, this,
                [](Qt::DropAction action) { tell("over", word(action)); });
        tell("begun");
        tell("done", word(drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction)));
    }
};

/// Arguments are paths, or addresses when they have a scheme.
QList<QUrl> urlsOf(const QStringList &arguments)
{
    QList<QUrl> urls;
    for (const auto &argument : arguments) {
        const auto isAddress = argument.contains(QLatin1String("://"));
        urls.append(isAddress ? QUrl(argument) : QUrl::fromLocalFile(argument));
    }
    return urls;
}

} // namespace

/// drag-source FILE…: a window from which the files can be dragged; tells on standard output how
/// the drag goes.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    DragSource source(urlsOf(QApplication::arguments().mid(1)));
    source.show();
    return QApplication::exec();
}
