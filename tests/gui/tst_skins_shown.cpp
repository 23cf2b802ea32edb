#include "RowPicture.h"
#include "quorlin-skin/SkinShow.h"
#include "skin/AppSkin.h"
#include "skin/controls/ColorValue.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/LabelFace.h"
#include "ui/FileList.h"
#include "ui/PictureBox.h"
#include "ui/SkinStyle.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QTest>

#include <memory>

using namespace Quorlin;

/// The shipped skins on the real windows, in every language: what a user would see.
class TestSkinsShown : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyTextFits_data() { addRows(); }
    void everyTextFits();
    void everyTextStandsOutFromWhatLiesBehind_data() { addRows(); }
    void everyTextStandsOutFromWhatLiesBehind();
    void controlsLieInsideTheirWindow_data() { addRows(); }
    void controlsLieInsideTheirWindow();
    void controlsDoNotCoverEachOther_data() { addRows(false); }
    void controlsDoNotCoverEachOther();
    void whatCannotBeUsedLooksSo_data() { addRows(); }
    void whatCannotBeUsedLooksSo();
    void theFocusShowsWhereverItIs_data() { addRows(); }
    void theFocusShowsWhereverItIs();
    void everyControlThatTakesTheFocusHasAName_data() { addRows(); }
    void everyControlThatTakesTheFocusHasAName();
    void theListHasTheFocusFirst();
    void anotherSkinsPictureDoesNotStayBehindTheBuiltInLayout();

private:
    static void addRows(bool withBuiltIn = true);
    [[nodiscard]] static std::unique_ptr<SkinShow> shown(bool isWorking = false);
};

namespace {

const QStringList Skins{QStringLiteral("Varnex"), QStringLiteral("Nightfall"),
                        QStringLiteral("Clarity")};
const QStringList Languages{QStringLiteral("english"), QStringLiteral("français"),
                            QStringLiteral("deutsch")};

/// Ratios of the guidelines for accessible content: AA, and AAA for the skin made for it.
double leastContrast(const QString &skin)
{
    return skin == QLatin1String("Clarity") ? 7.0 : 4.5;
}

QList<KelLabel *> visibleTexts(QWidget &window)
{
    QList<KelLabel *> labels;
    for (auto *const label : window.findChildren<KelLabel *>()) {
        if (label->isVisible() && !label->Caption().isEmpty())
            labels.append(label);
    }
    return labels;
}

/// What can be reached with the keyboard. A list's own parts belong to the list.
QList<QWidget *> focusable(QWidget &window)
{
    QList<QWidget *> controls;
    for (auto *const control : window.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (control->isVisible() && control->isEnabled() && control->focusPolicy() & Qt::TabFocus)
            controls.append(control);
    }
    return controls;
}

/// Where the text of a label stands in its window.
QRect textRect(const KelLabel &label, const QWidget &window)
{
    const auto face = label.face();
    const auto size = face.textBlock().size();
    return QRect(label.mapTo(&window, face.textPosition(size)), size);
}

/// The least contrast of a colour with any point of a picture's part.
double leastContrastIn(const QImage &picture, const QRect &part, const QColor &colour)
{
    auto least = 21.0;
    const auto ratio = picture.devicePixelRatio();
    const QRect points(part.topLeft() * ratio, part.size() * ratio);
    for (int y = points.top(); y <= points.bottom(); ++y) {
        for (int x = points.left(); x <= points.right(); ++x) {
            if (picture.rect().contains(x, y))
                least = std::min(least, ColorValue::contrast(picture.pixelColor(x, y), colour));
        }
    }
    return least;
}

/// The window as it is without one of its labels.
QImage withoutLabel(QWidget &window, KelLabel &label)
{
    label.setVisible(false);
    const auto picture = window.grab().toImage();
    label.setVisible(true);
    return picture;
}

} // namespace

void TestSkinsShown::initTestCase()
{
    QVERIFY(QDir().mkpath(QStringLiteral(QUORLIN_PICTURES)));
}

void TestSkinsShown::addRows(bool withBuiltIn)
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<QString>("language");
    auto skins = Skins;
    if (withBuiltIn)
        skins.append(QStringLiteral("None"));
    for (const auto &skin : std::as_const(skins)) {
        for (const auto &language : Languages)
            QTest::addRow("%s, %s", qPrintable(skin), qPrintable(language)) << skin << language;
    }
}

std::unique_ptr<SkinShow> TestSkinsShown::shown(bool isWorking)
{
    QFETCH(QString, skin);
    QFETCH(QString, language);
    SkinShowOptions options;
    options.skin = skin;
    options.language = language;
    options.applicationFolder = QStringLiteral(QUORLIN_SOURCE_DIR "/data");
    options.isWorking = isWorking;
    auto show = std::make_unique<SkinShow>(options);
    show->mainWindow().show();
    show->aboutBox().show();
    QCoreApplication::processEvents();
    return show;
}

void TestSkinsShown::everyTextFits()
{
    for (const auto isWorking : {false, true}) {
        const auto show = shown(isWorking);
        QVERIFY(show->isComplete());
        auto labels = visibleTexts(show->mainWindow()) + visibleTexts(show->aboutBox());
        QVERIFY(labels.size() >= 10);
        for (const auto *const label : std::as_const(labels)) {
            const auto face = label->face();
            const auto block = face.textBlock();
            QVERIFY2(!block.isElided() && block.size().width() <= face.inside().width() &&
                         block.size().height() <= face.inside().height(),
                     qPrintable(label->objectName() + QLatin1String(": ") + label->Caption()));
        }
    }
    const auto show = shown();
    const auto &choice = *show->mainWindow().cmbCompression;
    QCOMPARE(choice.count(), 4);
    for (int entry = 0; entry < choice.count(); ++entry)
        QVERIFY2(choice.fontMetrics().horizontalAdvance(choice.itemText(entry)) +
                         SkinStyle::ChoiceFrame <=
                     choice.width(),
                 qPrintable(choice.itemText(entry)));
}

void TestSkinsShown::everyTextStandsOutFromWhatLiesBehind()
{
    QFETCH(QString, skin);
    const auto show = shown(true);
    show->mainWindow().setEnabled(true);
    for (auto *const control : show->mainWindow().findChildren<QWidget *>())
        control->setEnabled(true);
    for (QWidget *const window :
         {static_cast<QWidget *>(&show->mainWindow()), static_cast<QWidget *>(&show->aboutBox())}) {
        for (auto *const label : visibleTexts(*window)) {
            const auto part = textRect(*label, *window);
            const auto colour = label->face().textColor;
            const auto found = leastContrastIn(withoutLabel(*window, *label), part, colour);
            QVERIFY2(found >= leastContrast(skin),
                     qPrintable(QStringLiteral("%1: %2").arg(label->objectName()).arg(found)));
        }
    }
}

void TestSkinsShown::controlsLieInsideTheirWindow()
{
    const auto show = shown(true);
    for (QWidget *const window :
         {static_cast<QWidget *>(&show->mainWindow()), static_cast<QWidget *>(&show->aboutBox())}) {
        const auto controls = window->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        QVERIFY(controls.size() >= 9);
        for (const auto *const control : controls)
            QVERIFY2(window->rect().contains(control->geometry()),
                     qPrintable(control->objectName()));
    }
}

void TestSkinsShown::controlsDoNotCoverEachOther()
{
    const auto show = shown();
    auto &window = show->mainWindow();
    const auto controls = window.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (const auto *const one : controls) {
        for (const auto *const other : controls) {
            // The caption of the button lies on it.
            const auto isCaption = one == static_cast<QWidget *>(window.LblLibConvert) ||
                                   other == static_cast<QWidget *>(window.LblLibConvert);
            if (one == other || isCaption || !one->isVisible() || !other->isVisible())
                continue;
            QVERIFY2(!one->geometry().intersects(other->geometry()),
                     qPrintable(one->objectName() + QLatin1String(" and ") + other->objectName()));
        }
    }
}

void TestSkinsShown::whatCannotBeUsedLooksSo()
{
    const auto idle = shown();
    const auto working = shown(true);
    keepRowPicture(idle->mainWindow(), QStringLiteral("idle"));
    keepRowPicture(idle->aboutBox(), QStringLiteral("about"));
    keepRowPicture(working->mainWindow(), QStringLiteral("working"));
    working->mainWindow().PctInfo->hide();
    const auto one = idle->mainWindow().grab().toImage();
    const auto other = working->mainWindow().grab().toImage();
    QCOMPARE(one.size(), other.size());
    const auto ratio = one.devicePixelRatio();
    for (const auto *const name :
         {"LstFile", "LblFirst", "LblPrevious", "LblNext", "LblLast", "OptMail", "OptShow",
          "OptLink", "LblMail", "LblShow", "LblLink", "cmbCompression", "LblConvert"}) {
        const auto *const control = idle->mainWindow().findChild<QWidget *>(QLatin1String(name));
        QVERIFY(control);
        const QRect part(control->pos() * ratio, control->size() * ratio);
        QVERIFY2(one.copy(part) != other.copy(part), name);
    }
}

void TestSkinsShown::theFocusShowsWhereverItIs()
{
    const auto show = shown();
    for (QWidget *const window :
         {static_cast<QWidget *>(&show->mainWindow()), static_cast<QWidget *>(&show->aboutBox())}) {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        for (auto *const control : focusable(*window)) {
            for (auto *const other : focusable(*window))
                other->clearFocus();
            const auto without = window->grab().toImage();
            control->setFocus();
            QVERIFY2(control->hasFocus(), qPrintable(control->objectName()));
            QVERIFY2(window->grab().toImage() != without, qPrintable(control->objectName()));
        }
    }
}

void TestSkinsShown::everyControlThatTakesTheFocusHasAName()
{
    const auto show = shown();
    for (QWidget *const window :
         {static_cast<QWidget *>(&show->mainWindow()), static_cast<QWidget *>(&show->aboutBox())}) {
        for (auto *const control : focusable(*window)) {
            auto *const spoken = QAccessible::queryAccessibleInterface(control);
            QVERIFY2(spoken && !spoken->text(QAccessible::Name).isEmpty(),
                     qPrintable(control->objectName()));
        }
    }
}

void TestSkinsShown::theListHasTheFocusFirst()
{
    SkinShowOptions options;
    options.skin = QStringLiteral("Varnex");
    options.applicationFolder = QStringLiteral(QUORLIN_SOURCE_DIR "/data");
    SkinShow show(options);
    show.mainWindow().show();
    show.mainWindow().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&show.mainWindow()));
    QCOMPARE(QApplication::focusWidget(), show.mainWindow().LstFile);
}

void TestSkinsShown::anotherSkinsPictureDoesNotStayBehindTheBuiltInLayout()
{
    SkinShowOptions options;
    options.applicationFolder = QStringLiteral(QUORLIN_SOURCE_DIR "/data");
    options.skin = QStringLiteral("None");
    const auto pictures = [](SkinShow &show) {
        return QList<QImage>{show.mainWindow().grab().toImage(), show.aboutBox().grab().toImage(),
                             show.mainWindow().PctInfo->grab().toImage()};
    };
    SkinShow builtIn(options);
    const auto expected = pictures(builtIn);
    SkinShow show(options);
    show.wear(QStringLiteral("Nightfall"));
    QVERIFY(pictures(show) != expected);
    show.wear(QStringLiteral("No such skin"));
    QCOMPARE(pictures(show), expected);
}

QTEST_MAIN(TestSkinsShown)
#include "tst_skins_shown.moc"
