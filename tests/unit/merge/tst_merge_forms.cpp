#include "unit/merge/MergeScene.h"

#include <QTest>

#include <qpdf/QPDFAcroFormDocumentHelper.hh>

using namespace Quorlin;

namespace {

/// A text field, unless the entries say otherwise, with one widget on page 1.
QPDFObjectHandle addField(PdfMaker &maker, const std::string &name, const std::string &entries)
{
    auto field = maker.object("<</Type /Annot /Subtype /Widget /P @1 /Rect [0 0 50 10] /T (" +
                              name + ") " + entries + ">>");
    if (!field.hasKey("/FT"))
        field.replaceKey("/FT", QPDFObjectHandle::newName("/Tx"));
    auto page = maker.page(1);
    if (!page.hasKey("/Annots"))
        page.replaceKey("/Annots", QPDFObjectHandle::newArray());
    page.getKey("/Annots").appendItem(field);
    if (!maker.root().hasKey("/AcroForm"))
        maker.set("/AcroForm", "<</Fields []>>");
    maker.root().getKey("/AcroForm").getKey("/Fields").appendItem(field);
    return field;
}

} // namespace

class TestMergeForms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsOfAllDocumentsAreKept();
    void equalFieldNamesAreKeptApart();
    void childFieldsKeepTheirParents();
    void defaultAppearancesAreKept();
    void differentFontsOfOneNameAreKeptApart();
    void signatureFieldsLoseTheirSignature();
    void documentsWithoutFieldsMakeNoForm();
    void fieldLoopsEnd();
};

void TestMergeForms::fieldsOfAllDocumentsAreKept()
{
    PdfMaker a("a", 1), b("b", 1), c("c", 1);
    addField(a, "first", "/V (one)");
    addField(c, "second", "/V (two)");
    c.root().getKey("/AcroForm").replaceKey("/NeedAppearances", QPDFObjectHandle::newBool(true));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    scene.add(c, QStringLiteral("c"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QPDFAcroFormDocumentHelper form(scene.result());
    QCOMPARE(form.getFormFields().size(), size_t(2));
    QVERIFY(form.getNeedAppearances());
    auto field = form.getFieldForAnnotation(QPDFAnnotationObjectHelper(scene.annotation(3, 1)));
    QCOMPARE(field.getFullyQualifiedName(), std::string("second"));
    QCOMPARE(field.getValueAsString(), std::string("two"));
    QVERIFY(scene.annotation(3, 1).getKey("/P").getObjGen() == scene.page(3).getObjGen());
}

void TestMergeForms::equalFieldNamesAreKeptApart()
{
    PdfMaker a("a", 1), b("b", 1);
    addField(a, "name", "/V (Ann)");
    addField(b, "name", "/V (Bob)");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.annotation(1, 1).getKey("/T").getUTF8Value(), std::string("name"));
    QVERIFY(scene.annotation(2, 1).getKey("/T").getUTF8Value() != "name");
    QCOMPARE(scene.annotation(2, 1).getKey("/V").getUTF8Value(), std::string("Bob"));
}

void TestMergeForms::childFieldsKeepTheirParents()
{
    PdfMaker a("a", 1);
    auto child = a.object("<</Type /Annot /Subtype /Widget /FT /Tx /T (street) /Rect [0 0 9 9]>>");
    auto parent = a.object("<</T (address) /Kids [" + child.unparse() + "]>>");
    child.replaceKey("/Parent", parent);
    a.page(1).replaceKey("/Annots", a.parse("[" + child.unparse() + "]"));
    a.set("/AcroForm", "<</Fields [" + parent.unparse() + "]>>");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QPDFAcroFormDocumentHelper form(scene.result());
    auto field = form.getFieldForAnnotation(QPDFAnnotationObjectHelper(scene.annotation(1, 1)));
    QCOMPARE(field.getFullyQualifiedName(), std::string("address.street"));
}

void TestMergeForms::defaultAppearancesAreKept()
{
    PdfMaker a("a", 1), b("b", 1);
    addField(a, "one", "");
    addField(b, "two", "");
    a.root().getKey("/AcroForm").replaceKey("/DA", QPDFObjectHandle::newString("/F 8 Tf"));
    b.root().getKey("/AcroForm").replaceKey("/DA", QPDFObjectHandle::newString("/F 9 Tf"));
    b.root().getKey("/AcroForm").replaceKey("/Q", QPDFObjectHandle::newInteger(2));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    scene.add(b, QStringLiteral("b"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.annotation(1, 1).getKey("/DA").getStringValue(), std::string("/F 8 Tf"));
    QCOMPARE(scene.annotation(2, 1).getKey("/DA").getStringValue(), std::string("/F 9 Tf"));
    QCOMPARE(scene.annotation(2, 1).getKey("/Q").getIntValue(), 2);
}

void TestMergeForms::differentFontsOfOneNameAreKeptApart()
{
    MergeScene scene;
    for (const auto *font : {"Helvetica", "Courier", "Courier"}) {
        PdfMaker maker(font, 1);
        addField(maker, "one", "/DA (0 g /Fn 12 Tf)");
        auto object =
            maker.object(std::string("<</Type /Font /Subtype /Type1 /BaseFont /") + font + ">>");
        maker.root()
            .getKey("/AcroForm")
            .replaceKey("/DR", maker.parse("<</Font <</Fn " + object.unparse() + ">>>>"));
        scene.add(maker, QString::fromLatin1(font));
    }
    QCOMPARE(scene.merge().reason, Reason::None);
    auto fonts = scene.root().getKey("/AcroForm").getKey("/DR").getKey("/Font");
    QCOMPARE(fonts.getKeys().size(), size_t(2));
    const auto appearance = scene.annotation(2, 1).getKey("/DA").getStringValue();
    const auto name = appearance.substr(4, appearance.find(' ', 4) - 4);
    QVERIFY(name != "/Fn");
    QCOMPARE(fonts.getKey(name).getKey("/BaseFont").getName(), std::string("/Courier"));
    QCOMPARE(fonts.getKey("/Fn").getKey("/BaseFont").getName(), std::string("/Helvetica"));
}

void TestMergeForms::signatureFieldsLoseTheirSignature()
{
    PdfMaker a("a", 1);
    addField(a, "sig", "/FT /Sig /V <</Type /Sig /ByteRange [0 1 2 3]>>");
    a.root().getKey("/AcroForm").replaceKey("/SigFlags", QPDFObjectHandle::newInteger(3));
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QVERIFY(scene.annotation(1, 1).getKey("/FT").isNameAndEquals("/Sig"));
    QVERIFY(!scene.annotation(1, 1).hasKey("/V"));
    QVERIFY(!scene.root().getKey("/AcroForm").hasKey("/SigFlags"));
}

void TestMergeForms::documentsWithoutFieldsMakeNoForm()
{
    PdfMaker a("a", 1);
    a.set("/AcroForm", "<</Fields []>>");
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QVERIFY(!scene.root().hasKey("/AcroForm"));
}

void TestMergeForms::fieldLoopsEnd()
{
    PdfMaker a("a", 1);
    auto field = addField(a, "loop", "");
    field.replaceKey("/Kids", a.parse("[" + field.unparse() + "]"));
    field.replaceKey("/Parent", field);
    MergeScene scene;
    scene.add(a, QStringLiteral("a"));
    QCOMPARE(scene.merge().reason, Reason::None);
    QCOMPARE(scene.pageNames(), QStringLiteral("a1"));
}

QTEST_GUILESS_MAIN(TestMergeForms)
#include "tst_merge_forms.moc"
