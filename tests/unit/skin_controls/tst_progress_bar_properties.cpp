#include "skin/controls/KelProgressBar.h"

#include "PaintCounter.h"
#include "Pixels.h"

#include <QLabel>
#include <QMetaProperty>
#include <QTest>

using namespace Quorlin;

namespace {

const QStringList Names = {
    QStringLiteral("Style"),     QStringLiteral("Alignment"),   QStringLiteral("Appearance"),
    QStringLiteral("BackColor"), QStringLiteral("BorderStyle"), QStringLiteral("Caption"),
    QStringLiteral("Enabled"),   QStringLiteral("Font"),        QStringLiteral("Max"),
    QStringLiteral("Min"),       QStringLiteral("Percent"),     QStringLiteral("ScrollColor"),
    QStringLiteral("Value"),
};

QVariantMap otherValues()
{
    QVariantMap bag;
    bag[QStringLiteral("Style")] = 0;
    bag[QStringLiteral("Alignment")] = 1;
    bag[QStringLiteral("Appearance")] = 1;
    bag[QStringLiteral("BackColor")] = 0x112233U;
    bag[QStringLiteral("BorderStyle")] = 1;
    bag[QStringLiteral("Caption")] = QStringLiteral("Caption");
    bag[QStringLiteral("Enabled")] = false;
    bag[QStringLiteral("Font")] = Pixels::font(20);
    bag[QStringLiteral("Max")] = 60;
    bag[QStringLiteral("Min")] = 10;
    bag[QStringLiteral("Percent")] = QVariant::fromValue<qint16>(40);
    bag[QStringLiteral("ScrollColor")] = 0x445566U;
    bag[QStringLiteral("Value")] = 30;
    return bag;
}

} // namespace

class TestProgressBarProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasTheThirteenPropertiesInOrder();
    void hasTheirTypes();
    void startsWithItsDefaults();
    void readsDefaultsFromAnEmptyBag();
    void setsEveryPropertyByName();
    void keepsEveryProperty();
    void keepsOnlyWhatDiffers();
    void keepsAValueThatIsNotMin();
    void readsTheValueAsMinWhenItIsMissing();
    void readsTheValueLast();
    void readsAValueOutsideAsMin();
    void hasAWindowHandle();
    void repaintsNothingForTheSameProperty_data();
    void repaintsNothingForTheSameProperty();
};

void TestProgressBarProperties::hasTheThirteenPropertiesInOrder()
{
    const auto &type = KelProgressBar::staticMetaObject;
    QStringList names;
    for (int i = 0; i < Names.size(); ++i)
        names.append(QString::fromLatin1(type.property(type.propertyOffset() + i).name()));
    QCOMPARE(names, Names);
}

void TestProgressBarProperties::hasTheirTypes()
{
    const KelProgressBar bar;
    const auto typeOf = [&bar](const char *name) { return bar.property(name).typeId(); };
    for (const auto *name :
         {"Style", "Alignment", "Appearance", "BorderStyle", "Max", "Min", "Value"})
        QCOMPARE(typeOf(name), int(QMetaType::Int));
    for (const auto *name : {"BackColor", "ScrollColor"})
        QCOMPARE(typeOf(name), int(QMetaType::UInt));
    QCOMPARE(typeOf("Percent"), int(QMetaType::Short));
    QCOMPARE(typeOf("Enabled"), int(QMetaType::Bool));
    QCOMPARE(typeOf("Caption"), int(QMetaType::QString));
    QCOMPARE(typeOf("Font"), int(QMetaType::QFont));
}

void TestProgressBarProperties::startsWithItsDefaults()
{
    const KelProgressBar bar;
    QCOMPARE(bar.Style(), 1);
    QCOMPARE(bar.Alignment(), 2);
    QCOMPARE(bar.Appearance(), 0);
    QCOMPARE(bar.BackColor(), 0x8000000FU);
    QCOMPARE(bar.BorderStyle(), 0);
    QCOMPARE(bar.Caption(), QString());
    QVERIFY(bar.Enabled());
    QCOMPARE(bar.Font(), QWidget().font());
    QCOMPARE(bar.Max(), 100);
    QCOMPARE(bar.Min(), 0);
    QCOMPARE(bar.Percent(), qint16(0));
    QCOMPARE(bar.ScrollColor(), 0xFF8080U);
    QCOMPARE(bar.Value(), 0);
    QCOMPARE(bar.findChild<QLabel *>(QStringLiteral("textLabel"))->text(), QStringLiteral("0 %"));
}

void TestProgressBarProperties::readsDefaultsFromAnEmptyBag()
{
    KelProgressBar bar;
    bar.readProperties(otherValues());
    bar.readProperties({});
    QCOMPARE(bar.writeProperties(), QVariantMap());
    QCOMPARE(bar.Font(), QWidget().font());
    QCOMPARE(bar.Percent(), qint16(0));
}

void TestProgressBarProperties::setsEveryPropertyByName()
{
    KelProgressBar bar;
    const auto values = otherValues();
    for (const auto &name : Names) {
        const auto latin = name.toLatin1();
        QVERIFY2(bar.setProperty(latin.constData(), values[name]), latin.constData());
        QVERIFY2(bar.property(latin.constData()) == values[name], latin.constData());
    }
}

void TestProgressBarProperties::keepsEveryProperty()
{
    KelProgressBar bar;
    bar.readProperties(otherValues());
    QCOMPARE(bar.writeProperties(), otherValues());
    KelProgressBar copy;
    copy.readProperties(bar.writeProperties());
    QCOMPARE(copy.writeProperties(), otherValues());
}

void TestProgressBarProperties::keepsOnlyWhatDiffers()
{
    KelProgressBar bar;
    QCOMPARE(bar.writeProperties(), QVariantMap());
    bar.Max(7);
    QCOMPARE(bar.writeProperties(), (QVariantMap{{QStringLiteral("Max"), 7}}));
}

void TestProgressBarProperties::keepsAValueThatIsNotMin()
{
    KelProgressBar bar;
    bar.Min(10);
    bar.Value(10);
    QVERIFY(!bar.writeProperties().contains(QStringLiteral("Value")));
    bar.Value(11);
    QCOMPARE(bar.writeProperties().value(QStringLiteral("Value")), QVariant(11));
}

void TestProgressBarProperties::readsTheValueAsMinWhenItIsMissing()
{
    KelProgressBar bar;
    bar.readProperties({{QStringLiteral("Min"), 500}, {QStringLiteral("Max"), 600}});
    QCOMPARE(bar.Value(), 500);
    QCOMPARE(bar.Percent(), qint16(0));
}

void TestProgressBarProperties::readsTheValueLast()
{
    KelProgressBar bar;
    bar.readProperties({{QStringLiteral("Min"), 500},
                        {QStringLiteral("Max"), 600},
                        {QStringLiteral("Percent"), 7},
                        {QStringLiteral("Value"), 550}});
    QCOMPARE(bar.Value(), 550);
    QCOMPARE(bar.Percent(), qint16(50));
}

void TestProgressBarProperties::readsAValueOutsideAsMin()
{
    KelProgressBar bar;
    bar.Value(20);
    bar.readProperties({{QStringLiteral("Min"), 50}, {QStringLiteral("Value"), 40}});
    QCOMPARE(bar.Value(), 50);
    QCOMPARE(bar.Percent(), qint16(0));
    for (const auto outside : {-1, 101}) {
        bar.readProperties({{QStringLiteral("Percent"), 42}, {QStringLiteral("Value"), outside}});
        QCOMPARE(bar.Value(), 0);
        QCOMPARE(bar.Percent(), qint16(42));
    }
}

void TestProgressBarProperties::hasAWindowHandle()
{
    const KelProgressBar bar;
    QVERIFY(bar.hWnd() != 0);
    QCOMPARE(bar.hWnd(), bar.winId());
}

void TestProgressBarProperties::repaintsNothingForTheSameProperty_data()
{
    QTest::addColumn<QString>("name");
    for (const auto &name : Names)
        QTest::newRow(qPrintable(name)) << name;
}

void TestProgressBarProperties::repaintsNothingForTheSameProperty()
{
    QFETCH(QString, name);
    KelProgressBar bar;
    bar.resize(200, 20);
    bar.readProperties(otherValues());
    PaintCounter paints(bar);
    QVERIFY(bar.setProperty(name.toLatin1().constData(), otherValues()[name]));
    QCOMPARE(paints.take(), 0);
}

QTEST_MAIN(TestProgressBarProperties)
#include "tst_progress_bar_properties.moc"
