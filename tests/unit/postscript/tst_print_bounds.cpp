#include "component/backends/postscript/FunctionWriter.h"
#include "component/backends/postscript/PrintCopy.h"
#include "support/TestFolder.h"
#include "unit/postscript/PdfBuilder.h"

#include <QElapsedTimer>
#include <QTest>

#include <qpdf/QPDFObjectHandle.hh>

using namespace Quorlin;

namespace {

constexpr std::size_t MegaByte = 1024 * 1024;

/// A function of parts that are all the same object, so many at each level.
QPDFObjectHandle sharing(int parts, int levels)
{
    auto function = QPDFObjectHandle::parse("<< /FunctionType 2 /Domain [0 1] /N 1 >>");
    for (int level = 0; level < levels; ++level) {
        auto outer = QPDFObjectHandle::parse("<< /FunctionType 3 /Domain [0 1] /Functions [] "
                                             "/Bounds [] /Encode [] >>");
        for (int i = 0; i < parts; ++i) {
            outer.getKey("/Functions").appendItem(function);
            outer.getKey("/Encode").appendItem(QPDFObjectHandle::newInteger(0));
            outer.getKey("/Encode").appendItem(QPDFObjectHandle::newInteger(1));
            if (i > 0)
                outer.getKey("/Bounds").appendItem(QPDFObjectHandle::newReal("0.5"));
        }
        function = outer;
    }
    return function;
}

std::size_t textBytes(const PdfInventory &inventory)
{
    std::size_t bytes = 0;
    for (const auto &links : inventory.links)
        for (const auto &link : links)
            bytes += link.target.text.size();
    for (const auto &bookmark : inventory.bookmarks)
        bytes += static_cast<std::size_t>(bookmark.title.size()) * sizeof(QChar);
    return bytes;
}

} // namespace

/// Small documents that ask for much.
class TestPrintBounds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void functionsThatShareTheirPartsDoNotMultiply()
    {
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!functionText(sharing(100, 4)));
        QVERIFY(timer.elapsed() < 5000);
        QVERIFY(functionText(sharing(10, 2)));
        QVERIFY(functionText(sharing(200, 1)));
    }

    void linksThatShareOneLongAddressDoNotFillTheMemory()
    {
        PdfDocument document;
        const int address = document.builder().add('(' + QByteArray(60000, 'x') + ')');
        QByteArray links;
        for (int i = 0; i < 3000; ++i)
            links += "<< /Subtype /Link /Rect [0 0 9 9] /A << /S /URI /URI " +
                     PdfBuilder::ref(address) + " >> >>\n";
        links += "<< /Subtype /Link /Rect [0 0 9 9] /A << /S /URI /URI (short) >> >>";
        document.addPage({}, {}, "/Annots [" + links + "]");
        const auto inventory = inventoryOf(document.file());
        QVERIFY(textBytes(inventory) <= 64 * MegaByte);
        QVERIFY(inventory.links.at(0).size() > 1000);
        QCOMPARE(inventory.links.at(0).back().target.text, std::string("short"));
    }

    void bookmarksThatShareOneLongTitleDoNotFillTheMemory()
    {
        constexpr int Count = 1500;
        PdfDocument document;
        auto &builder = document.builder();
        const int title = builder.add('(' + QByteArray(60000, 'x') + ')');
        const int outlines = builder.add("<< /First " + PdfBuilder::ref(title + 2) + " >>");
        for (int i = 1; i <= Count; ++i)
            builder.add("<< /Title " + PdfBuilder::ref(title) + " /Next " +
                        PdfBuilder::ref(outlines + 1 + i) + " >>");
        builder.add("<< /Title (short) >>");
        document.addPage({});
        const auto inventory = inventoryOf(document.file("/Outlines " + PdfBuilder::ref(outlines)));
        QVERIFY(textBytes(inventory) <= 64 * MegaByte);
        QVERIFY(inventory.bookmarks.size() > 100 && inventory.bookmarks.size() < Count);
        QCOMPARE(inventory.bookmarks.back().title, QStringLiteral("short"));
    }

private:
    PdfInventory inventoryOf(const QByteArray &bytes)
    {
        PrintCopy copy;
        const auto path = m_folder.write("a.pdf", bytes);
        return copy.open(path, true) == Reason::None ? copy.inventory() : PdfInventory();
    }

    TestFolder m_folder;
};

QTEST_APPLESS_MAIN(TestPrintBounds)
#include "tst_print_bounds.moc"
