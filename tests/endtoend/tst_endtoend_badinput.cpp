#include "component/protocol/Reason.h"
#include "endtoend/ConvertScene.h"
#include "endtoend/PdfFacts.h"
#include "endtoend/TestDocuments.h"
#include "support/SystemActions.h"
#include "unit/office/PackageMaker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace Quorlin;

/// Input that is no document, or not the document that its name promises. Each one stands in a
/// list between two good documents, which must not suffer.
class tst_endtoend_badinput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ConvertScene>(); }
    void cleanup();
    void whatIsNoDocumentIsRefused();
    void whatIsDamagedIsReported_data();
    void whatIsDamagedIsReported();
    void protectedDocumentsAreReported();
    void everyFailureSaysWhatToDo();
    void nothingToConvertIsAnError();
    void unusualNamesAreTaken();
    void aNameLikeAnOptionIsTakenAfterTwoDashes();
    void aDocumentThatVanishesIsReported();
    void programsInDocumentsReachNoFiles();

private:
    Outcome convertBetweenGoodOnes(const QStringList &names);
    void makePdfProtected(const QString &name);

    std::unique_ptr<ConvertScene> m_scene;
};

namespace {

const QString Converted = QStringLiteral("converted");

QStringList betweenConverted(const QStringList &reasons)
{
    return QStringList(Converted) + reasons + QStringList(Converted);
}

} // namespace

void tst_endtoend_badinput::cleanup()
{
    QCOMPARE(m_scene->leftovers(), QString());
    m_scene.reset();
}

Outcome tst_endtoend_badinput::convertBetweenGoodOnes(const QStringList &names)
{
    m_scene->write(QStringLiteral("first.fodt"), TestDocuments::letter("first"));
    m_scene->write(QStringLiteral("last.pdf"), TestDocuments::pdf("last"));
    return m_scene->convert(QStringList{QStringLiteral("-o"), m_scene->path(QStringLiteral("out")),
                                        QStringLiteral("first.fodt")} +
                            names + QStringList{QStringLiteral("last.pdf")});
}

void tst_endtoend_badinput::whatIsNoDocumentIsRefused()
{
    m_scene->write(QStringLiteral("empty.docx"), {});
    m_scene->write(QStringLiteral("program.exe"), "MZ");
    m_scene->write(QStringLiteral("text.ps"), "This is no program.\n");
    QVERIFY(SystemActions::makeFifo(m_scene->path(QStringLiteral("pipe.txt"))));
    QVERIFY(QFile::link(SystemActions::nullDevice(), m_scene->path(QStringLiteral("device.txt"))));
    QVERIFY(QFile::link(QStringLiteral("nowhere"), m_scene->path(QStringLiteral("link.txt"))));
    for (const auto *name : {"pipe.txt", "device.txt", "link.txt"})
        m_scene->mayChange(QString::fromLatin1(name));
    const QStringList names{QStringLiteral("empty.docx"), QStringLiteral("program.exe"),
                            QStringLiteral("text.ps"),    QStringLiteral("pipe.txt"),
                            QStringLiteral("device.txt"), QStringLiteral("link.txt"),
                            QStringLiteral("absent.odt"), SystemActions::nullDevice()};
    const QStringList reasons{QStringLiteral("empty"),          QStringLiteral("unknown-format"),
                              QStringLiteral("not-postscript"), QStringLiteral("not-regular"),
                              QStringLiteral("not-regular"),    QStringLiteral("not-found"),
                              QStringLiteral("not-found"),      QStringLiteral("not-regular")};
    const auto outcome = convertBetweenGoodOnes(names);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.results(), betweenConverted(reasons));
    for (const auto &name : names)
        QVERIFY2(outcome.errors.contains(QStringLiteral("quorlin-convert: ") + name +
                                         QStringLiteral(": ")),
                 qPrintable(name));
}

void tst_endtoend_badinput::whatIsDamagedIsReported_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    const auto docx =
        contentOf(QStringLiteral(QUORLIN_SOURCE_DIR "/examples/Thistlemere Handbook.docx"));
    const auto pdf = TestDocuments::pdf("text");
    const auto row = [](const char *what, const char *name, const QByteArray &content) {
        QTest::newRow(what) << QString::fromLatin1(name) << content;
    };
    row("the first half of a package", "half.docx", docx.left(docx.size() / 2));
    row("a picture that is called a document", "picture.odt", TestDocuments::photograph(20, 20));
    row("a document that is called a picture", "document.png", docx);
    row("a document that is called a PDF", "document.pdf", docx);
    row("noise that is called a PDF", "noise.pdf", QByteArray("\x01\x02%\xff\n").repeated(999));
    row("a PDF's beginning alone", "begun.pdf", "%PDF-1.7\n");
    row("a PDF without its objects", "end.pdf", pdf.right(pdf.size() / 3));
    row("noise that is called a document", "noise.doc",
        QByteArray("\x01\x00\x07", 3).repeated(999));
    row("a faulty program", "faulty.ps", "%!PS\n1 0 div showpage\n");
    row("a program that ends in the middle", "half.ps", "%!PS\n{ 1 2 add (never closed\n");
}

void tst_endtoend_badinput::whatIsDamagedIsReported()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    m_scene->write(name, content);
    const auto outcome = convertBetweenGoodOnes({name});
    QCOMPARE(outcome.results(), betweenConverted({QStringLiteral("damaged")}));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.errors.contains(QStringLiteral("quorlin-convert: ") + name));
    QVERIFY(outcome.document(1).value(QLatin1String("output")).isNull());
}

void tst_endtoend_badinput::makePdfProtected(const QString &name)
{
    const auto open = m_scene->write(QStringLiteral("open.pdf"), TestDocuments::pdf("secret"));
    m_scene->mayChange(name);
    QCOMPARE(QProcess::execute(QStringLiteral("qpdf"),
                               {QStringLiteral("--encrypt"), QStringLiteral("user"),
                                QStringLiteral("owner"), QStringLiteral("256"),
                                QStringLiteral("--"), open, m_scene->path(name)}),
             0);
}

void tst_endtoend_badinput::protectedDocumentsAreReported()
{
    m_scene->write(QStringLiteral("locked.docx"), PackageMaker::encryptedCompound());
    m_scene->write(QStringLiteral("locked.xlsx"), PackageMaker::encryptedCompound());
    m_scene->write(QStringLiteral("locked.odt"), PackageMaker::encryptedDocument());
    makePdfProtected(QStringLiteral("locked.pdf"));
    const auto outcome =
        convertBetweenGoodOnes({QStringLiteral("locked.docx"), QStringLiteral("locked.xlsx"),
                                QStringLiteral("locked.odt"), QStringLiteral("locked.pdf")});
    QCOMPARE(outcome.results(), betweenConverted(QStringList(4, QStringLiteral("protected"))));
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.errors.contains(
        QStringLiteral("locked.pdf: the document is protected by a password")));
}

/// On the screen once for each kind, in the report with each document.
void tst_endtoend_badinput::everyFailureSaysWhatToDo()
{
    m_scene->write(QStringLiteral("one.docx"), PackageMaker::encryptedCompound());
    m_scene->write(QStringLiteral("two.docx"), PackageMaker::encryptedCompound());
    m_scene->write(QStringLiteral("faulty.ps"), "%!PS\n1 0 div showpage\n");
    m_scene->write(QStringLiteral("text.ps"), "This is no program.\n");
    const auto outcome =
        convertBetweenGoodOnes({QStringLiteral("one.docx"), QStringLiteral("two.docx"),
                                QStringLiteral("faulty.ps"), QStringLiteral("text.ps")});
    const QList<Reason> reasons{Reason::Protected, Reason::Protected, Reason::Damaged,
                                Reason::NotPostScript};
    for (qsizetype position = 0; position < reasons.size(); ++position) {
        const auto reason = reasons.at(position);
        const auto entry = outcome.document(position + 1);
        QCOMPARE(entry.value(QLatin1String("reason")).toString(), reasonKey(reason));
        QCOMPARE(entry.value(QLatin1String("code")).toInt(), static_cast<int>(reason));
        QCOMPARE(entry.value(QLatin1String("text")).toString(), reasonText(reason));
        QCOMPARE(entry.value(QLatin1String("advice")).toString(), reasonAdvice(reason));
        QCOMPARE(outcome.errors.count(reasonAdvice(reason)), 1);
    }
    const auto detail = outcome.document(3).value(QLatin1String("detail")).toString();
    QCOMPARE(detail, QStringLiteral("the PostScript is faulty (undefinedresult)"));
    QVERIFY(outcome.errors.contains(
        QStringLiteral("faulty.ps: %1 (%2)").arg(reasonText(Reason::Damaged), detail)));
}

void tst_endtoend_badinput::nothingToConvertIsAnError()
{
    QDir().mkpath(m_scene->path(QStringLiteral("folder")));
    const auto outcome = m_scene->convert({QStringLiteral("folder")});
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.errors.contains(QStringLiteral("no documents in this folder")));
}

void tst_endtoend_badinput::unusualNamesAreTaken()
{
    // The longest name that file systems take, less what stands behind it meanwhile.
    const QStringList bases{QStringLiteral("two  words, and a comma"),
                            QStringLiteral("quo\"te's `and` $more"),
                            QStringLiteral("line\nfeed"),
                            QStringLiteral("back\\slash %41 #hash ?"),
                            QStringLiteral("(brackets) [and] {braces} <more>"),
                            QStringLiteral("Привіт 世界 😀 ﬁn"),
                            QStringLiteral("tab\tand\x01"
                                           "bell"),
                            QString(245, QLatin1Char('x')),
                            QStringLiteral(".hidden")};
    QStringList names;
    for (const auto &base : bases)
        names += {base + QStringLiteral(".fodt"), base + QStringLiteral(".ps")};
    for (const auto &name : names)
        m_scene->write(name, name.endsWith(QLatin1String(".ps"))
                                 ? TestDocuments::postScript("words")
                                 : TestDocuments::letter("words"));
    const auto outcome = m_scene->convert(names);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QCOMPARE(outcome.results(), QStringList(names.size(), Converted));
    for (qsizetype position = 0; position < names.size(); ++position)
        QVERIFY2(PdfFacts(outcome.pdf(position)).text().contains(QLatin1String("words")),
                 qPrintable(names.at(position)));
}

void tst_endtoend_badinput::aNameLikeAnOptionIsTakenAfterTwoDashes()
{
    m_scene->write(QStringLiteral("--quality.fodt"), TestDocuments::letter("words"));
    const auto outcome = m_scene->convert({QStringLiteral("--"), QStringLiteral("--quality.fodt")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.pdf(), m_scene->path(QStringLiteral("--quality.pdf")));
}

void tst_endtoend_badinput::aDocumentThatVanishesIsReported()
{
    // More than may be under way at once stand before it.
    QStringList names;
    constexpr int Before = 40;
    for (int number = 0; number < Before; ++number) {
        names += QStringLiteral("%1.fodt").arg(number);
        m_scene->write(names.last(), TestDocuments::letter("words"));
    }
    const auto vanishing = QStringLiteral("vanishing.fodt");
    const auto path = m_scene->write(vanishing, TestDocuments::letter("gone"));
    m_scene->mayChange(vanishing);
    m_scene->start(names + QStringList{vanishing});
    QVERIFY(m_scene->processOf(QStringLiteral("soffice.bin")) != 0);
    QVERIFY(QFile::remove(path));
    const auto outcome = m_scene->finish();
    QCOMPARE(outcome.results(), QStringList(Before, Converted) << QStringLiteral("not-found"));
    QCOMPARE(outcome.exitCode, 1);
}

void tst_endtoend_badinput::programsInDocumentsReachNoFiles()
{
    const auto secret = m_scene->write(QStringLiteral("secret.txt"), "secret\n");
    const auto target = m_scene->path(QStringLiteral("made-by-a-program"));
    m_scene->write(QStringLiteral("write.ps"),
                   "%!PS\n(" + QFile::encodeName(target) + ") (w) file closefile showpage\n");
    m_scene->write(QStringLiteral("read.ps"),
                   "%!PS\n(" + QFile::encodeName(secret) + ") (r) file closefile showpage\n");
    m_scene->write(QStringLiteral("delete.ps"),
                   "%!PS\n(" + QFile::encodeName(secret) + ") deletefile showpage\n");
    const auto outcome = convertBetweenGoodOnes(
        {QStringLiteral("write.ps"), QStringLiteral("read.ps"), QStringLiteral("delete.ps")});
    QCOMPARE(outcome.results(), betweenConverted(QStringList(3, QStringLiteral("damaged"))));
    QVERIFY(!QFileInfo::exists(target));
}

QTEST_GUILESS_MAIN(tst_endtoend_badinput)
#include "tst_endtoend_badinput.moc"
