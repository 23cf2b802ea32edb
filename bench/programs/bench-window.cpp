#include <QApplication>
#include <QPainter>
#include <QWidget>

namespace {

/// The least that a skinned window must do: a frameless, translucent window with something in it.
class LeastWindow : public QWidget
{
public:
    /// @param words shows a word, so that the machine's fonts are looked up.
    explicit LeastWindow(bool words) : m_words(words)
    {
        setWindowFlag(Qt::FramelessWindowHint);
        setAttribute(Qt::WA_TranslucentBackground);
        setWindowTitle(QStringLiteral("Least window"));
        resize(560, 440);
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.fillRect(rect().adjusted(20, 20, -20, -20), Qt::darkGreen);
        if (m_words)
            painter.drawText(rect(), Qt::AlignCenter, windowTitle());
    }

private:
    bool m_words;
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    LeastWindow window(QApplication::arguments().contains(QLatin1String("--words")));
    window.show();
    return QApplication::exec();
}
