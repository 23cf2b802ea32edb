#include "skin/controls/KelLabel.h"

#include "Pixels.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTest>

using namespace Quorlin;

namespace {

constexpr int Width = 90;
constexpr int Height = 30;

} // namespace

class TestLabelPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { qunsetenv("QUORLIN_DRIVE_C"); }

    void savesWhatItLooksLike();
    void savesAWindowsBitmap();
    void savesNothingWhenTransparent();
    void savesNothingWithoutADrive();
    void ignoresAMissingFolder();
    void ignoresAFolderThatMayNotBeWritten();
    void ignoresAFolderInTheFilesPlace();
    void ignoresAFullDisk();
    void replacesAnOlderFile();
    void leavesNothingElseBehind();
    void writesOnlyWhenThePictureChanged();
    void writesAgainWhenTheFileIsAnother();
    void writesOnceItCan();
    void replacesAPipeWithoutWaiting();

private:
    [[nodiscard]] QString file() const { return m_folder->path("temp/test1.bmp"); }
    [[nodiscard]] static std::unique_ptr<KelLabel> opaqueLabel(const char *caption = "Text");

    std::unique_ptr<TestFolder> m_folder;
};

void TestLabelPicture::init()
{
    m_folder = std::make_unique<TestFolder>();
    m_folder->makeFolder("temp");
    qputenv("QUORLIN_DRIVE_C", m_folder->path().toUtf8());
}

std::unique_ptr<KelLabel> TestLabelPicture::opaqueLabel(const char *caption)
{
    auto label = std::make_unique<KelLabel>();
    label->resize(Width, Height);
    label->Font(Pixels::font());
    label->Caption(QString::fromUtf8(caption));
    label->BackColor(0x00FFFF);
    label->TextColor(0);
    label->BackStyle(1);
    return label;
}

void TestLabelPicture::savesWhatItLooksLike()
{
    const auto label = opaqueLabel();
    label->BorderStyle(1);
    const auto painted = Pixels::painted(*label);
    const QImage saved(file());
    QCOMPARE(saved.convertToFormat(QImage::Format_RGB32), painted);
    QVERIFY(Pixels::countOf(saved, Qt::black) > 0);
}

void TestLabelPicture::savesAWindowsBitmap()
{
    const auto label = opaqueLabel();
    const auto painted = Pixels::painted(*label);
    QVERIFY(!painted.isNull());
    const auto bytes = contentOf(file());
    QVERIFY(bytes.startsWith("BM"));
    QVERIFY(bytes.size() > Width * Height);
}

void TestLabelPicture::savesNothingWhenTransparent()
{
    const auto label = opaqueLabel();
    label->BackStyle(0);
    QVERIFY(!Pixels::painted(*label).isNull());
    QCOMPARE(namesIn(m_folder->path("temp")), QStringList());
}

void TestLabelPicture::savesNothingWithoutADrive()
{
    qunsetenv("QUORLIN_DRIVE_C");
    const auto label = opaqueLabel();
    QVERIFY(!Pixels::inkBox(Pixels::painted(*label)).isEmpty());
    QCOMPARE(namesIn(m_folder->path("temp")), QStringList());
}

void TestLabelPicture::ignoresAMissingFolder()
{
    QVERIFY(QDir(m_folder->path()).rmdir(QStringLiteral("temp")));
    const auto label = opaqueLabel();
    QVERIFY(!Pixels::inkBox(Pixels::painted(*label)).isEmpty());
    QCOMPARE(m_folder->names(), QStringList());
}

void TestLabelPicture::ignoresAFolderThatMayNotBeWritten()
{
    QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(m_folder->path("temp"), QFile::Permissions(0x5555)));
    const auto label = opaqueLabel();
    {
        const OrdinaryUser user;
        QVERIFY(!Pixels::inkBox(Pixels::painted(*label)).isEmpty());
    }
    QCOMPARE(namesIn(m_folder->path("temp")), QStringList());
    QVERIFY(QFile::setPermissions(m_folder->path("temp"), QFile::Permissions(0x7777)));
}

void TestLabelPicture::ignoresAFolderInTheFilesPlace()
{
    m_folder->makeFolder("temp/test1.bmp");
    const auto label = opaqueLabel();
    QVERIFY(!Pixels::inkBox(Pixels::painted(*label)).isEmpty());
    QCOMPARE(namesIn(m_folder->path("temp")), {QStringLiteral("test1.bmp")});
    QVERIFY(QFileInfo(file()).isDir());
}

void TestLabelPicture::ignoresAFullDisk()
{
    const SmallDisk disk(m_folder->path("temp"), 16);
    if (!disk.isMounted())
        QSKIP("this process may not mount");
    const auto label = opaqueLabel();
    label->resize(400, 300);
    QVERIFY(!Pixels::inkBox(Pixels::painted(*label)).isEmpty());
    QCOMPARE(namesIn(m_folder->path("temp")), QStringList());
}

void TestLabelPicture::replacesAnOlderFile()
{
    m_folder->write("temp/test1.bmp", "old");
    const auto label = opaqueLabel();
    const auto painted = Pixels::painted(*label);
    QCOMPARE(QImage(file()).convertToFormat(QImage::Format_RGB32), painted);
}

void TestLabelPicture::leavesNothingElseBehind()
{
    const auto label = opaqueLabel();
    for (int i = 0; i < 5; ++i) {
        label->Caption(QString::number(i));
        QVERIFY(!Pixels::painted(*label).isNull());
    }
    QCOMPARE(namesIn(m_folder->path("temp")), {QStringLiteral("test1.bmp")});
}

void TestLabelPicture::writesOnlyWhenThePictureChanged()
{
    const auto label = opaqueLabel();
    QVERIFY(!Pixels::painted(*label).isNull());
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5));
    QFile saved(file());
    QVERIFY(saved.open(QIODevice::ReadWrite));
    QVERIFY(saved.setFileTime(longAgo, QFileDevice::FileModificationTime));
    saved.close();
    QVERIFY(!Pixels::painted(*label).isNull());
    QCOMPARE(QFileInfo(file()).lastModified(), longAgo);
    label->Caption(QStringLiteral("other"));
    QVERIFY(!Pixels::painted(*label).isNull());
    QVERIFY(QFileInfo(file()).lastModified() > longAgo);
}

void TestLabelPicture::writesAgainWhenTheFileIsAnother()
{
    const auto label = opaqueLabel();
    const auto painted = Pixels::painted(*label);
    QVERIFY(QFile::remove(file()));
    QVERIFY(!Pixels::painted(*label).isNull());
    QVERIFY(QFile::exists(file()));
    // Another label's picture takes its place; painting the first brings it back.
    const auto second = opaqueLabel("second");
    QVERIFY(!Pixels::painted(*second).isNull());
    QVERIFY(QImage(file()).convertToFormat(QImage::Format_RGB32) != painted);
    QVERIFY(!Pixels::painted(*label).isNull());
    QCOMPARE(QImage(file()).convertToFormat(QImage::Format_RGB32), painted);
}

void TestLabelPicture::writesOnceItCan()
{
    QVERIFY(QDir(m_folder->path()).rmdir(QStringLiteral("temp")));
    const auto label = opaqueLabel();
    QVERIFY(!Pixels::painted(*label).isNull());
    m_folder->makeFolder("temp");
    QVERIFY(!Pixels::painted(*label).isNull());
    QVERIFY(QFile::exists(file()));
}

void TestLabelPicture::replacesAPipeWithoutWaiting()
{
    QVERIFY(SystemActions::makeFifo(file()));
    const auto label = opaqueLabel();
    QVERIFY(!Pixels::painted(*label).isNull());
    QVERIFY(QFileInfo(file()).isFile());
}

QTEST_MAIN(TestLabelPicture)
#include "tst_label_picture.moc"
