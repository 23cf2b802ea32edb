#include "ui/UserSettings.h"

#include "settings/LayeredRegistry.h"
#include "settings/Registry.h"
#include "support/TestFolder.h"

#include <QTest>

#include <memory>

using namespace Quorlin;

/// What the program remembers, with the layers behind it.
class TestUserSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void optionsAreOffUntilTheyAreSet();
    void optionsAreReadWithoutRegardToCase();
    void anyOtherWordIsNotAnOptionThatIsOn();
    void optionsAreWrittenAsWordsInLowerCase();
    void theLanguageFallsBackToTheMachinesThenToEnglish();
    void theQualityIsAnIndex_data();
    void theQualityIsAnIndex();
    void theQualityFallsBackToTheMachines();
    void withoutQualitiesNoneIsSelected();
    void theSkinFallsBackToTheMachinesThenToVarnex();
    void aSkinWithoutAFolderFallsBackToTheMachinesThenToVarnex();
    void theMachinesSkinIsTakenAsItIs();
    void aSkinIsNotAWayToAnotherFolder();
    void whatIsWrittenIsRead();
    void thePlaceIsTwoNumbers_data();
    void thePlaceIsTwoNumbers();
    void thePendingFileIsTakenOnce();
    void clearsWhatAStartWithDocumentsLeaves();

private:
    void setOwn(const char *name, const QString &value);
    void setMachines(const char *name, const QString &value);
    [[nodiscard]] QString own(const char *name);

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<Registry> m_registry;
    std::unique_ptr<UserSettings> m_settings;
};

void TestUserSettings::init()
{
    m_folder = std::make_unique<TestFolder>();
    const auto store = std::make_shared<LayeredRegistry>(m_folder->path("user/registry.db"),
                                                         m_folder->path("machine/registry.db"));
    m_registry = std::make_unique<Registry>(store);
    m_registry->SetAppParam(RegistryRoot::CurrentUser, UserSettings::key());
    m_folder->makeFolder("program/skins/Varnex");
    m_folder->makeFolder("program/skins/Other");
    m_settings = std::make_unique<UserSettings>(*m_registry, m_folder->path("program"));
}

void TestUserSettings::setOwn(const char *name, const QString &value)
{
    m_registry->SetAppData(QLatin1String(name), value);
}

void TestUserSettings::setMachines(const char *name, const QString &value)
{
    m_registry->SetKey(RegistryRoot::LocalMachine, UserSettings::key(), RegistryType::Text,
                       QLatin1String(name), value);
}

QString TestUserSettings::own(const char *name)
{
    return m_registry->GetAppData(QLatin1String(name));
}

void TestUserSettings::optionsAreOffUntilTheyAreSet()
{
    QVERIFY(!m_settings->showsResult());
    QVERIFY(!m_settings->merges());
}

void TestUserSettings::optionsAreReadWithoutRegardToCase()
{
    setOwn("ShowOption", QStringLiteral("TRUE"));
    setOwn("MergeOption", QStringLiteral("True"));
    QVERIFY(m_settings->showsResult());
    QVERIFY(m_settings->merges());
}

void TestUserSettings::anyOtherWordIsNotAnOptionThatIsOn()
{
    for (const auto *const word : {"1", "yes", "-1", "false", "true "}) {
        setOwn("ShowOption", QLatin1String(word));
        QVERIFY2(!m_settings->showsResult(), word);
    }
}

void TestUserSettings::optionsAreWrittenAsWordsInLowerCase()
{
    m_settings->setShowsResult(true);
    m_settings->setMerges(false);
    QCOMPARE(own("ShowOption"), QStringLiteral("true"));
    QCOMPARE(own("MergeOption"), QStringLiteral("false"));
}

void TestUserSettings::theLanguageFallsBackToTheMachinesThenToEnglish()
{
    QCOMPARE(m_settings->language(), QStringLiteral("english"));
    setMachines("Language", QStringLiteral("deutsch"));
    QCOMPARE(m_settings->language(), QStringLiteral("deutsch"));
    setOwn("Language", QStringLiteral("français"));
    QCOMPARE(m_settings->language(), QStringLiteral("français"));
}

void TestUserSettings::theQualityIsAnIndex_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("index");
    const QList<std::pair<const char *, int>> rows{
        {"", 0},   {"0", 0},   {"3", 3},   {"-1", -1},      {"-2", 0},  {"4", 0},
        {"7", 0},  {"abc", 0}, {"2nd", 2}, {"1.5", 2},      {"2.5", 2}, {"3.9", 0},
        {" 1", 1}, {"1e0", 1}, {"-", 0},   {"99999999", 0}, {"1,5", 1}};
    for (const auto &[text, index] : rows)
        QTest::addRow("\"%s\"", text) << QString::fromLatin1(text) << index;
}

void TestUserSettings::theQualityIsAnIndex()
{
    QFETCH(QString, text);
    QFETCH(int, index);
    setOwn("Quality", text);
    QCOMPARE(m_settings->quality(4), index);
}

void TestUserSettings::theQualityFallsBackToTheMachines()
{
    setMachines("Quality", QStringLiteral("2"));
    QCOMPARE(m_settings->quality(4), 2);
    setOwn("Quality", QStringLiteral("1"));
    QCOMPARE(m_settings->quality(4), 1);
}

void TestUserSettings::withoutQualitiesNoneIsSelected()
{
    setOwn("Quality", QStringLiteral("0"));
    QCOMPARE(m_settings->quality(0), -1);
}

void TestUserSettings::theSkinFallsBackToTheMachinesThenToVarnex()
{
    QCOMPARE(m_settings->skin(), QStringLiteral("Varnex"));
    setMachines("Skin", QStringLiteral("Other"));
    QCOMPARE(m_settings->skin(), QStringLiteral("Other"));
    setOwn("Skin", QStringLiteral("Varnex"));
    QCOMPARE(m_settings->skin(), QStringLiteral("Varnex"));
}

void TestUserSettings::aSkinWithoutAFolderFallsBackToTheMachinesThenToVarnex()
{
    setOwn("Skin", QStringLiteral("Gone"));
    QCOMPARE(m_settings->skin(), QStringLiteral("Varnex"));
    setMachines("Skin", QStringLiteral("Other"));
    QCOMPARE(m_settings->skin(), QStringLiteral("Other"));
}

/// Only the user's own name is looked for among the folders, as it always was.
void TestUserSettings::theMachinesSkinIsTakenAsItIs()
{
    setMachines("Skin", QStringLiteral("Gone"));
    QCOMPARE(m_settings->skin(), QStringLiteral("Gone"));
}

void TestUserSettings::aSkinIsNotAWayToAnotherFolder()
{
    m_folder->makeFolder("program/elsewhere");
    for (const auto *const name : {".", "..", "../elsewhere", "Other/../Varnex"}) {
        setOwn("Skin", QLatin1String(name));
        QCOMPARE(m_settings->skin(), QStringLiteral("Varnex"));
    }
}

void TestUserSettings::whatIsWrittenIsRead()
{
    m_settings->setLanguage(QStringLiteral("français"));
    m_settings->setQuality(-1);
    m_settings->setSkin(QStringLiteral("Other"));
    m_settings->setPosition({-3, 40});
    QCOMPARE(m_settings->language(), QStringLiteral("français"));
    QCOMPARE(own("Quality"), QStringLiteral("-1"));
    QCOMPARE(m_settings->quality(4), -1);
    QCOMPARE(m_settings->skin(), QStringLiteral("Other"));
    QCOMPARE(m_settings->position(), std::optional(QPoint(-3, 40)));
}

void TestUserSettings::thePlaceIsTwoNumbers_data()
{
    QTest::addColumn<QString>("text");
    for (const auto *const text : {"", "1", "1,", ",", "a,b", "1,2,3", "99999999999,1", "1;2"})
        QTest::addRow("\"%s\"", text) << QString::fromLatin1(text);
}

void TestUserSettings::thePlaceIsTwoNumbers()
{
    QFETCH(QString, text);
    setOwn("Position", text);
    QCOMPARE(m_settings->position(), std::nullopt);
}

void TestUserSettings::thePendingFileIsTakenOnce()
{
    setOwn("File", QStringLiteral("/d/a.doc,/d/b.doc"));
    QCOMPARE(m_settings->takePendingFile(), QStringLiteral("/d/a.doc,/d/b.doc"));
    QCOMPARE(own("File"), QString());
    QCOMPARE(m_settings->takePendingFile(), QString());
}

void TestUserSettings::clearsWhatAStartWithDocumentsLeaves()
{
    setOwn("File", QStringLiteral("/d/a.doc"));
    setOwn("Run", QStringLiteral("1"));
    m_settings->clearStart();
    QCOMPARE(own("File"), QString());
    QCOMPARE(own("Run"), QStringLiteral("0"));
}

QTEST_GUILESS_MAIN(TestUserSettings)
#include "tst_user_settings.moc"
