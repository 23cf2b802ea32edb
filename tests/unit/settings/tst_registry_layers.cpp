#include "settings/LayeredRegistry.h"
#include "settings/SystemRegistry.h"

#include "RegistryScene.h"
#include "support/SystemActions.h"

#include <QFile>
#include <QTest>

using namespace Quorlin;

namespace {

constexpr auto Classes = RegistryRoot::ClassesRoot;
constexpr auto User = RegistryRoot::CurrentUser;
constexpr auto Machine = RegistryRoot::LocalMachine;

RegistryKey key(quint32 root, const char *path)
{
    return {root, QString::fromUtf8(path)};
}

const auto Text = QStringLiteral("text");

} // namespace

class tst_registry_layers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theUsersAndTheMachinesKeysAreInTheirOwnFiles();
    void keysAreFoundWithoutRegardToCase();
    void valuesAreFoundWithoutRegardToCaseAndKeepTheirs();
    void emptyNamesInAPathDoNotCount();
    void rootsAreThereAlways();
    void aRootIsNeverDeleted();
    void aRootTakesValues();
    void otherRootsAreRefused();
    void namesThatAreTooLongAreRefused();
    void aKeyWithSubKeysIsNotDeleted();
    void whatIsMissingIsMissing();
    void anEqualValueOfAnotherTypeIsWritten();
    void classesShowTheUsersInFrontOfTheMachines();
    void classesListEveryNameOnce();
    void classesAreWrittenForTheUser();
    void classesOfTheMachineAloneAreWrittenThere();
    void anOrdinaryUserWritesClassesOfTheMachineForThemselves();
    void classesAreDeletedFromTheUserFirst();
    void anOrdinaryUserReadsTheMachinesKeysAndCannotWriteThem();
    void anOrdinaryUserMakesNothingForTheMachine();
    void theSystemsFilesAreWhereTheEnvironmentSays();
    void theMachinesFileIsFoundBehindFoldersWithoutOne();
    void aNewMachinesFileGoesToTheUsualFolderWhereThatCounts();
    void relativeFoldersOfTheEnvironmentDoNotCount();
};

void tst_registry_layers::theUsersAndTheMachinesKeysAreInTheirOwnFiles()
{
    const RegistryScene scene;
    scene.write(User, "A", "", QStringLiteral("user"));
    QVERIFY(QFile::exists(scene.userFile()));
    QVERIFY(!QFile::exists(scene.machineFile()));
    scene.write(Machine, "A", "", QStringLiteral("machine"));
    QCOMPARE(scene.read(User, "A"), QStringLiteral("user"));
    QCOMPARE(scene.read(Machine, "A"), QStringLiteral("machine"));
}

/// Beyond ASCII too: that is what the database itself would not do.
void tst_registry_layers::keysAreFoundWithoutRegardToCase()
{
    const RegistryScene scene;
    scene.write(User, "Software\\Größe\\ΣΊΣΥΦΟΣ\\Ёлка", "n", Text);
    QCOMPARE(scene.read(User, "SOFTWARE\\GRÖßE\\σίσυφος\\ёЛКА", "n"), Text);
    QCOMPARE(scene.store()->createKey(key(User, "SOFTWARE\\GRÖßE")), RegistryStatus::Done);
    QCOMPARE(scene.store()->enumerateKeys(key(User, "software")).result,
             QStringList({QStringLiteral("Größe")}));
}

void tst_registry_layers::valuesAreFoundWithoutRegardToCaseAndKeepTheirs()
{
    const RegistryScene scene;
    scene.write(User, "A", "Überschrift", QStringLiteral("1"));
    scene.write(User, "A", "ÜBERSCHRIFT", QStringLiteral("2"));
    QCOMPARE(scene.read(User, "A", "überschrift"), QStringLiteral("2"));
    QCOMPARE(scene.store()->enumerateValues(key(User, "A")).result,
             QStringList({QStringLiteral("Überschrift")}));
    QCOMPARE(scene.store()->deleteValue(key(User, "a"), QStringLiteral("überschrift")),
             RegistryStatus::Done);
}

void tst_registry_layers::emptyNamesInAPathDoNotCount()
{
    const RegistryScene scene;
    scene.write(User, "\\A\\\\B\\", "n", Text);
    QCOMPARE(scene.read(User, "A\\B", "n"), Text);
    QCOMPARE(scene.read(User, "A/B", "n"), std::nullopt);
}

void tst_registry_layers::rootsAreThereAlways()
{
    const RegistryScene scene;
    for (const auto root : {Classes, User, Machine}) {
        QCOMPARE(scene.store()->openKey(key(root, "")), RegistryStatus::Done);
        QCOMPARE(scene.store()->createKey(key(root, "\\")), RegistryStatus::Done);
        QCOMPARE(scene.store()->enumerateKeys(key(root, "")).status, RegistryStatus::Done);
    }
    QCOMPARE(scene.folder().names(), QStringList());
}

void tst_registry_layers::aRootIsNeverDeleted()
{
    const RegistryScene scene;
    scene.write(User, "Software\\Classes\\A", "", Text);
    scene.write(User, "", "n", Text);
    for (const auto *path : {"", "\\", "\\\\"}) {
        QCOMPARE(scene.store()->deleteKey(key(User, path)), RegistryStatus::Refused);
        QCOMPARE(scene.store()->deleteKey(key(Classes, path)), RegistryStatus::Refused);
    }
    QCOMPARE(scene.read(Classes, "A"), Text);
    QCOMPARE(scene.read(User, "", "n"), Text);
}

void tst_registry_layers::aRootTakesValues()
{
    const RegistryScene scene;
    scene.write(User, "", "n", Text);
    QCOMPARE(scene.read(User, "", "n"), Text);
    QCOMPARE(scene.store()->enumerateValues(key(User, "")).result,
             QStringList({QStringLiteral("n")}));
    scene.write(Classes, "", "n", Text);
    QCOMPARE(scene.read(User, "Software\\Classes", "n"), Text);
}

void tst_registry_layers::otherRootsAreRefused()
{
    const RegistryScene scene;
    for (const auto root : {0U, 1U, 0x80000003U, 0x80000005U, 0xFFFFFFFFU}) {
        const auto at = key(root, "A");
        QCOMPARE(scene.store()->openKey(at), RegistryStatus::Refused);
        QCOMPARE(scene.store()->createKey(at), RegistryStatus::Refused);
        QCOMPARE(scene.store()->deleteKey(at), RegistryStatus::Refused);
        QCOMPARE(scene.store()->deleteValue(at, {}), RegistryStatus::Refused);
        QCOMPARE(scene.store()->queryValue(at, {}).status, RegistryStatus::Refused);
        QCOMPARE(scene.store()->setValue(at, {}, {}), RegistryStatus::Refused);
        QCOMPARE(scene.store()->enumerateValues(at).status, RegistryStatus::Refused);
        QCOMPARE(scene.store()->enumerateKeys(at).status, RegistryStatus::Refused);
    }
    QCOMPARE(scene.folder().names(), QStringList());
}

void tst_registry_layers::namesThatAreTooLongAreRefused()
{
    const RegistryScene scene;
    auto &store = *scene.store();
    const auto longest = QString(RegistryPath::LongestKeyName, QLatin1Char('k'));
    QCOMPARE(store.createKey({User, longest}), RegistryStatus::Done);
    QCOMPARE(store.createKey({User, longest + QLatin1Char('k')}), RegistryStatus::Refused);
    const auto deep = QStringLiteral("k\\").repeated(RegistryPath::MostLevels);
    QCOMPARE(store.createKey({User, deep}), RegistryStatus::Done);
    QCOMPARE(store.createKey({User, deep + QLatin1Char('k')}), RegistryStatus::Refused);
    const auto name = QString(RegistryPath::LongestValueName, QLatin1Char('v'));
    QCOMPARE(store.setValue({User, longest}, name, {}), RegistryStatus::Done);
    QCOMPARE(store.setValue({User, longest}, name + name, {}), RegistryStatus::Refused);
    QCOMPARE(store.queryValue({User, longest}, name + name).status, RegistryStatus::Refused);
    QCOMPARE(store.deleteValue({User, longest}, name + name), RegistryStatus::Refused);
}

void tst_registry_layers::aKeyWithSubKeysIsNotDeleted()
{
    const RegistryScene scene;
    scene.write(User, "A", "n", Text);
    scene.write(User, "A\\B", "n", Text);
    QCOMPARE(scene.store()->deleteKey(key(User, "A")), RegistryStatus::HasSubKeys);
    QCOMPARE(scene.read(User, "A", "n"), Text);
    QCOMPARE(scene.store()->deleteKey(key(User, "A\\B")), RegistryStatus::Done);
    QCOMPARE(scene.store()->deleteKey(key(User, "A")), RegistryStatus::Done);
    QCOMPARE(scene.store()->openKey(key(User, "A")), RegistryStatus::Missing);
}

void tst_registry_layers::whatIsMissingIsMissing()
{
    const RegistryScene scene;
    for (auto round = 0; round < 2; ++round) {
        const auto at = key(User, "None");
        QCOMPARE(scene.store()->openKey(at), RegistryStatus::Missing);
        QCOMPARE(scene.store()->deleteKey(at), RegistryStatus::Missing);
        QCOMPARE(scene.store()->deleteValue(at, {}), RegistryStatus::Missing);
        QCOMPARE(scene.store()->queryValue(at, {}).status, RegistryStatus::Missing);
        QCOMPARE(scene.store()->enumerateValues(at).status, RegistryStatus::Missing);
        QCOMPARE(scene.store()->enumerateKeys(at).status, RegistryStatus::Missing);
        // The same with a file that holds something else.
        scene.write(User, "Some", "n", Text);
    }
}

void tst_registry_layers::anEqualValueOfAnotherTypeIsWritten()
{
    const RegistryScene scene;
    const auto at = key(User, "A");
    for (const auto type : {RegistryType::Text, RegistryType::Binary, RegistryType::Text}) {
        const RegistryValue value{type, "same"};
        QCOMPARE(scene.store()->setValue(at, {}, value), RegistryStatus::Done);
        QCOMPARE(scene.store()->queryValue(at, {}).result, value);
    }
}

void tst_registry_layers::classesShowTheUsersInFrontOfTheMachines()
{
    const RegistryScene scene;
    scene.write(Machine, "SOFTWARE\\Classes\\A", "both", QStringLiteral("machine"));
    scene.write(Machine, "SOFTWARE\\Classes\\A", "machine", QStringLiteral("machine"));
    QCOMPARE(scene.read(Classes, "A", "both"), QStringLiteral("machine"));
    scene.write(User, "Software\\Classes\\A", "both", QStringLiteral("user"));
    QCOMPARE(scene.read(Classes, "A", "both"), QStringLiteral("user"));
    QCOMPARE(scene.read(Classes, "A", "machine"), QStringLiteral("machine"));
    QCOMPARE(scene.read(Machine, "SOFTWARE\\Classes\\A", "both"), QStringLiteral("machine"));
}

void tst_registry_layers::classesListEveryNameOnce()
{
    const RegistryScene scene;
    scene.write(User, "Software\\Classes\\.A\\x", "One", Text);
    scene.write(Machine, "SOFTWARE\\Classes\\.a\\X", "ONE", Text);
    scene.write(Machine, "SOFTWARE\\Classes\\.a\\x", "two", Text);
    scene.write(Machine, "SOFTWARE\\Classes\\.b", "", Text);
    QCOMPARE(scene.store()->enumerateKeys(key(Classes, "")).result,
             QStringList({QStringLiteral(".A"), QStringLiteral(".b")}));
    QCOMPARE(scene.store()->enumerateValues(key(Classes, ".a\\x")).result,
             QStringList({QStringLiteral("One"), QStringLiteral("two")}));
}

void tst_registry_layers::classesAreWrittenForTheUser()
{
    const RegistryScene scene;
    scene.write(Classes, "A", "n", Text);
    QCOMPARE(scene.read(User, "Software\\Classes\\A", "n"), Text);
    QVERIFY(!QFile::exists(scene.machineFile()));
    scene.write(Machine, "SOFTWARE\\Classes\\A", "n", QStringLiteral("machine"));
    scene.write(Classes, "A", "n", QStringLiteral("new"));
    QCOMPARE(scene.read(User, "Software\\Classes\\A", "n"), QStringLiteral("new"));
    QCOMPARE(scene.read(Machine, "SOFTWARE\\Classes\\A", "n"), QStringLiteral("machine"));
}

void tst_registry_layers::classesOfTheMachineAloneAreWrittenThere()
{
    const RegistryScene scene;
    scene.write(Machine, "SOFTWARE\\Classes\\A", "n", Text);
    scene.write(Classes, "A", "n", QStringLiteral("new"));
    QCOMPARE(scene.read(Machine, "SOFTWARE\\Classes\\A", "n"), QStringLiteral("new"));
    QVERIFY(!QFile::exists(scene.userFile()));
}

void tst_registry_layers::anOrdinaryUserWritesClassesOfTheMachineForThemselves()
{
    const RegistryScene scene;
    scene.write(Machine, "SOFTWARE\\Classes\\A", "n", Text);
    scene.admitOrdinaryUser();
    const OrdinaryUser user;
    scene.write(Classes, "A", "n", QStringLiteral("new"));
    QCOMPARE(scene.read(Classes, "A", "n"), QStringLiteral("new"));
    QCOMPARE(scene.read(Machine, "SOFTWARE\\Classes\\A", "n"), Text);
}

void tst_registry_layers::classesAreDeletedFromTheUserFirst()
{
    const RegistryScene scene;
    scene.write(User, "Software\\Classes\\A", "n", QStringLiteral("user"));
    scene.write(Machine, "SOFTWARE\\Classes\\A", "n", QStringLiteral("machine"));
    auto &store = *scene.store();
    QCOMPARE(store.deleteValue(key(Classes, "A"), QStringLiteral("n")), RegistryStatus::Done);
    QCOMPARE(scene.read(Classes, "A", "n"), QStringLiteral("machine"));
    QCOMPARE(store.deleteKey(key(Classes, "A")), RegistryStatus::Done);
    QCOMPARE(store.openKey(key(Classes, "A")), RegistryStatus::Done);
    QCOMPARE(store.deleteKey(key(Classes, "A")), RegistryStatus::Done);
    QCOMPARE(store.openKey(key(Classes, "A")), RegistryStatus::Missing);
    QCOMPARE(store.deleteKey(key(Classes, "A")), RegistryStatus::Missing);
}

void tst_registry_layers::anOrdinaryUserReadsTheMachinesKeysAndCannotWriteThem()
{
    const RegistryScene scene;
    scene.write(Machine, "A", "n", Text);
    scene.admitOrdinaryUser();
    const auto names = namesIn(scene.folder().path("machine/quorlin"));
    const auto at = key(Machine, "A");
    const OrdinaryUser user;
    QCOMPARE(scene.read(Machine, "A", "n"), Text);
    QCOMPARE(scene.store()->enumerateValues(at).result, QStringList({QStringLiteral("n")}));
    QCOMPARE(scene.store()->setValue(at, {}, {}), RegistryStatus::Denied);
    QCOMPARE(scene.store()->createKey(key(Machine, "B")), RegistryStatus::Denied);
    QCOMPARE(scene.store()->deleteValue(at, QStringLiteral("n")), RegistryStatus::Denied);
    QCOMPARE(scene.store()->deleteKey(at), RegistryStatus::Denied);
    QCOMPARE(scene.read(Machine, "A", "n"), Text);
    QCOMPARE(namesIn(scene.folder().path("machine/quorlin")), names);
}

void tst_registry_layers::anOrdinaryUserMakesNothingForTheMachine()
{
    const RegistryScene scene;
    scene.admitOrdinaryUser();
    const OrdinaryUser user;
    QCOMPARE(scene.store()->createKey(key(Machine, "A")), RegistryStatus::Denied);
    QCOMPARE(scene.store()->deleteKey(key(Machine, "A")), RegistryStatus::Missing);
    QCOMPARE(scene.folder().names(), QStringList({QStringLiteral("user")}));
}

void tst_registry_layers::theSystemsFilesAreWhereTheEnvironmentSays()
{
    const TestFolder folder;
    qputenv("XDG_CONFIG_HOME", folder.path("home").toUtf8());
    qputenv("XDG_CONFIG_DIRS", folder.path("first").toUtf8() + ':' + folder.path("next").toUtf8());
    const auto store = SystemRegistry::store();
    QCOMPARE(store->createKey(key(User, "A")), RegistryStatus::Done);
    QVERIFY(QFile::exists(folder.path("home/quorlin/registry.db")));
    QCOMPARE(store->createKey(key(Machine, "A")), RegistryStatus::Done);
    QVERIFY(QFile::exists(folder.path("first/quorlin/registry.db")));
    QVERIFY(!QFile::exists(folder.path("next")));
}

/// A desktop's session has folders that the administrator's shell does not have.
void tst_registry_layers::theMachinesFileIsFoundBehindFoldersWithoutOne()
{
    const TestFolder folder;
    qputenv("XDG_CONFIG_DIRS", folder.path("next").toUtf8());
    QCOMPARE(SystemRegistry::store()->createKey(key(Machine, "A")), RegistryStatus::Done);
    qputenv("XDG_CONFIG_DIRS", folder.path("first").toUtf8() + ':' + folder.path("next").toUtf8());
    QCOMPARE(SystemRegistry::machineFile(), folder.path("next/quorlin/registry.db"));
    QCOMPARE(SystemRegistry::store()->openKey(key(Machine, "A")), RegistryStatus::Done);
}

void tst_registry_layers::aNewMachinesFileGoesToTheUsualFolderWhereThatCounts()
{
    const TestFolder folder;
    const auto first = folder.path("first").toUtf8();
    qputenv("XDG_CONFIG_DIRS", first + ":/etc/xdg/");
    if (QFile::exists(QStringLiteral("/etc/xdg/quorlin/registry.db")))
        QSKIP("this machine has settings of its own");
    QCOMPARE(SystemRegistry::machineFile(), QStringLiteral("/etc/xdg/quorlin/registry.db"));
    qunsetenv("XDG_CONFIG_DIRS");
    QCOMPARE(SystemRegistry::machineFile(), QStringLiteral("/etc/xdg/quorlin/registry.db"));
}

void tst_registry_layers::relativeFoldersOfTheEnvironmentDoNotCount()
{
    const TestFolder folder;
    qputenv("XDG_CONFIG_HOME", "relative");
    qputenv("HOME", folder.path("home").toUtf8());
    qputenv("XDG_CONFIG_DIRS", "relative:" + folder.path("next").toUtf8());
    const auto store = SystemRegistry::store();
    QCOMPARE(store->createKey(key(User, "A")), RegistryStatus::Done);
    QVERIFY(QFile::exists(folder.path("home/.config/quorlin/registry.db")));
    QCOMPARE(SystemActions::modeOf(folder.path("home/.config")), 0700);
    QCOMPARE(store->createKey(key(Machine, "A")), RegistryStatus::Done);
    QVERIFY(QFile::exists(folder.path("next/quorlin/registry.db")));
}

QTEST_GUILESS_MAIN(tst_registry_layers)
#include "tst_registry_layers.moc"
