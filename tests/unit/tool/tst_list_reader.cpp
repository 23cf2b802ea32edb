#include "support/SystemActions.h"
#include "tool/ListReader.h"
#include "unit/tool/ToolFolder.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace Quorlin;
using Separator = NameList::Separator;

class tst_list_reader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsAreReadOneAfterTheOther();
    void anEmptyListIsAList();
    void aListThatIsMissingIsNamed();
    void aFolderIsNoList();
    void aFaultyListIsNamed();
    void aPipeIsWaitedForWithoutBlocking();
    void aListThatNeverEndsIsGivenUp();

private:
    [[nodiscard]] static QString failureOf(const QStringList &lists);
};

QString tst_list_reader::failureOf(const QStringList &lists)
{
    ListReader reader(lists, Separator::LineFeed);
    const QSignalSpy finished(&reader, &ListReader::finished);
    QSignalSpy failed(&reader, &ListReader::failed);
    reader.start();
    const bool came = failed.wait(20'000) && finished.isEmpty() && failed.count() == 1;
    return came ? failed.first().first().toString() : QString();
}

void tst_list_reader::listsAreReadOneAfterTheOther()
{
    const ToolFolder folder;
    folder.write("one", "b\na\n");
    folder.write("two", "c");
    ListReader reader({QStringLiteral("two"), QStringLiteral("one"), QStringLiteral("two")},
                      Separator::LineFeed);
    QSignalSpy finished(&reader, &ListReader::finished);
    reader.start();
    QVERIFY(finished.isEmpty() && finished.wait(20'000));
    QCOMPARE(finished.first().first().toStringList().join(QLatin1Char(' ')),
             QStringLiteral("c b a c"));
}

void tst_list_reader::anEmptyListIsAList()
{
    const ToolFolder folder;
    folder.write("none", "");
    ListReader reader({QStringLiteral("none")}, Separator::Nul);
    QSignalSpy finished(&reader, &ListReader::finished);
    reader.start();
    QVERIFY(finished.wait(20'000));
    QCOMPARE(finished.first().first().toStringList(), QStringList());
}

void tst_list_reader::aListThatIsMissingIsNamed()
{
    const ToolFolder folder;
    QCOMPARE(failureOf({QStringLiteral("gone")}),
             QStringLiteral("the list gone: it cannot be read: No such file or directory"));
}

void tst_list_reader::aFolderIsNoList()
{
    const ToolFolder folder;
    QVERIFY(failureOf({folder.path(".")}).contains(QStringLiteral("Is a directory")));
}

void tst_list_reader::aFaultyListIsNamed()
{
    const ToolFolder folder;
    folder.write("good", "a\n");
    folder.write("bad", QByteArray("a\0b", 3));
    const auto failure = failureOf({QStringLiteral("good"), QStringLiteral("bad")});
    QVERIFY2(failure.startsWith(QLatin1String("the list bad: there is a NUL")),
             qPrintable(failure));
}

void tst_list_reader::aPipeIsWaitedForWithoutBlocking()
{
    const ToolFolder folder;
    QVERIFY(SystemActions::makeFifo(folder.path("pipe")));
    ListReader reader({QStringLiteral("pipe")}, Separator::LineFeed);
    QSignalSpy finished(&reader, &ListReader::finished);
    reader.start();
    QVERIFY(!finished.wait(200)); // nobody has written
    QFile writer(folder.path("pipe"));
    QVERIFY(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(writer.write("a\nb"), 3);
    QVERIFY(!finished.wait(200)); // nobody has ended
    writer.close();
    QVERIFY(finished.wait(20'000));
    QCOMPARE(finished.first().first().toStringList().size(), 2);
}

void tst_list_reader::aListThatNeverEndsIsGivenUp()
{
    QVERIFY(failureOf({SystemActions::endlessFile()}).contains(QStringLiteral("32768")));
}

QTEST_GUILESS_MAIN(tst_list_reader)
#include "tst_list_reader.moc"
