#include "skin/controls/KelLabel.h"
#include "skin/controls/LabelFace.h"

#include "LabelSample.h"
#include "Pixels.h"

#include <QPainter>
#include <QTest>

using namespace Quorlin;
using namespace LabelSample;

namespace {

constexpr quint32 Red = 0x0000FF;
constexpr quint32 Blue = 0xFF0000;

} // namespace

class TestLabelStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void roundsTheFocusRingAndTheTintWhenAsked();
    void drawsTheFocusRingInAColorOfItsOwn();
    void laysAVeilOnlyOverAButtonThatCannotBeUsed();
    void mixesTheVeilWithWhatLiesBehind();
    void roundsTheVeil();
    void drawsTheTextOverTheVeil();
};

void TestLabelStates::roundsTheFocusRingAndTheTintWhenAsked()
{
    KelLabel label;
    prepare(label);
    label.Clickable(true);
    auto face = label.face();
    face.text = {};
    face.hasFocusRing = true;
    const auto corner = [&face] {
        QImage image(face.size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        face.draw(painter);
        painter.end();
        return QPair(image.pixelColor(0, 0), image.pixelColor(face.size.width() / 2, 0));
    };
    QCOMPARE(corner(), QPair(face.textColor, face.textColor));
    face.cornerRadius = 8;
    QCOMPARE(corner(), QPair(QColor(Qt::white), face.textColor));
    face.hasFocusRing = false;
    face.tint = 255;
    QCOMPARE(corner(), QPair(QColor(Qt::white), face.textColor));
    label.CornerRadius(8);
    QCOMPARE(label.face().cornerRadius, 8);
}

void TestLabelStates::drawsTheFocusRingInAColorOfItsOwn()
{
    KelLabel label;
    prepare(label, "");
    label.Clickable(true);
    label.show();
    label.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&label));
    label.setFocus();
    const auto ring = 2 * Width + 2 * (Height - 2);
    QCOMPARE(Pixels::countOf(Pixels::painted(label), Qt::black), ring);
    label.FocusColor(Red);
    const auto image = Pixels::painted(label);
    QCOMPARE(Pixels::countOf(image, Qt::red), ring);
    QCOMPARE(Pixels::countOf(image, Qt::black), 0);
    label.CornerRadius(8);
    QCOMPARE(Pixels::painted(label).pixelColor(Width / 2, 0), QColor(Qt::red));
}

void TestLabelStates::laysAVeilOnlyOverAButtonThatCannotBeUsed()
{
    KelLabel label;
    prepare(label, "");
    label.VeilColor(Blue);
    const auto isVeiled = [&label] { return !Pixels::inkBox(Pixels::painted(label)).isNull(); };
    QVERIFY(!isVeiled());
    label.Enabled(false);
    QVERIFY(!isVeiled());
    label.Clickable(true);
    QVERIFY(isVeiled());
    QCOMPARE(Pixels::inkBox(Pixels::painted(label)), label.rect());
    label.VeilColor(ColorValue::Computed);
    QVERIFY(!isVeiled());
    QVERIFY(!label.face().veil.isValid());
    label.VeilColor(Blue);
    label.Enabled(true);
    QVERIFY(!isVeiled());
}

void TestLabelStates::mixesTheVeilWithWhatLiesBehind()
{
    KelLabel label;
    prepare(label, "");
    label.Clickable(true);
    label.Enabled(false);
    const QColor veil(0xEE, 0xF2, 0xF8);
    label.VeilColor(ColorValue::stored(veil));
    for (const auto &behind : {QColor(Qt::black), QColor(Qt::white), QColor(0x2A, 0x62, 0xD6)}) {
        const auto expected = ColorValue::blended(veil, behind, 0.72);
        for (const auto corners : {0, 8}) {
            label.CornerRadius(corners);
            const auto found = Pixels::painted(label, behind).pixelColor(Width / 2, Height / 2);
            QVERIFY(qAbs(found.red() - expected.red()) <= 1);
            QVERIFY(qAbs(found.green() - expected.green()) <= 1);
            QVERIFY(qAbs(found.blue() - expected.blue()) <= 1);
        }
    }
}

void TestLabelStates::roundsTheVeil()
{
    KelLabel label;
    prepare(label, "");
    label.Clickable(true);
    label.Enabled(false);
    label.VeilColor(Blue);
    const auto square = Pixels::painted(label);
    QCOMPARE(square.pixelColor(0, 0), square.pixelColor(Width / 2, Height / 2));
    label.CornerRadius(8);
    const auto round = Pixels::painted(label);
    QCOMPARE(round.pixelColor(0, 0), QColor(Qt::white));
    QCOMPARE(round.pixelColor(Width - 1, Height - 1), QColor(Qt::white));
    QCOMPARE(round.pixelColor(Width / 2, 0), square.pixelColor(Width / 2, 0));
}

void TestLabelStates::drawsTheTextOverTheVeil()
{
    KelLabel label;
    prepare(label);
    label.Clickable(true);
    label.Enabled(false);
    label.DisabledTextColor(Red);
    const auto plain = Pixels::countOf(Pixels::painted(label), Qt::red);
    label.VeilColor(Blue);
    QVERIFY(plain > 10);
    QCOMPARE(Pixels::countOf(Pixels::painted(label), Qt::red), plain);
}

QTEST_MAIN(TestLabelStates)
#include "tst_label_states.moc"
