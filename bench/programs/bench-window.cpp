#include <QApplication>
#include <QPainter>
#include <QWidget>

namespace {

/// The least that a skinned window must do: a frameless, translucent window with something in it.
class LeastWindow : public QWidget
{
public:
    LeastWindow()
    {
        setWindowFlag(Qt::FramelessWindowHint);
        setAttribute(Qt::WA_TranslucentBackground);
        setWindowTitle(QStringLiteral("Least window"));
        resize(560, 440);
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter(this).fillRect(rect().adjusted(20, 20, -20, -20), Qt::darkGreen);
    }
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    LeastWindow window;
    window.show();
    return QApplication::exec();
}
