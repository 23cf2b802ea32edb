#include "settings/Registry.h"

#include "RegistryScene.h"

#include <QTest>

using namespace Quorlin;

namespace {

constexpr auto User = RegistryRoot::CurrentUser;
const auto AppKey = QStringLiteral("Software\\Varnex Software\\Quorlin\\2.0");

} // namespace

class tst_registry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setKeyWithoutAKeyWritesNothing();
    void setKeyWithNeitherNameNorValueMakesTheKey();
    void setKeyWithANameAloneWritesAnEmptyValue();
    void setKeyWithAValueAloneWritesTheDefaultValue();
    void setKeyWritesTextsByDefault();
    void setKeyTakesTheTypeThatIsGiven();
    void setKeyFailsInSilence();
    void getKeyReadsWhatSetKeyWrote();
    void getKeyGivesNothingOnAnyFailure();
    void getKeyGivesANumberAsDecimalText();
    void getKeyWithoutANameReadsTheValueThatWasNamedLast();
    void removeKeyDeletesTheNamedValueAlone();
    void removeKeyWithoutANameDeletesTheKey();
    void removeKeyFailsInSilence();
    void existTellsOfTheKeyWhateverTheValue();
    void setAppParamTouchesNoKey();
    void appDataIsWrittenUnderTheBoundKey();
    void appDataWithASubKeyIsWrittenBelowTheBoundKeyWhichIsMadeForIt();
    void appDataThatDoesNotExistIsEmpty();
    void appDataOfAnUnboundObjectGoesNowhere();
    void appDataHasTheBoundType();
    void appDataIsThereForTheNextObject();
};

void tst_registry::setKeyWithoutAKeyWritesNothing()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetKey(User, {}, RegistryType::Text, QStringLiteral("name"), QStringLiteral("value"));
    QCOMPARE(scene.folder().names(), QStringList());
    QCOMPARE(scene.read(User, "", "name"), std::nullopt);
}

void tst_registry::setKeyWithNeitherNameNorValueMakesTheKey()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetKey(User, QStringLiteral("A\\B"));
    QVERIFY(registry.Exist(User, QStringLiteral("A\\B")));
    QCOMPARE(scene.store()->enumerateValues({User, QStringLiteral("A\\B")}).result, QStringList());
}

void tst_registry::setKeyWithANameAloneWritesAnEmptyValue()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetKey(User, QStringLiteral("A"), RegistryType::Text, QStringLiteral("name"));
    QCOMPARE(scene.read(User, "A", "name"), QString());
}

void tst_registry::setKeyWithAValueAloneWritesTheDefaultValue()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetAppParam(User, QStringLiteral("A"));
    registry.SetAppData(QStringLiteral("other"), QStringLiteral("first"));
    registry.SetKey(User, QStringLiteral("A"), RegistryType::Text, {}, QStringLiteral("value"));
    QCOMPARE(scene.read(User, "A", ""), QStringLiteral("value"));
    QCOMPARE(scene.read(User, "A", "other"), QStringLiteral("first"));
}

void tst_registry::setKeyWritesTextsByDefault()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    const auto text = QStringLiteral("%HOME% größer ↗");
    registry.SetKey(User, QStringLiteral("A"), RegistryType::Text, QStringLiteral("n"), text);
    const auto found = scene.store()->queryValue({User, QStringLiteral("A")}, QStringLiteral("n"));
    QCOMPARE(found.result.type, 1U);
    QCOMPARE(registry.GetKey(User, QStringLiteral("A"), RegistryType::Text, QStringLiteral("n")),
             text);
}

void tst_registry::setKeyTakesTheTypeThatIsGiven()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetKey(User, QStringLiteral("A"), RegistryType::MultiText, QStringLiteral("n"),
                    QStringLiteral("one\ntwo"));
    const auto found = scene.store()->queryValue({User, QStringLiteral("A")}, QStringLiteral("n"));
    QCOMPARE(found.result.type, 7U);
    QCOMPARE(found.result.data, QByteArray("one\0two", 7));
}

void tst_registry::setKeyFailsInSilence()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetKey(0x80000003, QStringLiteral("A"));
    registry.SetKey(0x80000003, QStringLiteral("A"), RegistryType::Text, QStringLiteral("n"),
                    QStringLiteral("v"));
    QCOMPARE(scene.folder().names(), QStringList());
    // A text is no number and no bytes.
    for (const auto type : {RegistryType::Number, RegistryType::Binary}) {
        registry.SetKey(User, QStringLiteral("A"), type, QStringLiteral("n"), QStringLiteral("5"));
        QCOMPARE(scene.read(User, "A", "n"), std::nullopt);
    }
}

void tst_registry::getKeyReadsWhatSetKeyWrote()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    for (const auto root : {RegistryRoot::ClassesRoot, User, RegistryRoot::LocalMachine}) {
        const auto value = QString::number(root);
        registry.SetKey(root, QStringLiteral("K"), RegistryType::Text, QStringLiteral("n"), value);
        QCOMPARE(
            registry.GetKey(root, QStringLiteral("K"), RegistryType::Text, QStringLiteral("n")),
            value);
    }
}

void tst_registry::getKeyGivesNothingOnAnyFailure()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    const auto name = QStringLiteral("n");
    QCOMPARE(registry.GetKey(User, QStringLiteral("Missing"), RegistryType::Text, name), QString());
    QCOMPARE(registry.GetKey(0x80000003, QStringLiteral("A"), RegistryType::Text, name), QString());
    const RegistryKey key{User, QStringLiteral("A")};
    QCOMPARE(scene.store()->setValue(key, name, {RegistryType::Binary, "bytes"}),
             RegistryStatus::Done);
    QCOMPARE(registry.GetKey(User, key.path, RegistryType::Text, name), QString());
}

void tst_registry::getKeyGivesANumberAsDecimalText()
{
    const RegistryScene scene;
    const RegistryKey key{User, QStringLiteral("A")};
    const auto number = RegistryValue::from(RegistryType::Number, -12);
    QCOMPARE(scene.store()->setValue(key, QStringLiteral("n"), *number), RegistryStatus::Done);
    QCOMPARE(Registry(scene.store()).GetKey(User, key.path, {}, QStringLiteral("n")),
             QStringLiteral("-12"));
}

/// The name is set only when one is given, so the earlier one still counts.
void tst_registry::getKeyWithoutANameReadsTheValueThatWasNamedLast()
{
    const RegistryScene scene;
    scene.write(User, "A", "", QStringLiteral("default"));
    scene.write(User, "A", "n", QStringLiteral("named"));
    Registry registry(scene.store());
    QCOMPARE(registry.GetKey(User, QStringLiteral("A")), QStringLiteral("default"));
    QCOMPARE(registry.GetKey(User, QStringLiteral("A"), {}, QStringLiteral("n")),
             QStringLiteral("named"));
    QCOMPARE(registry.GetKey(User, QStringLiteral("A")), QStringLiteral("named"));
}

void tst_registry::removeKeyDeletesTheNamedValueAlone()
{
    const RegistryScene scene;
    scene.write(User, "A", "one", QStringLiteral("1"));
    scene.write(User, "A", "two", QStringLiteral("2"));
    Registry registry(scene.store());
    registry.RemoveKey(User, QStringLiteral("A"), RegistryType::Text, QStringLiteral("one"));
    QCOMPARE(scene.read(User, "A", "one"), std::nullopt);
    QCOMPARE(scene.read(User, "A", "two"), QStringLiteral("2"));
}

void tst_registry::removeKeyWithoutANameDeletesTheKey()
{
    const RegistryScene scene;
    scene.write(User, "A\\B", "n", QStringLiteral("1"));
    Registry registry(scene.store());
    registry.RemoveKey(User, QStringLiteral("A\\B"));
    QVERIFY(!registry.Exist(User, QStringLiteral("A\\B")));
    QVERIFY(registry.Exist(User, QStringLiteral("A")));
}

void tst_registry::removeKeyFailsInSilence()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.RemoveKey(User, QStringLiteral("A"));
    registry.RemoveKey(User, QStringLiteral("A"), RegistryType::Text, QStringLiteral("n"));
    registry.RemoveKey(0x80000003, QStringLiteral("A"));
    QCOMPARE(scene.folder().names(), QStringList());
}

void tst_registry::existTellsOfTheKeyWhateverTheValue()
{
    const RegistryScene scene;
    scene.write(User, "A", "n", QStringLiteral("1"));
    Registry registry(scene.store());
    QVERIFY(registry.Exist(User, QStringLiteral("A")));
    QVERIFY(registry.Exist(User, QStringLiteral("A"), RegistryType::Text, QStringLiteral("none")));
    QVERIFY(!registry.Exist(User, QStringLiteral("B"), RegistryType::Text, QStringLiteral("n")));
    QVERIFY(!registry.Exist(0x80000003, QStringLiteral("A")));
}

void tst_registry::setAppParamTouchesNoKey()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetAppParam(User, AppKey);
    QVERIFY(!registry.Exist(User, AppKey));
    QCOMPARE(scene.folder().names(), QStringList());
}

void tst_registry::appDataIsWrittenUnderTheBoundKey()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetAppParam(User, AppKey);
    registry.SetAppData(QStringLiteral("Skin"), QStringLiteral("Varnex"));
    QCOMPARE(registry.GetAppData(QStringLiteral("Skin")), QStringLiteral("Varnex"));
    QCOMPARE(scene.read(User, "Software\\Varnex Software\\Quorlin\\2.0", "Skin"),
             QStringLiteral("Varnex"));
}

void tst_registry::appDataWithASubKeyIsWrittenBelowTheBoundKeyWhichIsMadeForIt()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetAppParam(User, AppKey);
    registry.SetAppData(QStringLiteral("Left"), QStringLiteral("10"), QStringLiteral("Window"));
    QCOMPARE(registry.GetAppData(QStringLiteral("Left"), QStringLiteral("Window")),
             QStringLiteral("10"));
    QCOMPARE(scene.read(User, "Software\\Varnex Software\\Quorlin\\2.0\\Window", "Left"),
             QStringLiteral("10"));
    QCOMPARE(registry.GetAppData(QStringLiteral("Left")), QString());
}

void tst_registry::appDataThatDoesNotExistIsEmpty()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetAppParam(User, AppKey);
    QCOMPARE(registry.GetAppData(QStringLiteral("Skin")), QString());
    registry.SetAppData(QStringLiteral("Other"), QStringLiteral("1"));
    QCOMPARE(registry.GetAppData(QStringLiteral("Skin")), QString());
    QCOMPARE(registry.GetAppData(QStringLiteral("Other"), QStringLiteral("Window")), QString());
}

void tst_registry::appDataOfAnUnboundObjectGoesNowhere()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetAppData(QStringLiteral("n"), QStringLiteral("1"));
    registry.SetAppData(QStringLiteral("n"), QStringLiteral("1"), QStringLiteral("Sub"));
    QCOMPARE(registry.GetAppData(QStringLiteral("n")), QString());
    QCOMPARE(scene.folder().names(), QStringList());
}

void tst_registry::appDataHasTheBoundType()
{
    const RegistryScene scene;
    Registry registry(scene.store());
    registry.SetAppParam(User, AppKey, RegistryType::ExpandText);
    registry.SetAppData(QStringLiteral("n"), QStringLiteral("text"));
    QCOMPARE(scene.store()->queryValue({User, AppKey}, QStringLiteral("n")).result.type, 2U);
}

void tst_registry::appDataIsThereForTheNextObject()
{
    const RegistryScene scene;
    Registry first(scene.store());
    first.SetAppParam(User, AppKey);
    first.SetAppData(QStringLiteral("n"), QStringLiteral("text"));
    Registry second(std::make_shared<LayeredRegistry>(scene.userFile(), scene.machineFile()));
    second.SetAppParam(User, AppKey);
    QCOMPARE(second.GetAppData(QStringLiteral("n")), QStringLiteral("text"));
}

QTEST_GUILESS_MAIN(tst_registry)
#include "tst_registry.moc"
