#include "tool/Delivery.h"
#include "unit/tool/ToolFolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Quorlin;

class tst_delivery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNameComesFromTheDistillersInput_data();
    void theNameComesFromTheDistillersInput();
    void aNameWithAColonInFrontKeepsItsFolder();
    void equalNamesAreNumbered();
    void aDocumentOfTheRunIsNeverATarget();
    void aLinkToADocumentIsNoTargetEither();
    void aResultMovesToItsName();
    void anEarlierResultIsReplaced();
    void aMissingFolderIsMade();
    void aWriteProtectedTargetIsKept();
    void aFolderUnderTheNameIsAnError();
    void aMissingResultIsAnError();
    void aFailureLeavesNoHalfFile();
};

void tst_delivery::theNameComesFromTheDistillersInput_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("name");
    const QString none;
    QTest::newRow("beside") << none << QStringLiteral("/d/report.ps~")
                            << QStringLiteral("/d/report.pdf");
    QTest::newRow("two points") << none << QStringLiteral("/d/a.xlsx.ps~")
                                << QStringLiteral("/d/a.xlsx.pdf");
    QTest::newRow("folder") << QStringLiteral("/o") << QStringLiteral("/d/a.ps~")
                            << QStringLiteral("/o/a.pdf");
    QTest::newRow("no point") << none << QStringLiteral("/d.x/report")
                              << QStringLiteral("/d.x/report");
}

void tst_delivery::theNameComesFromTheDistillersInput()
{
    QFETCH(QString, folder);
    QFETCH(QString, input);
    QFETCH(QString, name);
    QCOMPARE(Delivery(folder, {}).reserveName(input), name);
}

void tst_delivery::aNameWithAColonInFrontKeepsItsFolder()
{
    Delivery delivery(QString(), {});
    QCOMPARE(delivery.reserveName(QStringLiteral("/d/:a.ps~")), QStringLiteral("/d/:a.pdf"));
    Delivery elsewhere(QStringLiteral("/e"), {});
    QCOMPARE(elsewhere.reserveName(QStringLiteral("/d/:a.ps~")), QStringLiteral("/e/:a.pdf"));
}

void tst_delivery::equalNamesAreNumbered()
{
    Delivery delivery(QStringLiteral("/o"), {});
    QCOMPARE(delivery.reserveName(QStringLiteral("/a/x.ps~")), QStringLiteral("/o/x.pdf"));
    QCOMPARE(delivery.reserveName(QStringLiteral("/b/x.ps~")), QStringLiteral("/o/x (2).pdf"));
    QCOMPARE(delivery.reserveName(QStringLiteral("/c/x.ps~")), QStringLiteral("/o/x (3).pdf"));
}

void tst_delivery::aDocumentOfTheRunIsNeverATarget()
{
    const ToolFolder folder;
    const auto document = folder.write("a.pdf");
    const auto script = folder.write("b");
    Delivery delivery(QString(), {document, script, folder.path("none.pdf")});
    QCOMPARE(delivery.reserveName(folder.path("a.ps")), folder.path("a (2).pdf"));
    QCOMPARE(delivery.reserveName(script), folder.path("b (2)"));
    QCOMPARE(delivery.reserveName(folder.path("none.ps")), folder.path("none.pdf"));
    QVERIFY(delivery.isInput(QStringLiteral("a.pdf")));
}

void tst_delivery::aLinkToADocumentIsNoTargetEither()
{
    const ToolFolder folder;
    const auto document = folder.write("d/a.pdf");
    QVERIFY(QFile::link(document, folder.path("a.pdf")));
    Delivery delivery(QString(), {document});
    QCOMPARE(delivery.reserveName(folder.path("a.ps~")), folder.path("a (2).pdf"));
}

void tst_delivery::aResultMovesToItsName()
{
    const ToolFolder folder;
    const QByteArray bytes(3'000'000, 'p');
    const auto temporary = folder.write("a.pdf~", bytes);
    const auto outcome = Delivery(QString(), {}).deliver(temporary, folder.path("a.pdf"));
    QCOMPARE(outcome.reason, Reason::None);
    QCOMPARE(folder.files(), QStringList(QStringLiteral("a.pdf")));
    QCOMPARE(folder.read(QStringLiteral("a.pdf")), bytes);
}

void tst_delivery::anEarlierResultIsReplaced()
{
    const ToolFolder folder;
    const auto target = folder.write("a.pdf", "old and longer than the new one");
    QCOMPARE(Delivery(QString(), {}).deliver(folder.write("a.pdf~", "new"), target).reason,
             Reason::None);
    QCOMPARE(folder.read(target), QByteArray("new"));
}

void tst_delivery::aMissingFolderIsMade()
{
    const ToolFolder folder;
    const auto target = folder.path("x/y/a.pdf");
    QCOMPARE(Delivery(QString(), {}).deliver(folder.write("a.pdf~"), target).reason, Reason::None);
    QCOMPARE(folder.files(), QStringList(QStringLiteral("x/y/a.pdf")));
}

void tst_delivery::aWriteProtectedTargetIsKept()
{
    const ToolFolder folder;
    const auto target = folder.write("a.pdf", "old");
    QVERIFY(QFile::setPermissions(target, QFile::ReadOwner));
    const auto outcome = Delivery(QString(), {}).deliver(folder.write("a.pdf~", "new"), target);
    QCOMPARE(outcome.reason, Reason::NotAllowed);
    QVERIFY(outcome.text.contains(QStringLiteral("write-protected")));
    QCOMPARE(folder.read(target), QByteArray("old"));
    QCOMPARE(folder.files(), QStringList(QStringLiteral("a.pdf")));
}

void tst_delivery::aFolderUnderTheNameIsAnError()
{
    const ToolFolder folder;
    folder.write("a.pdf/inside");
    const auto outcome =
        Delivery(QString(), {}).deliver(folder.write("a.pdf~"), folder.path("a.pdf"));
    QCOMPARE(outcome.reason, Reason::NotAllowed);
    QCOMPARE(folder.files(), QStringList(QStringLiteral("a.pdf/inside")));
}

void tst_delivery::aMissingResultIsAnError()
{
    const ToolFolder folder;
    const auto outcome =
        Delivery(QString(), {}).deliver(folder.path("a.pdf~"), folder.path("a.pdf"));
    QCOMPARE(outcome.reason, Reason::NotFound);
    QVERIFY(folder.files().isEmpty());
}

void tst_delivery::aFailureLeavesNoHalfFile()
{
    const ToolFolder folder;
    folder.write("file");
    const auto outcome =
        Delivery(QString(), {}).deliver(folder.write("a.pdf~"), folder.path("file/a.pdf"));
    QCOMPARE(outcome.reason, Reason::NotAllowed);
    QCOMPARE(folder.files(), QStringList(QStringLiteral("file")));
}

QTEST_GUILESS_MAIN(tst_delivery)
#include "tst_delivery.moc"
