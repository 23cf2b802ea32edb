#include "settings/cRegistry.h"

#include "RegistryScene.h"
#include "support/SystemActions.h"

#include <QTest>

using namespace Quorlin;

namespace {

constexpr auto Classes = RegistryRoot::ClassesRoot;
constexpr auto User = RegistryRoot::CurrentUser;
constexpr auto Machine = RegistryRoot::LocalMachine;

/// What the tests vary of the twelve arguments.
struct Association
{
    QString path = QStringLiteral("/opt/quorlin/Quorlin");
    QString open = QStringLiteral("Open it");
    QString print = QStringLiteral("Print it");
    QString fresh = QStringLiteral("Make one");
    QString add = QStringLiteral("Add it");
    bool verbs = true;
    qint32 icon = -1;
};

void associate(cRegistry &registry, const Association &with = {})
{
    registry.CreateEXEAssociation(with.path, QStringLiteral("Quorlin.Document"),
                                  QStringLiteral("Office document"), QStringLiteral("qdoc"),
                                  with.open, with.verbs, with.print, with.verbs, with.fresh,
                                  with.verbs, with.add, with.icon);
}

void associate(const RegistryScene &scene, const Association &with = {})
{
    cRegistry registry(scene.store());
    associate(registry, with);
}

QString verb(const RegistryScene &scene, const char *below)
{
    return scene.read(Classes, QByteArray("Quorlin.Document\\") + below).value_or(QString());
}

bool has(const RegistryScene &scene, const char *below)
{
    const auto path = QStringLiteral("Quorlin.Document\\") + QString::fromUtf8(below);
    return scene.store()->openKey({Classes, path}) == RegistryStatus::Done;
}

} // namespace

class tst_cregistry_associations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theExtensionNamesTheClassAndTheClassItsDescription();
    void givenVerbTextsAndCommandsAreWritten();
    void emptyVerbTextsGetTheirDefaults();
    void unsupportedVerbsAreNotWritten();
    void aPathIsTrimmedAndQuoted();
    void aPathWithQuotesIsNotQuotedTwice();
    void aMissingQuoteAtOneEndIsAdded();
    void iconZeroWritesADefaultIcon();
    void iconMinusOneWritesNone();
    void iconBelowMinusOneWritesNone();
    void everyKeyIsInBothPlaces();
    void valuesAreTextsUnderTheDefaultName();
    void thePropertiesStayAsTheyWere();
    void anOrdinaryUserGetsTheUsersHalfAndAnError();
    void thePropertiesStayAsTheyWereWhenAnErrorIsRaised();
    void additionalVerbsAreWrittenInBothPlaces();
    void aListOfBrokenTriplesIsRefused();
    void aMissingClassIsRefused();
    void brokenTriplesCountBeforeTheMissingClass();
    void anEmptyListAddsNothing();
};

void tst_cregistry_associations::theExtensionNamesTheClassAndTheClassItsDescription()
{
    const RegistryScene scene;
    associate(scene);
    QCOMPARE(scene.read(Classes, ".qdoc"), QStringLiteral("Quorlin.Document"));
    QCOMPARE(scene.read(Classes, "Quorlin.Document"), QStringLiteral("Office document"));
}

void tst_cregistry_associations::givenVerbTextsAndCommandsAreWritten()
{
    const RegistryScene scene;
    associate(scene);
    const auto program = QStringLiteral("\"/opt/quorlin/Quorlin\"");
    QCOMPARE(verb(scene, "shell\\open"), QStringLiteral("Open it"));
    QCOMPARE(verb(scene, "shell\\open\\command"), program + QStringLiteral(" \"%1\""));
    QCOMPARE(verb(scene, "shell\\print"), QStringLiteral("Print it"));
    QCOMPARE(verb(scene, "shell\\print\\command"), program + QStringLiteral(" /p \"%1\""));
    QCOMPARE(verb(scene, "shell\\add"), QStringLiteral("Add it"));
    QCOMPARE(verb(scene, "shell\\add\\command"), program + QStringLiteral(" /a \"%1\""));
    QCOMPARE(verb(scene, "shell\\new"), QStringLiteral("Make one"));
    QCOMPARE(verb(scene, "shell\\new\\command"), program + QStringLiteral(" /n \"%1\""));
}

void tst_cregistry_associations::emptyVerbTextsGetTheirDefaults()
{
    const RegistryScene scene;
    associate(scene, {.open = {}, .print = {}, .fresh = {}, .add = {}});
    QCOMPARE(verb(scene, "shell\\open"), QStringLiteral("&Open"));
    QCOMPARE(verb(scene, "shell\\print"), QStringLiteral("&Print"));
    QCOMPARE(verb(scene, "shell\\new"), QStringLiteral("&New"));
    QCOMPARE(verb(scene, "shell\\add"), QStringLiteral("&Install qdoc"));
}

void tst_cregistry_associations::unsupportedVerbsAreNotWritten()
{
    const RegistryScene scene;
    associate(scene, {.verbs = false});
    QVERIFY(has(scene, "shell\\open\\command"));
    for (const auto *name : {"shell\\print", "shell\\add", "shell\\new"})
        QVERIFY2(!has(scene, name), name);
}

void tst_cregistry_associations::aPathIsTrimmedAndQuoted()
{
    const RegistryScene scene;
    associate(scene, {.path = QStringLiteral("  /opt/my quorlin/Quorlin  ")});
    QCOMPARE(verb(scene, "shell\\open\\command"),
             QStringLiteral("\"/opt/my quorlin/Quorlin\" \"%1\""));
}

void tst_cregistry_associations::aPathWithQuotesIsNotQuotedTwice()
{
    const RegistryScene scene;
    associate(scene, {.path = QStringLiteral(" \"/opt/Quorlin\" ")});
    QCOMPARE(verb(scene, "shell\\open\\command"), QStringLiteral("\"/opt/Quorlin\" \"%1\""));
}

void tst_cregistry_associations::aMissingQuoteAtOneEndIsAdded()
{
    for (const auto *path : {"\"/opt/Quorlin", "/opt/Quorlin\""}) {
        const RegistryScene scene;
        associate(scene, {.path = QString::fromUtf8(path)});
        QCOMPARE(verb(scene, "shell\\open\\command"), QStringLiteral("\"/opt/Quorlin\" \"%1\""));
    }
}

void tst_cregistry_associations::iconZeroWritesADefaultIcon()
{
    const RegistryScene scene;
    associate(scene, {.icon = 0});
    QCOMPARE(verb(scene, "DefaultIcon"), QStringLiteral("\"/opt/quorlin/Quorlin\",0"));
}

void tst_cregistry_associations::iconMinusOneWritesNone()
{
    const RegistryScene scene;
    associate(scene, {.icon = -1});
    QVERIFY(!has(scene, "DefaultIcon"));
}

void tst_cregistry_associations::iconBelowMinusOneWritesNone()
{
    const RegistryScene scene;
    associate(scene, {.icon = -2});
    QVERIFY(!has(scene, "DefaultIcon"));
}

void tst_cregistry_associations::everyKeyIsInBothPlaces()
{
    const RegistryScene scene;
    associate(scene, {.icon = 3});
    const QList<QByteArray> paths{".qdoc",
                                  "Quorlin.Document",
                                  "Quorlin.Document\\shell\\open",
                                  "Quorlin.Document\\shell\\open\\command",
                                  "Quorlin.Document\\shell\\print",
                                  "Quorlin.Document\\shell\\print\\command",
                                  "Quorlin.Document\\shell\\add",
                                  "Quorlin.Document\\shell\\add\\command",
                                  "Quorlin.Document\\shell\\new",
                                  "Quorlin.Document\\shell\\new\\command",
                                  "Quorlin.Document\\DefaultIcon"};
    for (const auto &path : paths) {
        const auto value = scene.read(Classes, path);
        QVERIFY2(value && !value->isEmpty(), path.constData());
        QCOMPARE(scene.read(Machine, "SOFTWARE\\Classes\\" + path), value);
        QCOMPARE(scene.read(User, "Software\\Classes\\" + path), value);
    }
}

void tst_cregistry_associations::valuesAreTextsUnderTheDefaultName()
{
    const RegistryScene scene;
    cRegistry registry(scene.store());
    registry.valueType(RegistryType::Number);
    registry.ValueKey(QStringLiteral("name"));
    associate(registry);
    const RegistryKey key{Classes, QStringLiteral(".qdoc")};
    QCOMPARE(scene.store()->enumerateValues(key).result, QStringList({QString()}));
    QCOMPARE(scene.store()->queryValue(key, {}).result.type, 1U);
}

void tst_cregistry_associations::thePropertiesStayAsTheyWere()
{
    const RegistryScene scene;
    cRegistry registry(scene.store());
    registry.classKey(User);
    registry.SectionKey(QStringLiteral("Mine"));
    associate(registry);
    QCOMPARE(registry.classKey(), 0x80000001U);
    QCOMPARE(registry.SectionKey(), QStringLiteral("Mine"));
}

void tst_cregistry_associations::anOrdinaryUserGetsTheUsersHalfAndAnError()
{
    const RegistryScene scene;
    scene.admitOrdinaryUser();
    cRegistry registry(scene.store());
    const OrdinaryUser user;
    const auto error = errorFrom([&] { associate(registry); });
    QCOMPARE(error.number(), 0x800469A9U);
    QCOMPARE(error.description(),
             QStringLiteral("Failed to set registry value Key: '-2147483646',Section: "
                            "'SOFTWARE\\Classes\\.qdoc',Key: '' to value: 'Quorlin.Document'"));
    QCOMPARE(scene.read(Classes, ".qdoc"), QStringLiteral("Quorlin.Document"));
}

void tst_cregistry_associations::thePropertiesStayAsTheyWereWhenAnErrorIsRaised()
{
    const RegistryScene scene;
    scene.admitOrdinaryUser();
    cRegistry registry(scene.store());
    registry.classKey(User);
    registry.SectionKey(QStringLiteral("Mine"));
    const OrdinaryUser user;
    const auto error = errorFrom([&] { associate(registry); });
    QCOMPARE(error.source(), QStringLiteral("tst_cregistry_associations.cRegistry"));
    QCOMPARE(registry.classKey(), 0x80000001U);
    QCOMPARE(registry.SectionKey(), QStringLiteral("Mine"));
}

void tst_cregistry_associations::additionalVerbsAreWrittenInBothPlaces()
{
    const RegistryScene scene;
    associate(scene, {.verbs = false});
    cRegistry(scene.store())
        .CreateAdditionalEXEAssociations(QStringLiteral("Quorlin.Document"),
                                         {QStringLiteral("view"), QStringLiteral("&View"),
                                          QStringLiteral("viewer %1"), QStringLiteral("mail"),
                                          QStringLiteral("&Mail"), QStringLiteral("mailer %1")});
    for (const auto &prefix : {QByteArray("SOFTWARE\\Classes\\"), QByteArray()}) {
        const auto root = prefix.isEmpty() ? Classes : Machine;
        const auto shell = prefix + "Quorlin.Document\\shell\\";
        QCOMPARE(scene.read(root, shell + "view"), QStringLiteral("&View"));
        QCOMPARE(scene.read(root, shell + "view\\command"), QStringLiteral("viewer %1"));
        QCOMPARE(scene.read(root, shell + "mail"), QStringLiteral("&Mail"));
        QCOMPARE(scene.read(root, shell + "mail\\command"), QStringLiteral("mailer %1"));
    }
}

void tst_cregistry_associations::aListOfBrokenTriplesIsRefused()
{
    const RegistryScene scene;
    associate(scene, {.verbs = false});
    cRegistry registry(scene.store());
    const QVariantList items{QStringLiteral("view"), QStringLiteral("&View"),
                             QStringLiteral("viewer"), QStringLiteral("mail")};
    const auto error = errorFrom([&] {
        registry.CreateAdditionalEXEAssociations(QStringLiteral("Quorlin.Document"), items);
    });
    QCOMPARE(error.number(), 0x800469ACU);
    QCOMPARE(error.source(), QStringLiteral("tst_cregistry_associations.cRegistry"));
    QCOMPARE(error.description(),
             QStringLiteral("Invalid parameter list passed to CreateAdditionalEXEAssociations - "
                            "expected Name/Text/Command"));
    QVERIFY(!has(scene, "shell\\view"));
}

void tst_cregistry_associations::aMissingClassIsRefused()
{
    const RegistryScene scene;
    cRegistry registry(scene.store());
    const QVariantList items{QStringLiteral("view"), QStringLiteral("&View"),
                             QStringLiteral("viewer")};
    const auto error = errorFrom([&] {
        registry.CreateAdditionalEXEAssociations(QStringLiteral("Quorlin.Document"), items);
    });
    QCOMPARE(error.number(), 0x800469ADU);
    QCOMPARE(error.source(), QStringLiteral("tst_cregistry_associations.cRegistry"));
    QCOMPARE(error.description(),
             QStringLiteral("Error - attempt to create additional associations before class "
                            "defined."));
    QCOMPARE(scene.folder().names(), QStringList());
}

void tst_cregistry_associations::brokenTriplesCountBeforeTheMissingClass()
{
    const RegistryScene scene;
    cRegistry registry(scene.store());
    const auto error = errorFrom([&] {
        registry.CreateAdditionalEXEAssociations(QStringLiteral("None"), {QStringLiteral("view")});
    });
    QCOMPARE(error.number(), 0x800469ACU);
}

void tst_cregistry_associations::anEmptyListAddsNothing()
{
    const RegistryScene scene;
    associate(scene, {.verbs = false});
    cRegistry(scene.store())
        .CreateAdditionalEXEAssociations(QStringLiteral("Quorlin.Document"), {});
    QCOMPARE(
        scene.store()->enumerateKeys({Classes, QStringLiteral("Quorlin.Document\\shell")}).result,
        QStringList({QStringLiteral("open")}));
}

QTEST_GUILESS_MAIN(tst_cregistry_associations)
#include "tst_cregistry_associations.moc"
