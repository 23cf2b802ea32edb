#include "component/supervisor/OutputNames.h"

#include "component/protocol/ResultNames.h"
#include "support/TestFolder.h"

#include <QTest>

using namespace Quorlin;

class TestOutputNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hiddenNamesAreCounted();
    void theResultOfAHiddenNameIsTheUsersOwn();
    void theMissingNameIsOneUnderWhichNothingIs();
};

void TestOutputNames::hiddenNamesAreCounted()
{
    QStringList names;
    for (int number = 0; number < 3; ++number)
        names << OutputNames::hiddenName(QStringLiteral("/d"), QStringLiteral("x"),
                                         QStringLiteral("ps"), number);
    QCOMPARE(names, QStringList({QStringLiteral("/d/x.ps~"), QStringLiteral("/d/x.ps2~"),
                                 QStringLiteral("/d/x.ps3~")}));
}

void TestOutputNames::theResultOfAHiddenNameIsTheUsersOwn()
{
    for (const auto &base : {QStringLiteral("report"), QStringLiteral("a.b"), QString()})
        for (int number = 0; number < 20; ++number)
            QCOMPARE(ResultNames::baseOf(OutputNames::hiddenName(QStringLiteral("/d"), base,
                                                                 QStringLiteral("ps"), number)),
                     base);
}

void TestOutputNames::theMissingNameIsOneUnderWhichNothingIs()
{
    const TestFolder folder;
    const auto missing = [&] {
        return OutputNames::missingName(folder.path(), QStringLiteral("x"), QStringLiteral("pdf"));
    };
    QCOMPARE(missing(), folder.path("x.pdf~"));
    folder.write("x.pdf~", "the user's");
    QCOMPARE(missing(), folder.path("x.pdf2~"));
    QVERIFY(QFile::link(folder.path("nowhere"), folder.path("x.pdf2~")));
    QCOMPARE(missing(), folder.path("x.pdf3~"));
}

QTEST_GUILESS_MAIN(TestOutputNames)
#include "tst_outputnames.moc"
