#include "unit/postscript/PdfBuilder.h"
#include "unit/postscript/PrintScene.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

using namespace Quorlin;

namespace {

QByteArray onePage(const QByteArray &content = {}, const QByteArray &resources = {})
{
    PdfDocument document;
    document.addPage(content, resources);
    return document.file();
}

/// The document, encrypted with these passwords.
QByteArray encrypted(const TestFolder &folder, const char *user, bool mayPrint)
{
    folder.write("plain.pdf", onePage("BT /F1 20 Tf 20 100 Td (secret) Tj ET"));
    QPDF pdf;
    const auto plain = folder.path("plain.pdf").toLocal8Bit();
    const auto locked = folder.path("locked.pdf").toLocal8Bit();
    pdf.processFile(plain.constData());
    QPDFWriter writer(pdf, locked.constData());
    writer.setR6EncryptionParameters(user, "owner", true, true, true, true, true, true,
                                     mayPrint ? qpdf_r3p_full : qpdf_r3p_none, true);
    writer.write();
    return contentOf(folder.path("locked.pdf"));
}

} // namespace

class TestPrintHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void badFilesGiveTheirReason_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("reason");
        QTest::newRow("garbage") << QByteArray("\x01\x02garbage").repeated(1000)
                                 << QStringLiteral("damaged");
        QTest::newRow("empty") << QByteArray() << QStringLiteral("damaged");
        QTest::newRow("head only") << onePage().left(60) << QStringLiteral("damaged");
        PdfDocument none;
        QTest::newRow("no pages") << none.file() << QStringLiteral("nothing-printed");
        const TestFolder folder;
        QTest::newRow("password") << encrypted(folder, "user", true) << QStringLiteral("protected");
        QTest::newRow("no printing")
            << encrypted(folder, "", false) << QStringLiteral("not-printable");
    }

    void badFilesGiveTheirReason()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, reason);
        PrintScene scene;
        QCOMPARE(reasonKey(scene.print(bytes).reason), reason);
        QVERIFY(!QFileInfo::exists(scene.request.output));
    }

    void permissionsCountForForeignFilesOnly()
    {
        PrintScene scene;
        const auto bytes = encrypted(scene.folder(), "", false);
        scene.request.foreign = false;
        QVERIFY(scene.run(bytes));
        QCOMPARE(scene.words(), QStringList(QStringLiteral("secret")));
    }

    void aFileThatMayBePrintedIsPrinted()
    {
        PrintScene scene;
        QVERIFY(scene.run(encrypted(scene.folder(), "", true)));
        QCOMPARE(scene.words(), QStringList(QStringLiteral("secret")));
    }

    void aMissingFileIsNotFound()
    {
        PrintScene scene;
        scene.request.input = scene.folder().path("nowhere.pdf");
        QCOMPARE(reasonKey(PdfPrinter().run(scene.request, [](int) {}).reason),
                 QStringLiteral("not-found"));
    }

    void aTruncatedFileFailsOrPrintsButNeverHangs()
    {
        const auto whole = onePage("BT /F1 20 Tf 20 100 Td (words) Tj ET");
        for (int part = 1; part < 8; ++part) {
            PrintScene scene;
            const auto outcome = scene.print(whole.left(whole.size() * part / 8));
            QCOMPARE(QFileInfo::exists(scene.request.output), outcome.reason == Reason::None);
        }
    }

    void textsOfTheDocumentAreNoPrograms()
    {
        const QByteArray attack = ") } >> ] end (pwned) == quit %%EOF\n(";
        const auto hex = '<' + attack.toHex() + '>';
        PdfDocument document;
        const int page = document.addPage(
            {}, {},
            "/MediaBox [0 0 300 200] /Annots [<< /Subtype /Link /Rect [0 0 9 9] /A << /S /URI "
            "/URI " +
                hex + " >> >> << /Subtype /Link /Rect [0 0 9 9] /Dest " + hex + " >>]");
        const int outlines = document.builder().next();
        document.builder().add("<< /First " + PdfBuilder::ref(outlines + 1) + " /Last " +
                               PdfBuilder::ref(outlines + 1) + " >>");
        document.builder().add("<< /Title " + hex + " /Dest " + hex + " >>");
        PrintScene scene;
        scene.request.title = QString::fromLatin1(attack);
        scene.request.printer = QStringLiteral("x\n(pwned) ==");
        const auto names =
            "/Names << /Dests << /Names [" + hex + " [" + PdfBuilder::ref(page) + " /Fit]] >> >> ";
        QVERIFY(scene.run(
            document.file(names + "/PageMode /Use#20x#29 /PageLabels << /Nums [0 << /P " + hex +
                              " /S /D#2f >>] >> /Outlines " + PdfBuilder::ref(outlines),
                          "/Info << /Title " + hex + " /Author " + hex + " >>")));
        auto info = scene.result().getTrailer().getKey("/Info");
        QCOMPARE(info.getKey("/Author").getUTF8Value(), attack.toStdString());
    }

    void programsInsideAForeignFileAreNotCopied()
    {
        PdfDocument document;
        const int program =
            document.builder().addStream("/Type /XObject /Subtype /PS", "(pwned) == flush");
        const int hidden =
            document.builder().addStream("/Type /XObject /Subtype /P#53", "(pwned) == flush");
        document.addPage("/P Do /H Do BT /F1 20 Tf 20 100 Td (words) Tj ET",
                         "/XObject << /P " + PdfBuilder::ref(program) + " /H " +
                             PdfBuilder::ref(hidden) + " >>");
        PrintScene scene;
        QVERIFY(scene.run(document.file()));
        QVERIFY(!scene.postScript().contains("pwned"));
        QCOMPARE(scene.words(), QStringList(QStringLiteral("words")));
    }

    void loopsAndDepthEnd()
    {
        PdfDocument document;
        auto &builder = document.builder();
        const int form = builder.next();
        builder.addStream(
            "/Type /XObject /Subtype /Form /BBox [0 0 9 9] /Group << /S /Transparency >> "
            "/Resources << /ExtGState << /A << /ca .5 >> >> /XObject << /X " +
                PdfBuilder::ref(form) + " >> >>",
            "/A gs /X Do");
        const int outlines = builder.next();
        builder.add("<< /First " + PdfBuilder::ref(outlines + 1) + " >>");
        builder.add("<< /Title (a) /First " + PdfBuilder::ref(outlines + 1) + " /Next " +
                    PdfBuilder::ref(outlines + 1) + " >>");
        const int tree = builder.next();
        builder.add("<< /Kids [" + PdfBuilder::ref(tree) + "] >>");
        document.addPage("/X Do BT /F1 20 Tf 20 100 Td (words) Tj ET",
                         "/XObject << /X " + PdfBuilder::ref(form) + " >>");
        PrintScene scene;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(scene.run(document.file("/Outlines " + PdfBuilder::ref(outlines) +
                                        " /Names << /Dests " + PdfBuilder::ref(tree) +
                                        " >> /PageLabels " + PdfBuilder::ref(tree))));
        QVERIFY(timer.elapsed() < 20000);
        QCOMPARE(scene.words(), QStringList(QStringLiteral("words")));
    }

    void faultyEntriesAreSteppedOver()
    {
        PdfDocument document;
        document.addPage(
            "/A gs /S sh /I Do /F Do BT /F1 20 Tf 20 100 Td (words) Tj ET",
            "/ExtGState << /A << /ca (x) /BM 7 /SMask << /G 9 /S [] >> >> /B 3 >> /Shading "
            "<< /S << /ShadingType 2 /ColorSpace [/ICCBased] /Coords [1] >> >> /XObject << "
            "/I 12 /F null >> /Pattern [] /Properties << /P 1 >>",
            "/MediaBox [0 0 (a) 9] /CropBox [5 5 5 5] /Rotate 45 /Annots [1 (x) << /Subtype "
            "/Link /Rect [1] /Dest [99 0 R] >> << /Subtype /Link /A [] /Rect [0 0 1 1] >>]");
        PrintScene scene;
        QVERIFY(scene.run(document.file(
            "/Outlines 7 /Names [] /Dests 3 /PageLabels (x) /OpenAction 8", "/Info [1]")));
        QCOMPARE(scene.words(), QStringList(QStringLiteral("words")));
        QCOMPARE(scene.page(1).getKey("/MediaBox").getArrayAsRectangle().urx, 612.0);
    }

    void aMissingProgramIsNamed()
    {
        PrintScene scene;
        const auto outcome = scene.print(onePage(), PdfToPs(QStringLiteral("/nowhere/pdftops")));
        QCOMPARE(reasonKey(outcome.reason), QStringLiteral("program-missing"));
        QVERIFY(outcome.text.contains(QStringLiteral("pdftops")));
        QCOMPARE(scene.folder().names(), QStringList(QStringLiteral("source.pdf")));
    }

    void aProgramThatFailsIsToldOf_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("reason");
        QTest::newRow("dies") << QByteArray("kill -9 $$") << QStringLiteral("engine-failed");
        QTest::newRow("cannot open") << QByteArray("exit 1") << QStringLiteral("damaged");
        QTest::newRow("fails") << QByteArray("exit 99") << QStringLiteral("engine-failed");
        QTest::newRow("writes nothing") << QByteArray("exit 0") << QStringLiteral("damaged");
        QTest::newRow("writes garbage")
            << QByteArray("yes | head -c 1000000") << QStringLiteral("damaged");
    }

    void aProgramThatFailsIsToldOf()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, reason);
        PrintScene scene;
        const auto tool = scene.folder().write("tool", "#!/bin/sh\n" + script + "\n");
        QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner);
        QCOMPARE(reasonKey(scene.print(onePage(), PdfToPs(tool)).reason), reason);
        QVERIFY(!QFileInfo::exists(scene.request.output));
    }

    void anOutputThatCannotBeWrittenIsToldOf()
    {
        PrintScene scene;
        scene.request.output = scene.folder().path("no/such/folder.ps");
        QCOMPARE(reasonKey(scene.print(onePage()).reason), QStringLiteral("not-allowed"));
    }

    void aFullDeviceIsToldOfAndLeftInPlace()
    {
        // Through a link, so that even a wrong removal could only take the link.
        PrintScene scene;
        QVERIFY(QFile::link(QStringLiteral("/dev/full"), scene.folder().path("full.ps")));
        scene.request.output = scene.folder().path("full.ps");
        QCOMPARE(reasonKey(scene.print(onePage()).reason), QStringLiteral("no-room"));
        QVERIFY(QFileInfo(scene.request.output).isSymLink());
    }
};

QTEST_GUILESS_MAIN(TestPrintHostile)
#include "tst_print_hostile.moc"
