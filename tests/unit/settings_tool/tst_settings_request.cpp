#include "quorlin-settings/SettingsRequest.h"

#include <QTest>

using namespace Quorlin;

namespace {

using Action = SettingsRequest::Action;

/// The request of a command line, written with blanks between its words.
std::optional<SettingsRequest> read(const char *line, QString *error = nullptr)
{
    QString problem;
    const auto request = SettingsRequest::read(
        QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts), problem);
    if (error)
        *error = problem;
    return request;
}

QString problemOf(const char *line)
{
    QString problem;
    return read(line, &problem) ? QString() : problem;
}

} // namespace

class tst_settings_request : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCommandIsRead();
    void theUsersValuesAreMeantUnlessTheMachinesAreNamed();
    void namesCountInAnyCase();
    void aNegativeNumberIsAValue();
    void afterTwoDashesNothingIsAnOption();
    void helpComesBeforeEverythingThatIsWrong();
    void wrongUseIsToldWithItsReason_data();
    void wrongUseIsToldWithItsReason();
    void anUnknownNameIsRefusedWithAllKnownOnes();
    void whatHasNoEffectForTheMachineIsRefusedThere();
    void whatHasNoEffectForTheMachineCanBeRemovedThere();
    void helpTellsEverySetting();
};

void tst_settings_request::everyCommandIsRead()
{
    QCOMPARE(read("list")->action, Action::List);
    QCOMPARE(read("get Skin")->action, Action::Get);
    QCOMPARE(read("remove Skin")->action, Action::Remove);
    QCOMPARE(read("values Skin")->action, Action::Values);
    const auto request = read("set Skin Blue");
    QCOMPARE(request->action, Action::Set);
    QCOMPARE(request->setting->kind, Setting::Kind::Skin);
    QCOMPARE(request->value, QStringLiteral("Blue"));
}

void tst_settings_request::theUsersValuesAreMeantUnlessTheMachinesAreNamed()
{
    QCOMPARE(read("get Skin")->layer, SettingsLayer::User);
    QCOMPARE(read("--machine get Skin")->layer, SettingsLayer::Machine);
    QCOMPARE(read("get Skin --machine")->layer, SettingsLayer::Machine);
}

void tst_settings_request::namesCountInAnyCase()
{
    QCOMPARE(read("get mergeoption")->setting->name, QLatin1StringView("MergeOption"));
}

void tst_settings_request::aNegativeNumberIsAValue()
{
    QCOMPARE(read("set Quality -1")->value, QStringLiteral("-1"));
}

void tst_settings_request::afterTwoDashesNothingIsAnOption()
{
    QCOMPARE(read("set Skin -- --machine")->value, QStringLiteral("--machine"));
}

void tst_settings_request::helpComesBeforeEverythingThatIsWrong()
{
    QCOMPARE(read("-h")->action, Action::Help);
    QCOMPARE(read("get --help")->action, Action::Help);
    QCOMPARE(read("--version")->action, Action::Version);
}

void tst_settings_request::wrongUseIsToldWithItsReason_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("problem");
    const auto add = [](const char *line, const char *problem) {
        QTest::newRow(line) << QByteArray(line) << QString::fromLatin1(problem);
    };
    add("", "no command given");
    add("forget Skin", "there is no command \"forget\"");
    add("list Skin", "\"list\" stands alone");
    add("get", "\"get\" needs a name");
    add("get Skin Blue", "\"get\" needs a name");
    add("set Skin", "\"set\" needs a name and a value");
    add("--all list", "there is no option \"--all\"");
    add("list -m", "there is no option \"-m\"");
}

void tst_settings_request::wrongUseIsToldWithItsReason()
{
    QFETCH(const QByteArray, line);
    QTEST(problemOf(line.constData()), "problem");
}

void tst_settings_request::anUnknownNameIsRefusedWithAllKnownOnes()
{
    QCOMPARE(problemOf("get Colour"),
             QStringLiteral("there is no setting \"Colour\"; there are: Language, Quality, Skin, "
                            "ShowOption, MergeOption, Position"));
}

void tst_settings_request::whatHasNoEffectForTheMachineIsRefusedThere()
{
    for (const auto *const line : {"--machine set ShowOption true",
                                   "--machine set MergeOption true", "--machine set Position 1,2"})
        QVERIFY(problemOf(line).endsWith(
            QStringLiteral("has no effect for the machine; only these are looked up there: "
                           "Language, Quality, Skin")));
    for (const auto *const line : {"--machine set Language a", "--machine set Quality 1",
                                   "--machine set Skin a", "set ShowOption true"})
        QCOMPARE(problemOf(line), QString());
}

void tst_settings_request::whatHasNoEffectForTheMachineCanBeRemovedThere()
{
    QCOMPARE(problemOf("--machine remove ShowOption"), QString());
}

void tst_settings_request::helpTellsEverySetting()
{
    for (const auto &name : Setting::names())
        QVERIFY2(SettingsRequest::help().contains(QLatin1String("\n  ") + name + QLatin1Char(' ')),
                 qUtf8Printable(name));
}

QTEST_GUILESS_MAIN(tst_settings_request)
#include "tst_settings_request.moc"
