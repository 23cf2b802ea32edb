#include <QApplication>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// A list onto which files can be dropped.
class DropList : public QListWidget
{
public:
    using QListWidget::QListWidget;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { take(event); }
    void dragMoveEvent(QDragMoveEvent *event) override { take(event); }

    void dropEvent(QDropEvent *event) override
    {
        for (const auto &url : event->mimeData()->urls())
            addItem(url.toLocalFile());
        take(event);
    }

private:
    static void take(QDropEvent *event)
    {
        event->setDropAction(Qt::CopyAction);
        event->setAccepted(event->mimeData()->urls().value(0).isLocalFile());
    }
};

/// One of everything that the tests of windows must be able to handle.
class SampleWindow : public QWidget
{
public:
    SampleWindow()
    {
        setWindowTitle(QStringLiteral("Sample"));
        m_list.setAccessibleName(QStringLiteral("Things"));
        m_list.setAcceptDrops(true);
        m_progress.setAccessibleName(QStringLiteral("Done"));
        m_progress.setValue(40);
        for (QWidget *const part :
             {static_cast<QWidget *>(&m_list), static_cast<QWidget *>(&m_progress)})
            m_layout.addWidget(part);
        addButton(QStringLiteral("Ask"), [this] { ask(); });
        addButton(QStringLiteral("Open"), [this] { open(); });
        addButton(QStringLiteral("Complain"), [] { qWarning("a complaint"); });
        addButton(QStringLiteral("Freeze"), [] { freeze(); });
        addButton(QStringLiteral("Crash"), [] { std::abort(); });
    }

protected:
    void contextMenuEvent(QContextMenuEvent *event) override
    {
        QMenu menu;
        auto *const colours = menu.addMenu(QStringLiteral("Colours"));
        for (const auto &name : {QStringLiteral("Red"), QStringLiteral("Blue")}) {
            auto *const entry =
                colours->addAction(name, this, [this, name] { m_list.addItem(name); });
            entry->setCheckable(true);
            entry->setChecked(name == QLatin1String("Blue"));
        }
        menu.addAction(QStringLiteral("Nothing"))->setEnabled(false);
        menu.exec(event->globalPos());
    }

private:
    QVBoxLayout m_layout{this};
    DropList m_list;
    QProgressBar m_progress;

    template <typename Action>
    void addButton(const QString &name, Action action)
    {
        auto *const button = new QPushButton(name, this);
        connect(button, &QPushButton::clicked, this, action);
        m_layout.addWidget(button);
    }

    void ask()
    {
        const auto answer = QMessageBox::question(this, QStringLiteral("A question"),
                                                  QStringLiteral("Shall it be?"));
        m_list.addItem(answer == QMessageBox::Yes ? QStringLiteral("yes") : QStringLiteral("no"));
    }

    void open() { m_list.addItems(QFileDialog::getOpenFileNames(this, QStringLiteral("Choose"))); }

    static void freeze()
    {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 400)
            ;
    }
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    SampleWindow window;
    window.show();
    return QApplication::exec();
}
