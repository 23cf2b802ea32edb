#include "app/ModMain.h"

#include "settings/IniFile.h"
#include "settings/Registry.h"
#include "settings/SystemRegistry.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <stdexcept>

using namespace Quorlin;

/// The checks of a start.
class TestModMain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSystemsComponentsAreThere();
    void aMissingIniFileComponentIsTold();
    void aMissingRegistryComponentIsTold();
    void aComponentThatFailsIsTold();
    void anInstallationWithBothIsWhole();
    void aMissingSettingsFileIsTold();
    void aMissingSettingsFolderIsTold();
    void aFolderInThePlaceOfTheSettingsFileIsTold();
    void whatTheSettingsHoldDoesNotCount();

private:
    [[nodiscard]] static bool isOnlyMessage(const KeptMessages &messages, const char *text);
};

namespace {

ModMain::SettingsComponents missing()
{
    return {[] { return std::unique_ptr<IniFile>(); }, [] { return std::unique_ptr<Registry>(); }};
}

constexpr auto Corrupted = "Quorlin V2 is corrupted, reinstall the product.";

} // namespace

bool TestModMain::isOnlyMessage(const KeptMessages &messages, const char *text)
{
    return messages.all().size() == 1 && messages.all().first().text == QLatin1String(text) &&
           messages.all().first().style == MessageStyle::Critical &&
           messages.all().first().title == QLatin1String("Error");
}

void TestModMain::theSystemsComponentsAreThere()
{
    KeptMessages messages;
    const auto components = ModMain::SettingsComponents::ofSystem();
    QVERIFY(ModMain::CheckIniFileComponent(components, messages));
    QVERIFY(ModMain::CheckRegistryComponent(components, messages));
    QVERIFY(messages.all().isEmpty());
}

void TestModMain::aMissingIniFileComponentIsTold()
{
    KeptMessages messages;
    QVERIFY(!ModMain::CheckIniFileComponent(missing(), messages));
    QVERIFY(isOnlyMessage(messages, "Can't find the xbIniFile component"));
}

void TestModMain::aMissingRegistryComponentIsTold()
{
    KeptMessages messages;
    QVERIFY(!ModMain::CheckRegistryComponent(missing(), messages));
    QVERIFY(isOnlyMessage(messages, "Can't find the xbRegistry component"));
}

void TestModMain::aComponentThatFailsIsTold()
{
    KeptMessages messages;
    const ModMain::SettingsComponents failing{
        []() -> std::unique_ptr<IniFile> { throw std::runtime_error("no memory"); },
        []() -> std::unique_ptr<Registry> { throw std::runtime_error("no memory"); }};
    QVERIFY(!ModMain::CheckIniFileComponent(failing, messages));
    QVERIFY(!ModMain::CheckRegistryComponent(failing, messages));
    QCOMPARE(messages.all().size(), 2);
}

void TestModMain::anInstallationWithBothIsWhole()
{
    const TestFolder folder;
    folder.makeFolder("Settings");
    folder.write("Quorlin.ini", "[Printer]\n");
    KeptMessages messages;
    QVERIFY(ModMain::CheckSettingsFiles(folder.path(), messages));
    QVERIFY(messages.all().isEmpty());
}

/// The settings themselves live in the registry; the file must be there all the same.
void TestModMain::aMissingSettingsFileIsTold()
{
    const TestFolder folder;
    folder.makeFolder("Settings");
    KeptMessages messages;
    QVERIFY(!ModMain::CheckSettingsFiles(folder.path(), messages));
    QVERIFY(isOnlyMessage(messages, Corrupted));
}

void TestModMain::aMissingSettingsFolderIsTold()
{
    const TestFolder folder;
    folder.write("Quorlin.ini", "[Printer]\n");
    KeptMessages messages;
    QVERIFY(!ModMain::CheckSettingsFiles(folder.path(), messages));
    QVERIFY(isOnlyMessage(messages, Corrupted));
}

void TestModMain::aFolderInThePlaceOfTheSettingsFileIsTold()
{
    const TestFolder folder;
    folder.makeFolder("Settings");
    folder.makeFolder("Quorlin.ini");
    KeptMessages messages;
    QVERIFY(!ModMain::CheckSettingsFiles(folder.path(), messages));
    QVERIFY(isOnlyMessage(messages, Corrupted));
}

void TestModMain::whatTheSettingsHoldDoesNotCount()
{
    const TestFolder folder;
    folder.makeFolder("Settings");
    folder.write("Quorlin.ini", QByteArray(5000, '\0'));
    KeptMessages messages;
    QVERIFY(ModMain::CheckSettingsFiles(folder.path(), messages));
}

QTEST_GUILESS_MAIN(TestModMain)
#include "tst_modmain.moc"
