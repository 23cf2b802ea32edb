#include "component/backends/postscript/Pdfmarks.h"

#include <QTest>

using namespace Quorlin;

namespace {

PdfTarget uri(const char *address)
{
    PdfTarget target;
    target.kind = PdfTarget::Kind::Uri;
    target.text = address;
    return target;
}

QByteArray hexOf(const QByteArray &text)
{
    return '<' + text.toHex().toUpper() + '>';
}

} // namespace

class TestPdfmarks : public QObject
{
    Q_OBJECT

private:
    PdfInventory m_inventory;

    QByteArray document()
    {
        return QByteArray::fromStdString(Pdfmarks(m_inventory, {}).documentMarks());
    }

    QByteArray page(int number, const AddressRebase &rebase = {})
    {
        return QByteArray::fromStdString(Pdfmarks(m_inventory, rebase).pageMarks(number));
    }

private Q_SLOTS:
    void init()
    {
        m_inventory = {};
        m_inventory.pages = {PageGeometry({10, 20, 110, 220}, 0),
                             PageGeometry({0, 0, 100, 200}, 90)};
        m_inventory.links.resize(2);
    }

    void anEmptyInventoryWritesNothing()
    {
        QCOMPARE(document(), QByteArray());
        QCOMPARE(page(1), QByteArray());
        QCOMPARE(page(7), QByteArray());
    }

    void aTitleCannotActAsAProgram()
    {
        m_inventory.info = {{"Title", QStringLiteral(") quit (")}};
        QCOMPARE(document(), "[ /Title " + hexOf(") quit (") + "\n/DOCINFO pdfmark\n");
    }

    void aLinkLiesOnItsSheet()
    {
        PdfLink link;
        link.rect = {20, 30, 40, 50};
        link.border = {0, 0, 0};
        link.target = uri("http://a.example/(x)");
        m_inventory.links[0].push_back(link);
        QCOMPARE(page(1), "[/Subtype /Link /Rect [10 10 30 30] /Border [0 0 0] /Action << /Subtype "
                          "/URI /URI " +
                              hexOf("http://a.example/(x)") + " >> /ANN pdfmark\n");
        m_inventory.links[1].push_back(link);
        QVERIFY(page(2).contains("/Rect [30 60 50 80]"));
    }

    void theLongestBeginningOfAnAddressIsReplaced()
    {
        PdfLink link;
        link.target = uri("file:///w/1/sub/b.docx");
        m_inventory.links[0].push_back(link);
        const AddressRebase rebase{{"file:///w/1/", "file:///d/"},
                                   {"file:///w/1/sub/", "file:///e/"}};
        QVERIFY(page(1, rebase).contains(hexOf("file:///e/b.docx")));
        m_inventory.links[0][0].target = uri("http://x.example/file:///w/1/");
        QVERIFY(page(1, rebase).contains(hexOf("http://x.example/file:///w/1/")));
    }

    void bookmarksTellTheirChildrenAndTheirState()
    {
        PdfBookmark inner;
        inner.title = QString::fromUtf8("Zwölf");
        inner.target.kind = PdfTarget::Kind::Page;
        inner.target.page = 1;
        inner.target.view = {"FitH", {100.0}};
        PdfBookmark outer;
        outer.title = QStringLiteral("One");
        outer.children = {inner, inner};
        m_inventory.bookmarks = {outer};
        const auto mark =
            "[/Title <FEFF005A007700F6006C0066> /Page 1 /View [/FitH 80] /OUT pdfmark\n";
        QCOMPARE(document(),
                 "[/Title <4F6E65> /Count -2 /OUT pdfmark\n" + QByteArray(mark).repeated(2));
        m_inventory.bookmarks[0].open = true;
        QVERIFY(document().contains("/Count 2 "));
    }

    void namesThatPostScriptCannotWriteGetAnotherOne()
    {
        m_inventory.destinations = {{"plain", 1, {"Fit", {}}}, {"a) b", 2, {"Fit", {}}}};
        PdfLink link;
        link.target.kind = PdfTarget::Kind::Name;
        link.target.text = "a) b";
        m_inventory.links[0] = {link};
        QCOMPARE(document(),
                 QByteArray("[/Dest /plain /Page 1 /View [/Fit] /DEST pdfmark\n"
                            "[/Dest /quorlin.place.1 /Page 2 /View [/Fit] /DEST pdfmark\n"));
        QVERIFY(page(1).contains(" /Dest /quorlin.place.1 "));
    }

    void aLinkToAPlaceThatDoesNotExistIsLeftOut()
    {
        PdfLink link;
        link.target.kind = PdfTarget::Kind::Name;
        link.target.text = "nowhere";
        m_inventory.links[0] = {link};
        QCOMPARE(page(1), QByteArray());
    }

    void pageLabelsKeepTheirStyle()
    {
        m_inventory.labels = {{0, "r", {}, 1}, {4, "D", QStringLiteral("A-"), 7}};
        QCOMPARE(document(),
                 QByteArray("[{Catalog} << /PageLabels << /Nums [\n0 << /S /r /St 1 >>\n"
                            "4 << /S /D /P <412D> /St 7 >>\n] >> >> /PUT pdfmark\n"));
    }
};

QTEST_APPLESS_MAIN(TestPdfmarks)
#include "tst_pdfmarks.moc"
