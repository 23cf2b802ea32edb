#include "winsupport/DrivePath.h"

#include <QTest>

using namespace Quorlin;

namespace {

QString windows(const char *path)
{
    return QString::fromUtf8(path);
}

} // namespace

class TestDrivePath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { qputenv("QUORLIN_DRIVE_C", "/drive/c"); }
    void cleanup() { qunsetenv("QUORLIN_DRIVE_C"); }

    void findsAPathOnDriveC_data();
    void findsAPathOnDriveC();
    void knowsNoOtherFormOfPath_data();
    void knowsNoOtherFormOfPath();
    void hasNoDriveWithoutTheVariable();
    void hasNoDriveWhenTheVariableIsEmpty();
    void hasNoDriveForARelativeFolder();
};

void TestDrivePath::findsAPathOnDriveC_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("file") << windows("c:\\temp\\test1.bmp") << windows("/drive/c/temp/test1.bmp");
    QTest::newRow("letter's case") << windows("C:\\Temp\\A") << windows("/drive/c/Temp/A");
    QTest::newRow("other slash") << windows("c:/temp/a") << windows("/drive/c/temp/a");
    QTest::newRow("doubled") << windows("c:\\\\temp\\\\a") << windows("/drive/c/temp/a");
    QTest::newRow("dots") << windows("c:\\temp\\.\\..\\b") << windows("/drive/c/b");
    QTest::newRow("out of it") << windows("c:\\..\\..\\etc\\x") << windows("/drive/c/etc/x");
    QTest::newRow("umlaut") << windows("c:\\Größe") << windows("/drive/c/Größe");
}

void TestDrivePath::findsAPathOnDriveC()
{
    QFETCH(QString, path);
    QTEST(drivePath(path), "expected");
}

void TestDrivePath::knowsNoOtherFormOfPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty") << QString();
    QTest::newRow("other drive") << windows("d:\\temp\\a");
    QTest::newRow("share") << windows("\\\\server\\share\\a");
    QTest::newRow("drive only") << windows("c:");
    QTest::newRow("relative to the drive") << windows("c:temp\\a");
    QTest::newRow("path of this system") << windows("/tmp/a");
}

void TestDrivePath::knowsNoOtherFormOfPath()
{
    QFETCH(QString, path);
    QCOMPARE(drivePath(path), QString());
}

void TestDrivePath::hasNoDriveWithoutTheVariable()
{
    qunsetenv("QUORLIN_DRIVE_C");
    QCOMPARE(drivePath(windows("c:\\temp\\test1.bmp")), QString());
}

void TestDrivePath::hasNoDriveWhenTheVariableIsEmpty()
{
    qputenv("QUORLIN_DRIVE_C", "");
    QCOMPARE(drivePath(windows("c:\\temp\\test1.bmp")), QString());
}

void TestDrivePath::hasNoDriveForARelativeFolder()
{
    qputenv("QUORLIN_DRIVE_C", "drive");
    QCOMPARE(drivePath(windows("c:\\temp\\test1.bmp")), QString());
}

QTEST_GUILESS_MAIN(TestDrivePath)
#include "tst_drivepath.moc"
