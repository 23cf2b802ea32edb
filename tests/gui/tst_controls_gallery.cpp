#include "skin/controls/ColorValue.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"
#include "skin/controls/ProgressFrame.h"

#include "Pixels.h"

#include <QDir>
#include <QLabel>
#include <QPainter>
#include <QTest>

using namespace Quorlin;

namespace {

constexpr int Column = 190;
constexpr int Row = 44;
constexpr int Columns = 4;

/// One background and the colours that go with it.
struct Theme
{
    const char *name;
    QColor back;
    QColor text;
    QColor panel;
    QColor line;
    QColor scroll;
};

const Theme Light{"light",           QColor(246, 247, 249), QColor(24, 28, 36),
                  QColor(Qt::white), QColor(110, 118, 130), QColor(128, 128, 255)};
const Theme Dark{"dark",
                 QColor(26, 29, 35),
                 QColor(238, 240, 244),
                 QColor(44, 49, 58),
                 QColor(140, 148, 160),
                 QColor(90, 200, 140)};

/// A window full of controls, all of them visible at once.
class Gallery : public QWidget
{
public:
    explicit Gallery(const Theme &theme) : m_theme(theme)
    {
        auto colors = palette();
        colors.setColor(QPalette::Window, theme.back);
        setPalette(colors);
        addLabels();
        addBars();
        const auto rows = (m_count + Columns - 1) / Columns;
        setFixedSize(Columns * Column + 8, rows * Row + 8);
    }

    [[nodiscard]] QList<KelLabel *> labels() const { return findChildren<KelLabel *>(); }
    [[nodiscard]] QList<KelProgressBar *> bars() const { return findChildren<KelProgressBar *>(); }
    [[nodiscard]] KelLabel *focused() const { return m_focused; }

private:
    template <typename Control>
    Control *add()
    {
        auto *control = new Control(this);
        control->setGeometry(m_count % Columns * Column + 8, m_count / Columns * Row + 8,
                             Column - 8, Row - 12);
        control->Font(Pixels::font(14));
        control->TextColor(ColorValue::stored(m_theme.text));
        ++m_count;
        return control;
    }

    KelLabel *addLabel(const char *caption, int alignment = 0)
    {
        auto *label = add<KelLabel>();
        label->Caption(QString::fromUtf8(caption));
        label->Alignment(alignment);
        label->VerticalAlignment(2);
        label->BackColor(ColorValue::stored(m_theme.panel));
        label->BorderColor(ColorValue::stored(m_theme.line));
        return label;
    }

    void addLabels()
    {
        addLabel("Left");
        addLabel("Right", 1);
        addLabel("Centre", 2);
        addLabel("Opaque", 2)->BackStyle(1);
        addLabel("Flat border")->BorderStyle(1);
        auto *sunken = addLabel("Sunken, opaque");
        sunken->BorderStyle(1);
        sunken->BackStyle(1);
        sunken->Appearance(1);
        addLabel("Disabled")->Enabled(false);
        addLabel("&Access key && more");
        addLabel("A text far too long to be shown");
        addLabel("Two lines that\r\nstand in a caption", 2);
        addLabel("A long text that wraps onto lines")->WordWrap(true);
        addLabel("Grüße — שלום, 漢字", 2);
        m_focused = addLabel("&Clickable, focused", 2);
        m_focused->Clickable(true);
        addLabel("Clickable", 2)->Clickable(true);
        auto *disabled = addLabel("Clickable, disabled", 2);
        disabled->Clickable(true);
        disabled->Enabled(false);
        addLabel("");
    }

    KelProgressBar *addBar(int percent, int borderStyle = 0, int appearance = 0)
    {
        auto *bar = add<KelProgressBar>();
        bar->resize(Column - 8, 22);
        bar->BackColor(ColorValue::stored(m_theme.panel));
        bar->ScrollColor(ColorValue::stored(m_theme.scroll));
        bar->BorderStyle(borderStyle);
        bar->Appearance(appearance);
        bar->Percent(qint16(percent));
        return bar;
    }

    void addBars()
    {
        addBar(0, 1);
        addBar(42, 1);
        addBar(50, 1, 1);
        addBar(100, 1);
        addBar(33);
        addBar(52);
        auto *caption = addBar(47, 1);
        caption->Style(0);
        caption->Caption(QStringLiteral("3 of 7: report.odt"));
        addBar(66, 1)->Enabled(false);
    }

    const Theme &m_theme;
    int m_count = 0;
    KelLabel *m_focused = nullptr;
};

/// The pixels of the picture that belong to a rectangle of the window, those cut through left out.
QRect pixelsOf(const QImage &image, const QRect &rect)
{
    const auto scale = image.devicePixelRatio();
    const QPoint first(qCeil(rect.left() * scale), qCeil(rect.top() * scale));
    const QPoint behind(qFloor((rect.right() + 1) * scale), qFloor((rect.bottom() + 1) * scale));
    return {first, behind - QPoint(1, 1)};
}

bool isKnown(const QColor &color, const QList<QColor> &colors)
{
    return colors.contains(color);
}

} // namespace

class TestControlsGallery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rendersBothThemes_data();
    void rendersBothThemes();
    void showsEveryTextReadably_data();
    void showsEveryTextReadably();
    void showsEveryProgressReadably_data();
    void showsEveryProgressReadably();
    void paintsNothingBetweenTheControls_data();
    void paintsNothingBetweenTheControls();
    void drawsFramesAndBarsOnWholePixels_data();
    void drawsFramesAndBarsOnWholePixels();

private:
    [[nodiscard]] static const Theme &theme()
    {
        return QLatin1String(QTest::currentDataTag()) == QLatin1String("dark") ? Dark : Light;
    }
    [[nodiscard]] static QImage grabbed(Gallery &gallery);
};

QImage TestControlsGallery::grabbed(Gallery &gallery)
{
    gallery.show();
    gallery.activateWindow();
    if (!QTest::qWaitForWindowActive(&gallery))
        qWarning("the gallery is not the active window");
    gallery.focused()->setFocus();
    return gallery.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

void TestControlsGallery::rendersBothThemes_data()
{
    QTest::addColumn<int>("unused");
    QTest::newRow("light") << 0;
    QTest::newRow("dark") << 0;
}

void TestControlsGallery::rendersBothThemes()
{
    Gallery gallery(theme());
    const auto image = grabbed(gallery);
    const auto scale = gallery.devicePixelRatioF();
    QCOMPARE(image.size(), (QSizeF(gallery.size()) * scale).toSize());
    const auto folder = QStringLiteral(QUORLIN_PICTURES);
    QVERIFY(QDir().mkpath(folder));
    const auto name = QStringLiteral("%1/%2-%3.png").arg(folder, QLatin1String(theme().name));
    QVERIFY(image.save(name.arg(int(scale * 100))));
}

void TestControlsGallery::showsEveryTextReadably_data()
{
    rendersBothThemes_data();
}

void TestControlsGallery::showsEveryTextReadably()
{
    Gallery gallery(theme());
    const auto image = grabbed(gallery);
    for (const auto *label : gallery.labels()) {
        const auto inside = label->geometry().adjusted(3, 3, -3, -3);
        const auto part = image.copy(pixelsOf(image, inside));
        const auto back = part.pixelColor(0, 0);
        const auto found = Pixels::strongest(part, back).contrast;
        const auto least = label->Caption().isEmpty() ? 1.0 : label->Enabled() ? 4.5 : 3.0;
        QVERIFY2(found >= least && (least > 1.0 || found == 1.0),
                 qPrintable(label->Caption() + QString::number(found)));
    }
}

void TestControlsGallery::showsEveryProgressReadably_data()
{
    rendersBothThemes_data();
}

void TestControlsGallery::showsEveryProgressReadably()
{
    Gallery gallery(theme());
    const auto image = grabbed(gallery);
    for (const auto *bar : gallery.bars()) {
        const auto *scroll = bar->findChild<QLabel *>(QStringLiteral("barLabel"));
        const auto *text = bar->findChild<QLabel *>(QStringLiteral("textLabel"));
        const auto ink = text->fontMetrics().boundingRect(text->text()).width() / 2 - 4;
        const auto center = bar->geometry().center();
        const auto edge = bar->x() + (bar->Percent() == 0 ? 0 : scroll->geometry().right() + 1);
        for (const auto side : {-1, 1}) {
            const auto x = center.x() + side * ink / 2;
            if (qAbs(x - edge) < 10)
                continue;
            const QRect half(QPoint(x - 8, bar->y() + 4), QSize(16, bar->height() - 8));
            const auto behind = x < edge ? theme().scroll : theme().panel;
            const auto found = Pixels::strongest(image.copy(pixelsOf(image, half)), behind);
            QVERIFY2(found.contrast >= 4.5, qPrintable(text->text()));
        }
    }
}

void TestControlsGallery::paintsNothingBetweenTheControls_data()
{
    rendersBothThemes_data();
}

void TestControlsGallery::paintsNothingBetweenTheControls()
{
    Gallery gallery(theme());
    auto image = grabbed(gallery);
    const auto scale = image.devicePixelRatio();
    image.setDevicePixelRatio(1);
    QPainter painter(&image);
    for (const auto *child :
         gallery.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        const QRectF place(child->geometry());
        const QRectF pixels(place.topLeft() * scale, place.size() * scale);
        painter.fillRect(pixels.toAlignedRect(), theme().back);
    }
    painter.end();
    QCOMPARE(Pixels::inkBox(image, theme().back), QRect());
}

void TestControlsGallery::drawsFramesAndBarsOnWholePixels_data()
{
    rendersBothThemes_data();
}

void TestControlsGallery::drawsFramesAndBarsOnWholePixels()
{
    Gallery gallery(theme());
    for (auto *bar : gallery.bars()) {
        bar->Style(0);
        bar->Caption({});
    }
    const auto image = grabbed(gallery);
    for (const auto *bar : gallery.bars()) {
        const auto place = pixelsOf(image, bar->geometry());
        QList<QColor> colors{theme().panel, theme().scroll};
        if (bar->BorderStyle() == 1) {
            const auto *frame = bar->findChild<ProgressFrame *>();
            colors += frame->topLeft();
            colors += frame->bottomRight();
        }
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x)
                QVERIFY2(isKnown(image.pixelColor(x, y), colors),
                         qPrintable(image.pixelColor(x, y).name()));
        }
    }
}

QTEST_MAIN(TestControlsGallery)
#include "tst_controls_gallery.moc"
