#include "skin/SkinEngine.h"
#include "skin/controls/WidgetSkinWindow.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QTextStream>

#include <algorithm>
#include <vector>

using namespace Quorlin;

namespace {

constexpr int Rounds = 30;
constexpr int WarmUp = 3;

class CountedMessages : public MessageService
{
public:
    void show(const QString & /*text*/, MessageStyle /*style*/, const QString & /*title*/) override
    {
        ++count;
    }

    int count = 0;
};

class KeysAsTexts : public TextSource
{
public:
    [[nodiscard]] QString text(const QString &key) const override { return key; }
};

/// A window with a picture of its own, or a panel with one.
class PictureWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(Quorlin::SkinPicture Picture READ picture WRITE setPicture)

public:
    using QWidget::QWidget;
    [[nodiscard]] SkinPicture picture() const { return m_picture; }
    void setPicture(const SkinPicture &picture) { m_picture = picture; }

private:
    SkinPicture m_picture;
};

/// A window with every control that a skin lays out.
class Form
{
public:
    explicit Form(SkinForm form) : m_skinWindow(m_window)
    {
        for (const auto &element : SkinElement::all()) {
            if (element.form != form || element.control.isEmpty() ||
                m_window.findChild<QWidget *>(QString(element.control)))
                continue;
            auto *const control = new PictureWidget(&m_window);
            control->setObjectName(QString(element.control));
        }
    }

    [[nodiscard]] WindowRef window() { return WindowRef(m_skinWindow); }

    /// Draws all pictures as a screen of this density would.
    [[nodiscard]] bool draw(double density) const
    {
        QImage canvas(m_window.size() * density, QImage::Format_RGB32);
        canvas.setDevicePixelRatio(density);
        QPainter painter(&canvas);
        m_window.picture().draw(painter, QRectF(m_window.rect()));
        for (const auto *control : m_window.findChildren<PictureWidget *>())
            control->picture().draw(painter, QRectF(control->geometry()));
        return !m_window.picture().isEmpty();
    }

private:
    PictureWidget m_window;
    WidgetSkinWindow m_skinWindow;
};

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

struct Times
{
    std::vector<double> load;
    std::vector<double> draw;
};

double millisecondsOf(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// One round: a skin is loaded, put onto both windows and drawn for the first time.
bool measure(SkinEngine &engine, const QString &skin, double density, Form &main, Form &about,
             Times &times)
{
    QElapsedTimer timer;
    timer.start();
    engine.SetSkin(skin);
    times.load.push_back(millisecondsOf(timer));
    timer.restart();
    const auto drawn = main.draw(density) && about.draw(density);
    times.draw.push_back(millisecondsOf(timer));
    return drawn && engine.GetSkinName() == skin;
}

} // namespace

/// bench-skin FOLDER: times the loading of each skin in FOLDER/skins.
int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QTextStream out(stdout);
    CountedMessages messages;
    const KeysAsTexts texts;
    SkinEngine engine(QApplication::arguments().value(1), messages, texts, PictureLoader());
    Form main(SkinForm::Main);
    Form about(SkinForm::About);
    engine.setWindow(SkinForm::Main, main.window());
    engine.setWindow(SkinForm::About, about.window());
    const auto skins = engine.GetSkinList();
    if (skins.isEmpty()) {
        out << "usage: bench-skin FOLDER     FOLDER holds the folder skins\n";
        return 2;
    }
    out << "medians of " << Rounds << " rounds in milliseconds\n"
        << "skin        density  load and apply  first drawing\n";
    for (const auto &skin : skins) {
        for (const auto density : {1.0, 2.0}) {
            Times times;
            for (int round = 0; round < WarmUp + Rounds; ++round) {
                if (round == WarmUp)
                    times = {};
                if (!measure(engine, skin, density, main, about, times))
                    return 1;
            }
            out << qSetFieldWidth(12) << Qt::left << skin << qSetFieldWidth(0)
                << QString::number(density * 100).rightJustified(5) << " %"
                << QString::number(median(times.load), 'f', 2).rightJustified(16)
                << QString::number(median(times.draw), 'f', 2).rightJustified(15) << "\n";
        }
    }
    return messages.count == 0 ? 0 : 1;
}

#include "bench-skin.moc"
