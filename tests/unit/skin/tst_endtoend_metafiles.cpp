#include "skin/MetafileCache.h"
#include "skin/OfficeMetafiles.h"
#include "skin/PointReader.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QElapsedTimer>
#include <QImage>
#include <QTest>
#include <QTimer>

using namespace Quorlin;

namespace {

/// Writes numbers as metafiles hold them, lowest byte first.
class Numbers
{
public:
    template <typename... Values>
    Numbers &words(Values... values)
    {
        (add(values, 2), ...);
        return *this;
    }

    template <typename... Values>
    Numbers &longs(Values... values)
    {
        (add(values, 4), ...);
        return *this;
    }

    [[nodiscard]] QByteArray bytes() const { return m_bytes; }

private:
    void add(qint64 value, int count)
    {
        for (int at = 0; at < count; ++at)
            m_bytes += char((value >> (8 * at)) & 0xFF);
    }

    QByteArray m_bytes;
};

constexpr int Side = 1440; ///< units of a square of one inch

/// A square of one inch, filled with red.
QByteArray redWmf()
{
    Numbers records;
    records.longs(5).words(0x020B, 0, 0);                 // where the window begins
    records.longs(5).words(0x020C, Side, Side);           // how large it is
    records.longs(7).words(0x02FC, 0, 0x00FF, 0x0000, 0); // a red brush
    records.longs(4).words(0x012D, 0);                    // is used
    records.longs(7).words(0x041B, Side, Side, 0, 0);     // for a rectangle
    records.longs(3).words(0);
    const auto body = records.bytes();
    Numbers start;
    start.longs(0x9AC6CDD7).words(0, 0, 0, Side, Side, Side).longs(0);
    quint16 sum = 0;
    const auto head = start.bytes();
    for (qsizetype at = 0; at < head.size(); at += 2)
        sum ^= quint16(quint8(head.at(at)) | (quint8(head.at(at + 1)) << 8));
    start.words(sum);
    start.words(1, 9, 0x0300).longs(9 + body.size() / 2).words(1).longs(7).words(0);
    return start.bytes() + body;
}

/// The same square; a device of 96 points to the inch.
QByteArray redEmf()
{
    constexpr int HeaderBytes = 88;
    Numbers records;
    records.longs(39, 24, 1, 0, 0x0000FF, 0); // a red brush
    records.longs(37, 12, 1);                 // is used
    records.longs(43, 24, 0, 0, 95, 95);      // for a rectangle
    records.longs(14, 20, 0, 16, 20);         // the end
    const auto body = records.bytes();
    Numbers head;
    head.longs(1, HeaderBytes, 0, 0, 95, 95, 0, 0, 2540, 2540);
    head.longs(0x464D4520, 0x10000, HeaderBytes + body.size(), 5).words(2, 0);
    head.longs(0, 0, 0, 1920, 1080, 508, 286);
    return head.bytes() + body;
}

void checkIsRed(const QByteArray &png)
{
    const auto image = PointReader::read(png, PictureFormat::Png);
    QVERIFY(!image.isNull());
    QCOMPARE(image.size(), QSize(96, 96));
    QCOMPARE(image.pixelColor(image.rect().center()), QColor(Qt::red));
}

} // namespace

/// Metafiles as skins have them, with the office engine itself.
class TestMetafiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rendersBothKinds_data();
    void rendersBothKinds();
    void damagedMetafileDoesNotHang();
    void engineThatDoesNotEndIsEnded();
    void withoutAnEngineThereIsNoPicture();
    void cachedPictureNeedsNoEngine();
};

void TestMetafiles::rendersBothKinds_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("wmf") << redWmf();
    QTest::newRow("emf") << redEmf();
}

void TestMetafiles::rendersBothKinds()
{
    QFETCH(const QByteArray, content);
    int events = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&events] { ++events; });
    timer.start(50);
    const auto png = OfficeMetafiles().render(content, pictureFormatOf(content));
    checkIsRed(png);
    QVERIFY2(events > 3, "the window stood still");
}

/// What the engine makes of it is up to the engine, as long as it comes back.
void TestMetafiles::damagedMetafileDoesNotHang()
{
    QElapsedTimer timer;
    timer.start();
    const auto png = OfficeMetafiles().render(redEmf().left(60), PictureFormat::Emf);
    QVERIFY(timer.elapsed() < 2 * OfficeMetafiles::Limit.count());
    QVERIFY(png.isEmpty() || pictureFormatOf(png) == PictureFormat::Png);
}

void TestMetafiles::engineThatDoesNotEndIsEnded()
{
    const TestFolder folder;
    const auto slow = folder.write("soffice", "#!/bin/sh\n"
                                              "sleep 100 & echo $! > \"$0.pid\"; wait\n");
    QVERIFY(QFile::setPermissions(slow, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    using namespace std::chrono_literals;
    QVERIFY(OfficeMetafiles(slow, 700ms).render(redWmf(), PictureFormat::Wmf).isEmpty());
    const auto child = contentOf(folder.path("soffice.pid")).trimmed().toLongLong();
    QVERIFY(child > 1);
    QTRY_VERIFY(!SystemActions::isRunning(child));
}

void TestMetafiles::withoutAnEngineThereIsNoPicture()
{
    const OfficeMetafiles renderer(QStringLiteral("/nowhere/soffice"));
    QVERIFY(renderer.render(redWmf(), PictureFormat::Wmf).isEmpty());
}

void TestMetafiles::cachedPictureNeedsNoEngine()
{
    const TestFolder folder;
    const OfficeMetafiles engine;
    const auto made =
        MetafileCache(folder.path("cache"), engine).render(redWmf(), PictureFormat::Wmf);
    checkIsRed(made);
    const OfficeMetafiles none(QStringLiteral("/nowhere/soffice"));
    const MetafileCache cache(folder.path("cache"), none);
    QCOMPARE(cache.render(redWmf(), PictureFormat::Wmf), made);
}

QTEST_GUILESS_MAIN(TestMetafiles)
#include "tst_endtoend_metafiles.moc"
