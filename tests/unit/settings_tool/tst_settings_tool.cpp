#include "quorlin-settings/SettingsTool.h"

#include "settings/LayeredRegistry.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"
#include "ui/UserSettings.h"
#include "unit/tool/KeptConsole.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace Quorlin;

/// The tool on files of its own, beside the languages, skins and qualities that come with the
/// program.
class tst_settings_tool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withoutValuesEverythingIsBuiltIn();
    void aValueIsTheUsersThenTheMachinesThenTheBuiltInOne();
    void whatItTellsIsWhatTheWindowUses_data();
    void whatItTellsIsWhatTheWindowUses();
    void aValueThatIsRemovedUncoversTheNextOne();
    void removingWhatIsNotThereIsDone();
    void aQualityIsKeptByItsPlace_data();
    void aQualityIsKeptByItsPlace();
    void aQualityThatIsNotThereIsRefused_data();
    void aQualityThatIsNotThereIsRefused();
    void aQualityWithoutItsFileIsRefused();
    void withoutTheListOfQualitiesItSaysWhere();
    void aLanguageIsKeptAsItsFileIsCalled();
    void aLanguageThatIsNotThereIsRefused();
    void aDamagedLanguageIsRefusedWithItsFault();
    void aSkinIsKeptAsItsFolderIsCalled();
    void aSkinThatCannotBeLoadedIsRefused();
    void theLayoutWithoutPicturesIsForTheMachineAlone();
    void switchesAreTrueOrFalse();
    void aPlaceIsTwoNumbers();
    void whatCannotBeUsedIsListedWithItsReason();
    void aUsersSkinWithoutAFolderIsPassedOver();
    void valuesAreThoseThatAreInstalled();
    void theMachinesFileIsForAllToRead();
    void anOrdinaryUserCannotWriteForTheMachine();
    void aDamagedFileIsToldAndTheNextChangeSetsItAside();
    void aFileOfSomethingElseIsLeftAlone();
    void aWindowThatIsOpenIsWarnedOf();

private:
    /// Runs a command line, with blanks between its words. @return the exit code.
    int run(const char *line);
    [[nodiscard]] QString output() const { return QString::fromUtf8(m_console.output); }
    [[nodiscard]] QString errors() const { return QString::fromUtf8(m_console.error); }
    [[nodiscard]] QString kept(quint32 root, const char *name) const;
    void keep(quint32 root, const char *name, const QString &text) const;
    void changeFile(const QString &path, const QByteArray &from, const QByteArray &to) const;

    std::unique_ptr<TestFolder> m_folder;
    SettingsScene m_scene;
    KeptConsole m_console;
};

namespace {

constexpr auto User = RegistryRoot::CurrentUser;
constexpr auto Machine = RegistryRoot::LocalMachine;

/// A copy of a folder with everything in it.
void copyFolder(const QString &from, const QString &to)
{
    QVERIFY(QDir().mkpath(to));
    const auto entries = QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const auto &entry : entries) {
        const auto target = to + QLatin1Char('/') + entry.fileName();
        if (entry.isDir())
            copyFolder(entry.filePath(), target);
        else
            QVERIFY(QFile::copy(entry.filePath(), target));
    }
}

} // namespace

void tst_settings_tool::init()
{
    m_folder = std::make_unique<TestFolder>();
    copyFolder(QStringLiteral(QUORLIN_SOURCE_DIR "/data"), m_folder->path("program"));
    m_scene.userFile = m_folder->path("user/registry.db");
    m_scene.machineFile = m_folder->path("machine/quorlin/registry.db");
    m_scene.store = std::make_shared<LayeredRegistry>(m_scene.userFile, m_scene.machineFile);
    m_scene.programFolder = m_folder->path("program");
    m_scene.isWindowOpen = [] { return false; };
}

int tst_settings_tool::run(const char *line)
{
    m_console.output.clear();
    m_console.error.clear();
    QString error;
    const auto request = SettingsRequest::read(
        QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts), error);
    return request ? int(SettingsTool(m_scene, m_console).run(*request)) : -1;
}

QString tst_settings_tool::kept(quint32 root, const char *name) const
{
    return Registry(m_scene.store)
        .GetKey(root, UserSettings::key(), RegistryType::Text, QLatin1String(name));
}

void tst_settings_tool::keep(quint32 root, const char *name, const QString &text) const
{
    Registry(m_scene.store)
        .SetKey(root, UserSettings::key(), RegistryType::Text, QLatin1String(name), text);
}

void tst_settings_tool::changeFile(const QString &path, const QByteArray &from,
                                   const QByteArray &to) const
{
    auto bytes = contentOf(path);
    QVERIFY2(bytes.contains(from), qUtf8Printable(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes.replace(from, to)), bytes.size());
}

void tst_settings_tool::withoutValuesEverythingIsBuiltIn()
{
    QCOMPARE(run("list"), 0);
    QCOMPARE(output(), QStringLiteral("Language     english      built-in\n"
                                      "Quality      0 (Default)  built-in\n"
                                      "Skin         Varnex       built-in\n"
                                      "ShowOption   false        built-in\n"
                                      "MergeOption  false        built-in\n"
                                      "Position     -            built-in\n"));
    QCOMPARE(run("--machine list"), 0);
    QCOMPARE(output(), QStringLiteral("Language     english      built-in\n"
                                      "Quality      0 (Default)  built-in\n"
                                      "Skin         Varnex       built-in\n"));
    QCOMPARE(errors(), QString());
    QVERIFY(!QFile::exists(m_scene.userFile));
}

void tst_settings_tool::aValueIsTheUsersThenTheMachinesThenTheBuiltInOne()
{
    QCOMPARE(run("--machine set Language deutsch"), 0);
    QCOMPARE(output(), QStringLiteral("Language = deutsch\n"));
    QCOMPARE(run("get Language"), 0);
    QCOMPARE(output(), QStringLiteral("deutsch\n"));
    run("list");
    QVERIFY(output().contains(QStringLiteral("deutsch      machine\n")));
    QCOMPARE(run("set Language français"), 0);
    run("get Language");
    QCOMPARE(output(), QStringLiteral("français\n"));
    run("--machine get Language");
    QCOMPARE(output(), QStringLiteral("deutsch\n"));
}

void tst_settings_tool::whatItTellsIsWhatTheWindowUses_data()
{
    QTest::addColumn<QString>("own");
    QTest::addColumn<QString>("machines");
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("own") << QStringLiteral("2") << QString();
    QTest::newRow("machine") << QString() << QStringLiteral("3");
    QTest::newRow("both") << QStringLiteral("1") << QStringLiteral("2");
}

/// The built-in values and the order of the layers are the window's.
void tst_settings_tool::whatItTellsIsWhatTheWindowUses()
{
    QFETCH(const QString, own);
    QFETCH(const QString, machines);
    for (const auto &setting : Setting::all()) {
        keep(User, setting.name.data(), own);
        keep(Machine, setting.name.data(), machines);
    }
    Registry registry(m_scene.store);
    registry.SetAppParam(User, UserSettings::key());
    const UserSettings window(registry, m_scene.programFolder);
    const auto told = [this](const char *line) {
        run(line);
        return output().trimmed();
    };
    QCOMPARE(told("get Language"), window.language());
    QCOMPARE(told("get Quality"), QString::number(window.quality(4)));
    QCOMPARE(told("get Skin"), window.skin());
    QCOMPARE(told("get ShowOption") == QLatin1String("true"), window.showsResult());
    QCOMPARE(told("get MergeOption") == QLatin1String("true"), window.merges());
    QCOMPARE(told("get Position").contains(QLatin1Char(',')), window.position().has_value());
}

void tst_settings_tool::aValueThatIsRemovedUncoversTheNextOne()
{
    run("--machine set Skin Clarity");
    run("set Skin Nightfall");
    QCOMPARE(run("remove Skin"), 0);
    QCOMPARE(output(), QStringLiteral("Skin = Clarity (machine)\n"));
    QCOMPARE(kept(User, "Skin"), QString());
    QCOMPARE(run("--machine remove Skin"), 0);
    QCOMPARE(output(), QStringLiteral("Skin = Varnex (built-in)\n"));
}

void tst_settings_tool::removingWhatIsNotThereIsDone()
{
    QCOMPARE(run("remove Skin"), 0);
    QCOMPARE(output(), QStringLiteral("Skin was not set\n"));
}

void tst_settings_tool::aQualityIsKeptByItsPlace_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("index");
    QTest::addColumn<QString>("told");
    QTest::newRow("name") << QByteArray("High") << "3"
                          << "3 (High)";
    QTest::newRow("name in lower case") << QByteArray("medium") << "2"
                                        << "2 (Medium)";
    QTest::newRow("index") << QByteArray("1") << "1"
                           << "1 (Low)";
    QTest::newRow("none") << QByteArray("-1") << "-1"
                          << "-1 (none)";
    QTest::newRow("zeros") << QByteArray("002") << "2"
                           << "2 (Medium)";
}

void tst_settings_tool::aQualityIsKeptByItsPlace()
{
    QFETCH(const QByteArray, value);
    QFETCH(const QString, index);
    QFETCH(const QString, told);
    QCOMPARE(run("set Quality " + value), 0);
    QCOMPARE(output(), QStringLiteral("Quality = %1\n").arg(told));
    QCOMPARE(kept(User, "Quality"), index);
}

void tst_settings_tool::aQualityThatIsNotThereIsRefused_data()
{
    QTest::addColumn<QByteArray>("value");
    for (const auto *const value : {"4", "-2", "Hig", "1.5", "3x", ".*"})
        QTest::newRow(value) << QByteArray(value);
}

void tst_settings_tool::aQualityThatIsNotThereIsRefused()
{
    QFETCH(const QByteArray, value);
    QCOMPARE(run("set Quality " + value), 2);
    QCOMPARE(errors(), QStringLiteral("quorlin-settings: there is no quality \"%1\"; there are: "
                                      "Default, Low, Medium, High\n")
                           .arg(QString::fromUtf8(value)));
    QVERIFY(!QFile::exists(m_scene.userFile));
}

void tst_settings_tool::aQualityWithoutItsFileIsRefused()
{
    QVERIFY(QFile::remove(m_folder->path("program/Settings/High.joboptions")));
    QCOMPARE(run("set Quality High"), 2);
    QVERIFY(errors().contains(QLatin1String("the file of the quality High is not there: ")));
}

void tst_settings_tool::withoutTheListOfQualitiesItSaysWhere()
{
    const auto file = m_folder->path("program/Quorlin.ini");
    QVERIFY(QFile::remove(file));
    QCOMPARE(run("list"), 0);
    QVERIFY(output().contains(QStringLiteral(" built-in: %1 cannot be read\n").arg(file)));
    keep(User, "Quality", QStringLiteral("0"));
    QCOMPARE(run("list"), 0);
    QVERIFY(output().contains(QStringLiteral(" user: %1 cannot be read\n").arg(file)));
    QCOMPARE(run("set Quality 0"), 2);
    QVERIFY(errors().contains(file + QStringLiteral(" cannot be read")));
}

void tst_settings_tool::aLanguageIsKeptAsItsFileIsCalled()
{
    QCOMPARE(run("set Language DEUTSCH"), 0);
    QCOMPARE(kept(User, "Language"), QStringLiteral("deutsch"));
}

void tst_settings_tool::aLanguageThatIsNotThereIsRefused()
{
    for (const auto *const name : {"klingon", "../language/deutsch", "."})
        QCOMPARE(run(QByteArray("set Language ") + name), 2);
    QCOMPARE(errors(), QStringLiteral("quorlin-settings: there is no language \".\"; there are: "
                                      "deutsch, english, français\n"));
}

void tst_settings_tool::aDamagedLanguageIsRefusedWithItsFault()
{
    changeFile(m_folder->path("program/language/deutsch.slg"), "TextOptShow", "TextOptShaw");
    QCOMPARE(run("set Language deutsch"), 2);
    QVERIFY(errors().contains(
        QLatin1String("deutsch.slg is damaged: [TEXT] TextOptShow is missing, empty")));
}

void tst_settings_tool::aSkinIsKeptAsItsFolderIsCalled()
{
    QCOMPARE(run("set Skin nightfall"), 0);
    QCOMPARE(kept(User, "Skin"), QStringLiteral("Nightfall"));
}

void tst_settings_tool::aSkinThatCannotBeLoadedIsRefused()
{
    QCOMPARE(run("set Skin Blue"), 2);
    QCOMPARE(errors(), QStringLiteral("quorlin-settings: there is no skin \"Blue\"; there are: "
                                      "Clarity, Nightfall, Varnex\n"));
    QVERIFY(QFile::remove(m_folder->path("program/skins/Clarity/Main.png")));
    QCOMPARE(run("set Skin Clarity"), 2);
    QCOMPARE(errors(), QStringLiteral("quorlin-settings: The skin files Clarity are corrupted\n"));
    QCOMPARE(kept(User, "Skin"), QString());
}

void tst_settings_tool::theLayoutWithoutPicturesIsForTheMachineAlone()
{
    QCOMPARE(run("set Skin None"), 2);
    QVERIFY(errors().contains(QLatin1String("None can be set for the machine only")));
    QCOMPARE(run("--machine set Skin None"), 0);
    QCOMPARE(kept(Machine, "Skin"), QStringLiteral("None"));
    run("list");
    QVERIFY(output().contains(QRegularExpression(QStringLiteral("Skin +None +machine\n"))));
}

void tst_settings_tool::switchesAreTrueOrFalse()
{
    QCOMPARE(run("set ShowOption TRUE"), 0);
    QCOMPARE(kept(User, "ShowOption"), QStringLiteral("true"));
    QCOMPARE(run("set ShowOption yes"), 2);
    QCOMPARE(errors(), QStringLiteral("quorlin-settings: \"yes\" is neither true nor false\n"));
    QCOMPARE(kept(User, "ShowOption"), QStringLiteral("true"));
}

void tst_settings_tool::aPlaceIsTwoNumbers()
{
    QCOMPARE(run("set Position -5,80"), 0);
    QCOMPARE(kept(User, "Position"), QStringLiteral("-5,80"));
    for (const auto *const value : {"5", "5,", "a,b", "1,2,3", "999999,1"})
        QCOMPARE(run(QByteArray("set Position ") + value), 2);
}

void tst_settings_tool::whatCannotBeUsedIsListedWithItsReason()
{
    keep(User, "Language", QStringLiteral("klingon"));
    keep(Machine, "Quality", QStringLiteral("9"));
    keep(User, "Position", QStringLiteral("there"));
    QCOMPARE(run("list"), 0);
    for (const auto *const part :
         {"user: there is no language \"klingon\"; there are: deutsch",
          "machine: there is no quality \"9\"; there are: Default", "user: \"there\" is no place"})
        QVERIFY2(output().contains(QLatin1String(part)), part);
}

void tst_settings_tool::aUsersSkinWithoutAFolderIsPassedOver()
{
    keep(User, "Skin", QStringLiteral("Blue"));
    keep(Machine, "Skin", QStringLiteral("Clarity"));
    run("list");
    QVERIFY(output().contains(
        QLatin1String("Clarity      machine: the user's skin \"Blue\" is not installed\n")));
}

void tst_settings_tool::valuesAreThoseThatAreInstalled()
{
    m_folder->makeFolder("program/skins/empty");
    const auto values = [this](const char *line) {
        run(line);
        return output().split(QLatin1Char('\n'), Qt::SkipEmptyParts).join(QLatin1Char(' '));
    };
    QCOMPARE(values("values Language"), QStringLiteral("deutsch english français"));
    QCOMPARE(values("values Skin"), QStringLiteral("Clarity Nightfall Varnex"));
    QCOMPARE(values("--machine values Skin"), QStringLiteral("Clarity Nightfall Varnex None"));
    QCOMPARE(values("values Quality"), QStringLiteral("Default Low Medium High"));
    QCOMPARE(values("values ShowOption"), QStringLiteral("true false"));
    QCOMPARE(values("values Position"), QString());
}

void tst_settings_tool::theMachinesFileIsForAllToRead()
{
    const auto mask = SystemActions::setFileMask(077);
    const auto code = run("--machine set Quality High");
    SystemActions::setFileMask(mask);
    QCOMPARE(code, 0);
    QCOMPARE(SystemActions::modeOf(m_scene.machineFile), 0644);
    QCOMPARE(SystemActions::modeOf(m_folder->path("machine/quorlin")), 0755);
}

void tst_settings_tool::anOrdinaryUserCannotWriteForTheMachine()
{
    QCOMPARE(run("--machine set Quality High"), 0);
    QVERIFY(QFile::setPermissions(m_folder->path("machine/quorlin"), QFile::Permissions(0x5555)));
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(m_folder->path("machine"), QFile::Permissions(0x7755)));
    const OrdinaryUser user;
    const auto denied =
        QStringLiteral("quorlin-settings: %1 cannot be written: permission denied; only root may "
                       "write it\n")
            .arg(m_scene.machineFile);
    QCOMPARE(run("--machine set Quality Low"), 1);
    QCOMPARE(errors(), denied);
    QCOMPARE(run("--machine remove Quality"), 1);
    QCOMPARE(errors(), denied);
    QCOMPARE(run("--machine get Quality"), 0);
    QCOMPARE(output(), QStringLiteral("3\n"));
}

void tst_settings_tool::aDamagedFileIsToldAndTheNextChangeSetsItAside()
{
    const QByteArray garbage(2000, 'x');
    m_folder->write("user/registry.db", garbage);
    QCOMPARE(run("list"), 1);
    QVERIFY(output().contains(QLatin1String("english      built-in\n")));
    QCOMPARE(errors(), QStringLiteral("quorlin-settings: %1 cannot be read: it is damaged; the "
                                      "next \"set\" sets it aside and begins a new one\n")
                           .arg(m_scene.userFile));
    QCOMPARE(run("get Skin"), 1);
    QCOMPARE(run("remove Skin"), 1);
    QCOMPARE(contentOf(m_scene.userFile), garbage);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("were set aside as")));
    QCOMPARE(run("set Skin Clarity"), 0);
    QCOMPARE(contentOf(m_scene.userFile + QStringLiteral(".damaged-1")), garbage);
    QCOMPARE(run("get Skin"), 0);
    QCOMPARE(output(), QStringLiteral("Clarity\n"));
}

void tst_settings_tool::aFileOfSomethingElseIsLeftAlone()
{
    m_folder->makeFolder("user/registry.db");
    QCOMPARE(run("set Skin Clarity"), 1);
    QVERIFY(errors().contains(QLatin1String("it is not a settings file, or of a newer version")));
}

void tst_settings_tool::aWindowThatIsOpenIsWarnedOf()
{
    m_scene.isWindowOpen = [] { return true; };
    const auto warning = QLatin1String("a window of Quorlin is open");
    for (const auto *const line : {"set Skin Clarity", "remove Skin"}) {
        QCOMPARE(run(line), 0);
        QVERIFY2(errors().contains(warning), line);
    }
    for (const auto *const line : {"--machine set Skin Clarity", "list", "get Skin"}) {
        QCOMPARE(run(line), 0);
        QCOMPARE(errors(), QString());
    }
}

QTEST_GUILESS_MAIN(tst_settings_tool)
#include "tst_settings_tool.moc"
