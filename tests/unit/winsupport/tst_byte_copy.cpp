#include "support/SystemActions.h"
#include "support/TestFolder.h"
#include "unit/winsupport/CopyScene.h"
#include "winsupport/ByteCopy.h"

#include <QFile>
#include <QTest>

using namespace Quorlin;

namespace {

/// The error of a copy between two files; 0 when all went well.
int copyBytes(
    const QString &from, const QString &to, qint64 total,
    const ByteCopy::Step &step = [](qint64) { return true; })
{
    QFile source(from);
    QFile target(to);
    if (!source.open(QIODevice::ReadOnly) ||
        !target.open(QIODevice::ReadWrite | QIODevice::Truncate | QIODevice::Unbuffered))
        return -1;
    try {
        ByteCopy(source.handle(), target.handle(), total).run(step);
    } catch (const std::system_error &error) {
        return error.code().value();
    }
    return 0;
}

QByteArray mixed(int bytes)
{
    QByteArray content(bytes, '\0');
    for (int i = 0; i < bytes; ++i)
        content[i] = static_cast<char>(i % 251);
    return content;
}

} // namespace

class tst_byte_copy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allSizesArriveWhole_data();
    void allSizesArriveWhole();
    void otherFileSystemsTakeTheWayThroughMemory();
    void aSourceThatBecameShorterIsAnError();
    void whatWasAddedToTheSourceIsLeftOut();
    void aStepMayStop();
};

void tst_byte_copy::allSizesArriveWhole_data()
{
    QTest::addColumn<int>("bytes");
    for (const auto bytes : {0, 1, 4095, 4096, 256 * 1024, 4 * 1024 * 1024 - 1, 4 * 1024 * 1024 + 1,
                             80 * 1024 * 1024 + 7})
        QTest::addRow("%d", bytes) << bytes;
}

void tst_byte_copy::allSizesArriveWhole()
{
    QFETCH(int, bytes);
    const TestFolder folder;
    const auto content = mixed(bytes);
    const auto from = folder.write("from", content);
    qint64 last = 0;
    bool grows = true;
    const auto error = copyBytes(from, folder.path("to"), bytes, [&](qint64 copied) {
        grows = grows && copied > last;
        last = copied;
        return true;
    });
    QCOMPARE(error, 0);
    QVERIFY(grows);
    QCOMPARE(last, qint64(bytes));
    QVERIFY(contentOf(folder.path("to")) == content);
}

void tst_byte_copy::otherFileSystemsTakeTheWayThroughMemory()
{
    const TestFolder folder;
    const auto other = SystemActions::folderOnOtherFileSystem(folder.path());
    if (other.isEmpty())
        QSKIP("there is no other file system to write to");
    const TestFolder elsewhere(other);
    const auto content = mixed(3 * 1024 * 1024 + 11);
    QCOMPARE(copyBytes(folder.write("from", content), elsewhere.path("to"), content.size()), 0);
    QVERIFY(contentOf(elsewhere.path("to")) == content);
}

void tst_byte_copy::aSourceThatBecameShorterIsAnError()
{
    const TestFolder folder;
    QCOMPARE(copyBytes(folder.write("from", "short"), folder.path("to"), 6),
             numberOf(std::errc::io_error));
}

void tst_byte_copy::whatWasAddedToTheSourceIsLeftOut()
{
    const TestFolder folder;
    QCOMPARE(copyBytes(folder.write("from", "longer"), folder.path("to"), 4), 0);
    QCOMPARE(contentOf(folder.path("to")), QByteArray("long"));
}

void tst_byte_copy::aStepMayStop()
{
    const TestFolder folder;
    const auto from = folder.write("from", mixed(9 * 1024 * 1024));
    int steps = 0;
    const auto error = copyBytes(from, folder.path("to"), 9 * 1024 * 1024,
                                 [&steps](qint64) { return ++steps < 2; });
    QCOMPARE(error, numberOf(std::errc::operation_canceled));
    QCOMPARE(steps, 2);
}

QTEST_GUILESS_MAIN(tst_byte_copy)
#include "tst_byte_copy.moc"
