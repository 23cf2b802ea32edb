#include "settings/cRegistry.h"

#include "RegistryScene.h"
#include "support/SystemActions.h"

#include <QTest>

using namespace Quorlin;

namespace {

constexpr auto User = RegistryRoot::CurrentUser;
constexpr auto Machine = RegistryRoot::LocalMachine;

cRegistry at(const RegistryScene &scene, const char *path, const char *name = "")
{
    cRegistry registry(scene.store());
    registry.classKey(User);
    registry.SectionKey(QString::fromUtf8(path));
    registry.ValueKey(QString::fromUtf8(name));
    return registry;
}

QString source()
{
    return QStringLiteral("tst_cregistry.cRegistry");
}

} // namespace

class tst_cregistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void propertiesAreReadAsTheyWereSet();
    void keyExistsOnceItWasMade();
    void createKeyMakesTheKeysAboveToo();
    void createKeyReportsItsFailure();
    void deleteKeyDeletesTheKeyAndItsValues();
    void deleteKeyLeavesAKeyWithSubKeys();
    void deleteKeyReportsItsFailure();
    void deleteValueDeletesIt();
    void deleteValueReportsAKeyThatWillNotOpen();
    void deleteValueReportsAKeyThatThisUserMayNotWrite();
    void deleteValueReportsAValueThatIsNotThere();
    void readingGivesTheDefaultWhenThereIsNoValue();
    void valuesComeBackByTheirStoredType_data();
    void valuesComeBackByTheirStoredType();
    void readingGoesByTheStoredTypeNotByTheProperty();
    void expandableTextsAreReadWithTheirVariables();
    void variablesOfTheProcessAreTheDefault();
    void percentSignsChangeNoType();
    void aNumberWithoutFourBytesGivesTheDefault();
    void otherTypesComeBackAsBytes();
    void writingMakesTheKey();
    void wrongTypesAreRefused_data();
    void wrongTypesAreRefused();
    void aRefusedValueLeavesItsKey();
    void aValueThatCannotBeWrittenIsReported();
    void refusedBytesAreShownInHexadecimal();
    void valuesAreEnumeratedInTheirOwnCase();
    void sectionsAreEnumeratedInTheirOwnCase();
    void enumeratingAMissingKeyGivesNothing();
};

void tst_cregistry::propertiesAreReadAsTheyWereSet()
{
    const RegistryScene scene;
    cRegistry registry(scene.store());
    registry.valueType(RegistryType::Binary);
    registry.classKey(Machine);
    registry.SectionKey(QStringLiteral("A\\B"));
    registry.ValueKey(QStringLiteral("name"));
    registry.Default(42);
    QCOMPARE(registry.valueType(), 3U);
    QCOMPARE(registry.classKey(), 0x80000002U);
    QCOMPARE(registry.SectionKey(), QStringLiteral("A\\B"));
    QCOMPARE(registry.ValueKey(), QStringLiteral("name"));
    QCOMPARE(registry.Default(), QVariant(42));
}

void tst_cregistry::keyExistsOnceItWasMade()
{
    const RegistryScene scene;
    auto registry = at(scene, "A");
    QVERIFY(!registry.KeyExists());
    QVERIFY(registry.CreateKey());
    QVERIFY(registry.KeyExists());
    QVERIFY(registry.CreateKey());
}

void tst_cregistry::createKeyMakesTheKeysAboveToo()
{
    const RegistryScene scene;
    QVERIFY(at(scene, "A\\B\\C").CreateKey());
    QVERIFY(at(scene, "A").KeyExists());
    QVERIFY(at(scene, "A\\B").KeyExists());
}

void tst_cregistry::createKeyReportsItsFailure()
{
    const RegistryScene scene;
    auto registry = at(scene, "Some\\Key");
    registry.classKey(0x80000003);
    const auto error = errorFrom([&] { registry.CreateKey(); });
    QCOMPARE(error.number(), 26001U);
    QCOMPARE(error.source(), source());
    QCOMPARE(error.description(), QStringLiteral("Failed to create registry Key: 'Some\\Key"));
}

void tst_cregistry::deleteKeyDeletesTheKeyAndItsValues()
{
    const RegistryScene scene;
    scene.write(User, "A", "n", QStringLiteral("1"));
    QVERIFY(at(scene, "A").DeleteKey());
    QVERIFY(!at(scene, "A").KeyExists());
    QVERIFY(at(scene, "A").CreateKey());
    QCOMPARE(scene.read(User, "A", "n"), std::nullopt);
}

void tst_cregistry::deleteKeyLeavesAKeyWithSubKeys()
{
    const RegistryScene scene;
    scene.write(User, "A\\B", "n", QStringLiteral("1"));
    const auto error = errorFrom([&] { at(scene, "A").DeleteKey(); });
    QCOMPARE(error.number(), 26001U);
    QCOMPARE(scene.read(User, "A\\B", "n"), QStringLiteral("1"));
}

void tst_cregistry::deleteKeyReportsItsFailure()
{
    const RegistryScene scene;
    const auto error = errorFrom([&] { at(scene, "Some\\Key").DeleteKey(); });
    QCOMPARE(error.number(), 26001U);
    QCOMPARE(error.source(), source());
    QCOMPARE(error.description(),
             QStringLiteral("Failed to delete registry Key: '-2147483647',Section: 'Some\\Key"));
}

void tst_cregistry::deleteValueDeletesIt()
{
    const RegistryScene scene;
    scene.write(User, "A", "n", QStringLiteral("1"));
    QVERIFY(at(scene, "A", "n").DeleteValue());
    QCOMPARE(scene.read(User, "A", "n"), std::nullopt);
    QVERIFY(at(scene, "A").KeyExists());
}

void tst_cregistry::deleteValueReportsAKeyThatWillNotOpen()
{
    const RegistryScene scene;
    const auto error = errorFrom([&] { at(scene, "Some\\Key", "n").DeleteValue(); });
    QCOMPARE(error.number(), 26001U);
    QCOMPARE(error.source(), source());
    QCOMPARE(
        error.description(),
        QStringLiteral("Failed to open key '-2147483647',Section: 'Some\\Key' for delete access"));
}

void tst_cregistry::deleteValueReportsAKeyThatThisUserMayNotWrite()
{
    const RegistryScene scene;
    scene.write(Machine, "A", "n", QStringLiteral("1"));
    scene.admitOrdinaryUser();
    auto registry = at(scene, "A", "n");
    registry.classKey(Machine);
    const OrdinaryUser user;
    const auto error = errorFrom([&] { registry.DeleteValue(); });
    QCOMPARE(error.description(),
             QStringLiteral("Failed to open key '-2147483646',Section: 'A' for delete access"));
}

void tst_cregistry::deleteValueReportsAValueThatIsNotThere()
{
    const RegistryScene scene;
    QVERIFY(at(scene, "Some\\Key").CreateKey());
    const auto error = errorFrom([&] { at(scene, "Some\\Key", "name").DeleteValue(); });
    QCOMPARE(error.number(), 26001U);
    QCOMPARE(error.source(), source());
    QCOMPARE(error.description(),
             QStringLiteral("Failed to delete registry Key: '-2147483647',Section: "
                            "'Some\\Key',Key: 'name"));
}

void tst_cregistry::readingGivesTheDefaultWhenThereIsNoValue()
{
    const RegistryScene scene;
    auto registry = at(scene, "A", "n");
    QCOMPARE(registry.Value(), QVariant());
    registry.Default(QStringLiteral("default"));
    QCOMPARE(registry.Value(), QVariant(QStringLiteral("default")));
    registry.CreateKey();
    QCOMPARE(registry.Value(), QVariant(QStringLiteral("default")));
    registry.Value(QStringLiteral("value"));
    QCOMPARE(registry.Value(), QVariant(QStringLiteral("value")));
}

void tst_cregistry::valuesComeBackByTheirStoredType_data()
{
    using Short = short;
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QVariant>("written");
    QTest::addColumn<QVariant>("read");
    const auto text = QVariant(QStringLiteral("größe \"ß\" 漢字 \U0001F600\r\n"));
    const auto bytes = QVariant(QByteArray("\0\x01\xFF\0", 4));
    const auto lines = QVariant(QStringLiteral("one\n\ntwo\n"));
    const auto big = QVariant(QByteArray("\x01\x02\x03\x04"));
    QTest::newRow("REG_SZ") << 1U << text << text;
    QTest::newRow("REG_SZ, empty") << 1U << QVariant(QString()) << QVariant(QString());
    QTest::newRow("REG_SZ, number") << 1U << QVariant(17) << QVariant(QStringLiteral("17"));
    QTest::newRow("REG_EXPAND_SZ") << 2U << text << text;
    QTest::newRow("REG_BINARY") << 3U << bytes << bytes;
    QTest::newRow("REG_BINARY, empty")
        << 3U << QVariant(QByteArray("")) << QVariant(QByteArray(""));
    QTest::newRow("REG_DWORD") << 4U << QVariant(-2) << QVariant(qint32(-2));
    QTest::newRow("REG_DWORD, unsigned")
        << 4U << QVariant(0x80000001U) << QVariant(qint32(-2147483647));
    QTest::newRow("REG_DWORD, 16 bits") << 4U << QVariant::fromValue(Short(-5)) << QVariant(-5);
    QTest::newRow("REG_DWORD, 16 bits, unsigned")
        << 4U << QVariant::fromValue(quint16(65535)) << QVariant(65535);
    QTest::newRow("REG_DWORD_BIG_ENDIAN") << 5U << QVariant(0x01020304) << big;
    QTest::newRow("REG_MULTI_SZ") << 7U << lines << lines;
}

void tst_cregistry::valuesComeBackByTheirStoredType()
{
    QFETCH(quint32, type);
    QFETCH(QVariant, written);
    QFETCH(QVariant, read);
    const RegistryScene scene;
    auto registry = at(scene, "A", "n");
    registry.valueType(type);
    registry.Value(written);
    QCOMPARE(registry.Value(), read);
    QCOMPARE(registry.Value().typeId(), read.typeId());
    QCOMPARE(
        scene.store()->queryValue({User, QStringLiteral("A")}, QStringLiteral("n")).result.type,
        type);
}

void tst_cregistry::readingGoesByTheStoredTypeNotByTheProperty()
{
    const RegistryScene scene;
    auto registry = at(scene, "A", "n");
    registry.valueType(RegistryType::Number);
    registry.Value(5);
    registry.valueType(RegistryType::Text);
    QCOMPARE(registry.Value(), QVariant(5));
    registry.Value(QStringLiteral("text"));
    QCOMPARE(registry.Value(), QVariant(QStringLiteral("text")));
}

void tst_cregistry::expandableTextsAreReadWithTheirVariables()
{
    const RegistryScene scene;
    cRegistry registry(scene.store(), [](const QString &name) {
        return name == QLatin1String("HERE") ? std::optional(QStringLiteral("/there"))
                                             : std::nullopt;
    });
    registry.classKey(User);
    registry.SectionKey(QStringLiteral("A"));
    registry.valueType(RegistryType::ExpandText);
    const QList<std::pair<QString, QString>> texts{
        {QStringLiteral("%HERE%/x/%HERE%"), QStringLiteral("/there/x//there")},
        {QStringLiteral("%NOWHERE% %HERE%"), QStringLiteral("%NOWHERE% /there")},
        {QStringLiteral("100%HERE%"), QStringLiteral("100/there")},
        {QStringLiteral("%x%HERE%"), QStringLiteral("%x/there")},
        {QStringLiteral("100 % and %%"), QStringLiteral("100 % and %%")},
        {QStringLiteral("%%HERE%%"), QStringLiteral("%/there%")},
        {QStringLiteral("%HERE"), QStringLiteral("%HERE")},
    };
    for (const auto &[written, read] : texts) {
        registry.Value(written);
        QCOMPARE(registry.Value(), QVariant(read));
    }
    QCOMPARE(scene.read(User, "A"), texts.last().first);
}

void tst_cregistry::variablesOfTheProcessAreTheDefault()
{
    const RegistryScene scene;
    auto registry = at(scene, "A");
    registry.valueType(RegistryType::ExpandText);
    registry.Value(QStringLiteral("%QUORLIN_TEST_SET% %QUORLIN_TEST_UNSET%"));
    qputenv("QUORLIN_TEST_SET", "größe");
    qunsetenv("QUORLIN_TEST_UNSET");
    QCOMPARE(registry.Value(), QVariant(QStringLiteral("größe %QUORLIN_TEST_UNSET%")));
}

void tst_cregistry::percentSignsChangeNoType()
{
    const RegistryScene scene;
    auto registry = at(scene, "A");
    registry.Value(QStringLiteral("%HOME%"));
    QCOMPARE(registry.Value(), QVariant(QStringLiteral("%HOME%")));
    QCOMPARE(scene.store()->queryValue({User, QStringLiteral("A")}, {}).result.type, 1U);
}

void tst_cregistry::aNumberWithoutFourBytesGivesTheDefault()
{
    const RegistryScene scene;
    const RegistryKey key{User, QStringLiteral("A")};
    QCOMPARE(scene.store()->setValue(key, {}, {RegistryType::Number, "abc"}), RegistryStatus::Done);
    auto registry = at(scene, "A");
    registry.Default(7);
    QCOMPARE(registry.Value(), QVariant(7));
}

void tst_cregistry::otherTypesComeBackAsBytes()
{
    const RegistryScene scene;
    const RegistryKey key{User, QStringLiteral("A")};
    constexpr quint32 noType = 0;
    QCOMPARE(scene.store()->setValue(key, {}, {noType, "abc"}), RegistryStatus::Done);
    QCOMPARE(at(scene, "A").Value(), QVariant(QByteArray("abc")));
}

void tst_cregistry::writingMakesTheKey()
{
    const RegistryScene scene;
    at(scene, "A\\B", "n").Value(QStringLiteral("1"));
    QVERIFY(at(scene, "A\\B").KeyExists());
    QVERIFY(at(scene, "A").KeyExists());
}

void tst_cregistry::wrongTypesAreRefused_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QVariant>("value");
    const auto text = QVariant(QStringLiteral("5"));
    QTest::newRow("text for bytes") << 3U << text;
    QTest::newRow("number for bytes") << 3U << QVariant(5);
    for (const auto type : {4U, 5U}) {
        const auto row = [type](const char *name) -> QTestData & {
            return QTest::addRow("%s, type %u", name, type) << type;
        };
        row("text for a number") << text;
        row("bytes for a number") << QVariant(QByteArray("abcd"));
        row("fraction for a number") << QVariant(5.0);
        row("64 bits for a number") << QVariant(qint64(5));
        row("truth for a number") << QVariant(true);
        row("nothing for a number") << QVariant();
    }
    QTest::newRow("list for a text") << 1U << QVariant(QVariantList{1, 2});
    for (const auto type : {0U, 6U, 8U, 11U})
        QTest::addRow("type %u", type) << type << text;
}

void tst_cregistry::wrongTypesAreRefused()
{
    QFETCH(quint32, type);
    QFETCH(QVariant, value);
    const RegistryScene scene;
    auto registry = at(scene, "A", "n");
    registry.Value(QStringLiteral("before"));
    registry.valueType(type);
    const auto error = errorFrom([&] { registry.Value(value); });
    QCOMPARE(error.number(), 0x800469A9U);
    QCOMPARE(error.source(), source());
    QCOMPARE(registry.Value(), QVariant(QStringLiteral("before")));
}

/// The key is made before the value is looked at.
void tst_cregistry::aRefusedValueLeavesItsKey()
{
    const RegistryScene scene;
    auto registry = at(scene, "A", "n");
    registry.valueType(RegistryType::Number);
    const auto error = errorFrom([&] { registry.Value(QStringLiteral("five")); });
    QCOMPARE(error.description(),
             QStringLiteral("Failed to set registry value Key: '-2147483647',Section: 'A',Key: "
                            "'n' to value: 'five'"));
    QVERIFY(registry.KeyExists());
    QCOMPARE(registry.EnumerateValues(), QStringList());
}

void tst_cregistry::aValueThatCannotBeWrittenIsReported()
{
    const RegistryScene scene;
    auto registry = at(scene, "Some\\Key", "name");
    registry.classKey(0x80000003);
    const auto error = errorFrom([&] { registry.Value(QStringLiteral("text")); });
    QCOMPARE(error.number(), 0x800469A9U);
    QCOMPARE(error.source(), source());
    QCOMPARE(error.description(),
             QStringLiteral("Failed to set registry value Key: '-2147483645',Section: "
                            "'Some\\Key',Key: 'name' to value: 'text'"));
}

void tst_cregistry::refusedBytesAreShownInHexadecimal()
{
    const RegistryScene scene;
    auto registry = at(scene, "A", "n");
    registry.valueType(RegistryType::Number);
    const auto error = errorFrom([&] { registry.Value(QByteArray("\x00\xFF", 2)); });
    QVERIFY(error.description().endsWith(QLatin1String(" to value: '00ff'")));
}

void tst_cregistry::valuesAreEnumeratedInTheirOwnCase()
{
    const RegistryScene scene;
    for (const auto *name : {"Zwei", "", "eins", "Äpfel"})
        scene.write(User, "A", name, QStringLiteral("1"));
    scene.write(User, "a", "ZWEI", QStringLiteral("2"));
    QCOMPARE(at(scene, "A").EnumerateValues(),
             QStringList({QStringLiteral("Zwei"), QString(), QStringLiteral("eins"),
                          QStringLiteral("Äpfel")}));
}

void tst_cregistry::sectionsAreEnumeratedInTheirOwnCase()
{
    const RegistryScene scene;
    for (const auto *path : {"Top\\beta\\x", "Top\\Alpha", "Top\\ALPHA\\y", "Topper\\no"})
        at(scene, path).CreateKey();
    const QStringList expected{QStringLiteral("Alpha"), QStringLiteral("beta")};
    QCOMPARE(at(scene, "TOP").EnumerateSections(), expected);
    QCOMPARE(at(scene, "").EnumerateSections(),
             QStringList({QStringLiteral("Top"), QStringLiteral("Topper")}));
}

void tst_cregistry::enumeratingAMissingKeyGivesNothing()
{
    const RegistryScene scene;
    QCOMPARE(at(scene, "A").EnumerateSections(), QStringList());
    QCOMPARE(at(scene, "A").EnumerateValues(), QStringList());
}

QTEST_GUILESS_MAIN(tst_cregistry)
#include "tst_cregistry.moc"
