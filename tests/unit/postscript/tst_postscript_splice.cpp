#include "component/backends/postscript/PostScriptSplice.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Quorlin;

namespace {

const QByteArray Printed = "%!PS-Adobe-3.0\n%Produced by a tool\n%%Title: theirs\n%%Pages: 1\n"
                           "%%EndComments\n%%BeginProlog\n%%BeginResource: procset x\n%%EndProlog\n"
                           "%%EndResource\n%%EndProlog\n%%BeginSetup\nset\n%%EndSetup\n"
                           "%%Page: 1 1\n%%BeginPageSetup\ntheirs\n%%EndPageSetup\n"
                           "%%EndSetup\nshowpage\n%%Trailer\n%%EOF";

SpliceParts parts()
{
    return {"%!OURS\n", "our prolog\n", "our setup\n",
            [](int page) { return "our page " + std::to_string(page) + "\n"; }};
}

} // namespace

class TestPostScriptSplice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPartStandsInItsPlaceHoweverThePiecesFall_data()
    {
        QTest::addColumn<int>("size");
        for (const int size : {1, 2, 7, 1000})
            QTest::addRow("%d bytes", size) << size;
    }

    void everyPartStandsInItsPlaceHoweverThePiecesFall()
    {
        QFETCH(int, size);
        QByteArray out;
        PostScriptSplice splice(parts(), [&](const std::string &bytes) {
            out += QByteArray::fromStdString(bytes);
            return true;
        });
        for (int i = 0; i < Printed.size(); i += size)
            QVERIFY(splice.take(Printed.mid(i, size)));
        QVERIFY(splice.finish());
        QCOMPARE(out, QByteArray("%!OURS\n%Produced by a tool\n%%Pages: 1\n%%EndComments\n"
                                 "%%BeginProlog\n%%BeginResource: procset x\n%%EndProlog\n"
                                 "%%EndResource\nour prolog\n%%EndProlog\n%%BeginSetup\nset\n"
                                 "our setup\n%%EndSetup\n%%Page: 1 1\n%%BeginPageSetup\n"
                                 "our page 1\n%%EndPageSetup\n%%EndSetup\nshowpage\n%%Trailer\n"
                                 "%%EOF\n"));
        QCOMPARE(splice.pages(), 1);
        QVERIFY(splice.whole());
    }

    void aLongLineTakesNoLongerInManyPieces()
    {
        constexpr int Pieces = 200000;
        QByteArray out;
        PostScriptSplice splice(parts(), [&](const std::string &bytes) {
            out += QByteArray::fromStdString(bytes);
            return true;
        });
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < Pieces; ++i)
            QVERIFY(splice.take("0123456789abcdef"));
        QVERIFY(splice.finish());
        QVERIFY(timer.elapsed() < 10000);
        QCOMPARE(out.size(), QByteArray("%!OURS\n").size() + 16 * Pieces + 1);
    }

    void aFileThatBreaksOffIsNotWhole()
    {
        PostScriptSplice splice(parts(), [](const std::string &) { return true; });
        QVERIFY(splice.take(Printed.left(Printed.indexOf("showpage"))));
        QVERIFY(splice.finish());
        QVERIFY(!splice.whole());
    }

    void aFullDiskIsToldOf()
    {
        PostScriptSplice splice(parts(), [](const std::string &) { return false; });
        QVERIFY(splice.take(Printed));
        QVERIFY(!splice.finish());
    }
};

QTEST_APPLESS_MAIN(TestPostScriptSplice)
#include "tst_postscript_splice.moc"
