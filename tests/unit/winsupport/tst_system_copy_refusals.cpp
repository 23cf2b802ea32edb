#include "support/SystemActions.h"
#include "unit/winsupport/CopyScene.h"
#include "winsupport/FileCopy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <new>

using namespace Quorlin;

namespace {

const QByteArray OldContent("the old file");

QString oldFile(const CopyScene &scene)
{
    return scene.folder.write("to/result.pdf", OldContent);
}

bool isAdministrator(const QString &ownFile)
{
    return QFileInfo(ownFile).ownerId() == 0;
}

} // namespace

/// What the system's copy refuses, leaving everything as it was.
class tst_system_copy_refusals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLinkIntoAMissingFolderFails();
    void aCircleOfLinksFails();
    void aMissingSourceFails();
    void aFolderAsSourceFails();
    void aPipeAsSourceFailsAtOnce();
    void aDeviceAsSourceFails();
    void anUnreadableSourceFails();
    void aFolderAsDestinationFails();
    void aPipeAsDestinationStays();
    void aDeviceAsDestinationStays();
    void aMissingFolderFails();
    void aFileInPlaceOfTheFolderFails();
    void badNamesFail();
    void aFileOntoItselfFails();
    void aFileOntoItsLinkFails();
    void aFileOntoItsSecondNameFails();
    void aWriteProtectedDestinationFailsForEverybody();
    void aDestinationOfSomebodyElseFails();
    void aWriteProtectedFolderFails();
    void aReadOnlyDiskFails();
    void aFullDiskKeepsTheOldFile();
    void aFolderThatVanishesMeanwhileFails();
    void aDestinationThatBecomesAFolderFailsWithoutTheEnd();
    void anExceptionOfAnotherKindIsAFailureToo();
};

void tst_system_copy_refusals::aLinkIntoAMissingFolderFails()
{
    CopyScene scene;
    QVERIFY(QFile::link(QStringLiteral("../none/new.pdf"), scene.destination));
    QCOMPARE(scene.copy().error, numberOf(std::errc::no_such_file_or_directory));
    QVERIFY(!QFileInfo::exists(scene.folder.path("none")));
}

void tst_system_copy_refusals::aCircleOfLinksFails()
{
    CopyScene scene;
    QVERIFY(QFile::link(QStringLiteral("b"), scene.folder.path("to/a")));
    QVERIFY(QFile::link(QStringLiteral("a"), scene.folder.path("to/b")));
    const auto outcome = scene.copy(scene.source, scene.folder.path("to/a"));
    QCOMPARE(outcome.error, numberOf(std::errc::too_many_symbolic_link_levels));
    QCOMPARE(scene.inFolder().size(), 2);
}

void tst_system_copy_refusals::aMissingSourceFails()
{
    CopyScene scene;
    oldFile(scene);
    QVERIFY(QFile::remove(scene.source));
    const auto outcome = scene.copy();
    QVERIFY(!outcome.success);
    QCOMPARE(outcome.error, numberOf(std::errc::no_such_file_or_directory));
    QVERIFY(outcome.text.contains(QStringLiteral("source")));
    QVERIFY(scene.calls.isEmpty());
    QCOMPARE(contentOf(scene.destination), OldContent);
}

void tst_system_copy_refusals::aFolderAsSourceFails()
{
    CopyScene scene;
    const auto outcome = scene.copy(scene.folder.path(), scene.destination);
    QCOMPARE(outcome.error, numberOf(std::errc::is_a_directory));
    QVERIFY(scene.inFolder().isEmpty());
}

void tst_system_copy_refusals::aPipeAsSourceFailsAtOnce()
{
    CopyScene scene;
    QVERIFY(SystemActions::makeFifo(scene.folder.path("pipe")));
    const auto outcome = scene.copy(scene.folder.path("pipe"), scene.destination);
    QCOMPARE(outcome.error, numberOf(std::errc::invalid_argument));
    QVERIFY(scene.inFolder().isEmpty());
}

void tst_system_copy_refusals::aDeviceAsSourceFails()
{
    CopyScene scene;
    const auto outcome = scene.copy(SystemActions::nullDevice(), scene.destination);
    QCOMPARE(outcome.error, numberOf(std::errc::invalid_argument));
    QVERIFY(scene.inFolder().isEmpty());
}

void tst_system_copy_refusals::anUnreadableSourceFails()
{
    CopyScene scene;
    QVERIFY(QFile::setPermissions(scene.folder.path(), QFile::Permissions(0x7777)));
    QVERIFY(QFile::setPermissions(scene.target, QFile::Permissions(0x7777)));
    QVERIFY(QFile::setPermissions(scene.source, QFile::Permissions()));
    const OrdinaryUser user;
    QCOMPARE(scene.copy().error, numberOf(std::errc::permission_denied));
    QVERIFY(scene.inFolder().isEmpty());
}

void tst_system_copy_refusals::aFolderAsDestinationFails()
{
    CopyScene scene;
    scene.folder.write("to/result.pdf/inside", OldContent);
    QCOMPARE(scene.copy().error, numberOf(std::errc::is_a_directory));
    QCOMPARE(scene.copy(scene.source, scene.target + QLatin1Char('/')).error,
             numberOf(std::errc::is_a_directory));
    QCOMPARE(contentOf(scene.folder.path("to/result.pdf/inside")), OldContent);
    QCOMPARE(scene.inFolder().size(), 1);
}

void tst_system_copy_refusals::aPipeAsDestinationStays()
{
    CopyScene scene;
    QVERIFY(SystemActions::makeFifo(scene.destination));
    QCOMPARE(scene.copy().error, numberOf(std::errc::invalid_argument));
    QCOMPARE(scene.inFolder().size(), 1);
    QVERIFY(!QFileInfo(scene.destination).isFile());
}

void tst_system_copy_refusals::aDeviceAsDestinationStays()
{
    CopyScene scene;
    QVERIFY(QFile::link(SystemActions::nullDevice(), scene.destination));
    QCOMPARE(scene.copy().error, numberOf(std::errc::invalid_argument));
    QVERIFY(!QFileInfo(SystemActions::nullDevice()).isFile());
}

void tst_system_copy_refusals::aMissingFolderFails()
{
    CopyScene scene;
    const auto outcome = scene.copy(scene.source, scene.folder.path("none/result.pdf"));
    QCOMPARE(outcome.error, numberOf(std::errc::no_such_file_or_directory));
    QVERIFY(!QFileInfo::exists(scene.folder.path("none")));
}

void tst_system_copy_refusals::aFileInPlaceOfTheFolderFails()
{
    CopyScene scene;
    const auto outcome = scene.copy(scene.source, scene.source + QStringLiteral("/result.pdf"));
    QCOMPARE(outcome.error, numberOf(std::errc::not_a_directory));
    QCOMPARE(contentOf(scene.source), scene.content);
}

void tst_system_copy_refusals::badNamesFail()
{
    CopyScene scene;
    QVERIFY(!scene.copy(QString(), scene.destination).success);
    QVERIFY(!scene.copy(scene.source, QString()).success);
    // The system would see the name up to the zero only.
    const auto cut = scene.destination + QChar(QChar::Null) + QStringLiteral(".tmp");
    QCOMPARE(scene.copy(scene.source, cut).error, numberOf(std::errc::invalid_argument));
    QVERIFY(scene.inFolder().isEmpty());
    const auto tooLong = scene.folder.path("to/") + QString(256, QLatin1Char('n'));
    QCOMPARE(scene.copy(scene.source, tooLong).error, numberOf(std::errc::filename_too_long));
}

void tst_system_copy_refusals::aFileOntoItselfFails()
{
    CopyScene scene;
    QCOMPARE(scene.copy(scene.source, scene.source).error, numberOf(std::errc::invalid_argument));
    QCOMPARE(contentOf(scene.source), scene.content);
}

void tst_system_copy_refusals::aFileOntoItsLinkFails()
{
    CopyScene scene;
    QVERIFY(QFile::link(scene.source, scene.destination));
    QCOMPARE(scene.copy().error, numberOf(std::errc::invalid_argument));
    QCOMPARE(scene.copy(scene.destination, scene.source).error,
             numberOf(std::errc::invalid_argument));
    QCOMPARE(contentOf(scene.source), scene.content);
}

void tst_system_copy_refusals::aFileOntoItsSecondNameFails()
{
    CopyScene scene;
    QVERIFY(SystemActions::makeSecondName(scene.source, scene.destination));
    QCOMPARE(scene.copy().error, numberOf(std::errc::invalid_argument));
    QCOMPARE(contentOf(scene.source), scene.content);
    QCOMPARE(scene.inFolder().size(), 1);
}

void tst_system_copy_refusals::aWriteProtectedDestinationFailsForEverybody()
{
    CopyScene scene;
    QVERIFY(QFile::setPermissions(oldFile(scene), QFile::ReadOwner | QFile::ReadOther));
    const auto outcome = scene.copy();
    QVERIFY(!outcome.success);
    QCOMPARE(outcome.error, numberOf(std::errc::permission_denied));
    QVERIFY(outcome.text.contains(QStringLiteral("write-protected")));
    QCOMPARE(contentOf(scene.destination), OldContent);
    QCOMPARE(scene.inFolder().size(), 1);
}

void tst_system_copy_refusals::aDestinationOfSomebodyElseFails()
{
    CopyScene scene;
    if (!isAdministrator(oldFile(scene)))
        QSKIP("only the administrator can make a file of somebody else");
    QVERIFY(QFile::setPermissions(scene.folder.path(), QFile::Permissions(0x7777)));
    QVERIFY(QFile::setPermissions(scene.target, QFile::Permissions(0x7777)));
    const OrdinaryUser user;
    QCOMPARE(scene.copy().error, numberOf(std::errc::permission_denied));
    QCOMPARE(contentOf(scene.destination), OldContent);
}

void tst_system_copy_refusals::aWriteProtectedFolderFails()
{
    // The old file itself could be written, but not without the danger of losing it.
    CopyScene scene;
    QVERIFY(QFile::setPermissions(oldFile(scene), QFile::Permissions(0x6666)));
    QVERIFY(QFile::setPermissions(scene.folder.path(), QFile::Permissions(0x7777)));
    QVERIFY(QFile::setPermissions(scene.target, QFile::Permissions(0x5555)));
    const OrdinaryUser user;
    QCOMPARE(scene.copy().error, numberOf(std::errc::permission_denied));
    QCOMPARE(scene.copy(scene.source, scene.folder.path("to/other.pdf")).error,
             numberOf(std::errc::permission_denied));
    QCOMPARE(contentOf(scene.destination), OldContent);
}

void tst_system_copy_refusals::aReadOnlyDiskFails()
{
    CopyScene scene;
    const SmallDisk disk(scene.target, 256);
    if (!disk.isMounted())
        QSKIP("this user may not mount");
    oldFile(scene);
    QVERIFY(disk.makeReadOnly());
    QCOMPARE(scene.copy().error, numberOf(std::errc::read_only_file_system));
    QCOMPARE(contentOf(scene.destination), OldContent);
}

void tst_system_copy_refusals::aFullDiskKeepsTheOldFile()
{
    CopyScene scene;
    const SmallDisk disk(scene.target, 256);
    if (!disk.isMounted())
        QSKIP("this user may not mount");
    oldFile(scene);
    const auto big = scene.folder.write("big", QByteArray(1024 * 1024, 'b'));
    const auto outcome = scene.copy(big, scene.destination);
    QVERIFY(!outcome.success);
    QCOMPARE(outcome.error, numberOf(std::errc::no_space_on_device));
    QCOMPARE(contentOf(scene.destination), OldContent);
    QCOMPARE(scene.inFolder().size(), 1);
    QVERIFY(scene.copy().success);
}

void tst_system_copy_refusals::aFolderThatVanishesMeanwhileFails()
{
    CopyScene scene;
    scene.onProgress = [&](qint64, qint64) {
        QDir(scene.target).removeRecursively();
        return 0U;
    };
    QCOMPARE(scene.copy().error, numberOf(std::errc::no_such_file_or_directory));
    QCOMPARE(scene.calls.size(), 1);
}

void tst_system_copy_refusals::aDestinationThatBecomesAFolderFailsWithoutTheEnd()
{
    CopyScene scene;
    scene.onProgress = [&](qint64, qint64) {
        scene.folder.makeFolder("to/result.pdf");
        return 0U;
    };
    QCOMPARE(scene.copy().error, numberOf(std::errc::is_a_directory));
    for (const auto &[total, copied] : scene.calls)
        QVERIFY(copied < total);
    QCOMPARE(scene.inFolder(), QStringList{QStringLiteral("result.pdf")});
}

/// It would end the process, since it is the copy's own thread that meets it.
void tst_system_copy_refusals::anExceptionOfAnotherKindIsAFailureToo()
{
    CopyScene scene;
    oldFile(scene);
    FileCopy copy(scene.source, scene.destination);
    const auto outcome = copy.run([] { throw std::bad_alloc(); });
    QVERIFY(!outcome.success);
    QCOMPARE(outcome.error, numberOf(std::errc::io_error));
    QVERIFY(!outcome.text.isEmpty());
    QCOMPARE(contentOf(scene.destination), OldContent);
    QCOMPARE(scene.inFolder().size(), 1);
}

QTEST_GUILESS_MAIN(tst_system_copy_refusals)
#include "tst_system_copy_refusals.moc"
