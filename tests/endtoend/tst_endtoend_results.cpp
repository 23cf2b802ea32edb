#include "endtoend/ConvertScene.h"
#include "endtoend/PdfFacts.h"
#include "endtoend/TestDocuments.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Quorlin;

/// What comes out of documents that are in order.
class tst_endtoend_results : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ConvertScene>(); }
    void cleanup();
    void examplesBecomeWholePdfs();
    void allScriptsCanBeSearched();
    void linksAndBookmarksAreKept();
    void transparencyIsKept();
    void mergedDocumentsHaveOneBookmarkEach();
    void fontsWithoutALineEndArePrinted();
    void webPagesKeepTheirFirstParagraph_data();
    void webPagesKeepTheirFirstParagraph();
    void betterQualityMakesLargerFiles();
    void lowQualityKeepsPicturesSmall();

private:
    QStringList copyExamples();
    qint64 sizeAt(const QString &quality);

    std::unique_ptr<ConvertScene> m_scene;
};

void tst_endtoend_results::cleanup()
{
    QCOMPARE(m_scene->leftovers(), QString());
    m_scene.reset();
}

QStringList tst_endtoend_results::copyExamples()
{
    auto names = namesIn(QStringLiteral(QUORLIN_SOURCE_DIR "/examples"));
    for (const auto &name : names)
        m_scene->copyExample(name);
    return names;
}

void tst_endtoend_results::examplesBecomeWholePdfs()
{
    const auto names = copyExamples();
    QVERIFY(names.size() > 3);
    const auto outcome = m_scene->convert(names);
    const QRegularExpression said(
        QStringLiteral("^Printing documents \\.\\.\\.\nConverting documents \\.\\.\\.\n"
                       "%1 documents converted; [0-9.]+ [KM]iB in [0-9.]+ s\n$")
            .arg(names.size()));
    QVERIFY2(said.match(outcome.errors).hasMatch(), qPrintable(outcome.errors));
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.results(), QStringList(names.size(), QStringLiteral("converted")));
    for (int position = 0; position < names.size(); ++position) {
        const PdfFacts pdf(outcome.pdf(position));
        const bool isPicture = names.at(position).endsWith(QLatin1String(".png"));
        QVERIFY2(pdf.opens(), qPrintable(names.at(position)));
        QVERIFY2(pdf.pages() > 0, qPrintable(names.at(position)));
        QVERIFY2(isPicture || pdf.hasAllFontsEmbedded(), qPrintable(names.at(position)));
    }
}

void tst_endtoend_results::allScriptsCanBeSearched()
{
    m_scene->copyExample(QStringLiteral("Grüße aus Thistlemere.odt"));
    const auto outcome = m_scene->convert({QStringLiteral("Grüße aus Thistlemere.odt")});
    QCOMPARE(outcome.exitCode, 0);
    const auto text = PdfFacts(outcome.pdf()).text();
    for (const auto *word : {"Gießkannen", "taillées", "jabłonie", "Αγαπητοί", "γλάστρα", "Дорогі",
                             "хвіртку", "khu vườn đã ngủ", "חברים", "באביב", "الحديقة", "الغروب"})
        QVERIFY2(text.contains(QString::fromUtf8(word)), word);
}

void tst_endtoend_results::linksAndBookmarksAreKept()
{
    m_scene->copyExample(QStringLiteral("Thistlemere Handbook.docx"));
    const auto outcome = m_scene->convert({QStringLiteral("Thistlemere Handbook.docx")});
    const PdfFacts pdf(outcome.pdf());
    QCOMPARE(pdf.title(), QStringLiteral("Thistlemere Handbook"));
    QCOMPARE(pdf.bookmarks().value(0), QStringLiteral("The garden"));
    QCOMPARE(pdf.bookmarkPages().value(0), 3);
    QVERIFY(pdf.bookmarkCount() > pdf.bookmarks().size());
    QVERIFY(pdf.addresses().contains(QStringLiteral("mailto:desk@example.org")));
    QVERIFY(pdf.innerLinks() >= 10);
}

void tst_endtoend_results::transparencyIsKept()
{
    m_scene->copyExample(QStringLiteral("Spring Fair.pptx"));
    const auto outcome = m_scene->convert({QStringLiteral("Spring Fair.pptx")});
    const PdfFacts pdf(outcome.pdf());
    QVERIFY(pdf.isTransparent());
    QVERIFY(pdf.text().contains(QStringLiteral("Nineteen fruit trees")));
}

void tst_endtoend_results::mergedDocumentsHaveOneBookmarkEach()
{
    const auto names = copyExamples();
    const auto outcome =
        m_scene->convert(QStringList{QStringLiteral("--merge"), QStringLiteral("all.pdf")} + names);
    QCOMPARE(outcome.exitCode, 0);
    const PdfFacts pdf(m_scene->path(QStringLiteral("all.pdf")));
    QVERIFY(pdf.opens());
    const auto bookmarks = pdf.bookmarks();
    QCOMPARE(bookmarks.size(), names.size());
    for (int position = 0; position < names.size(); ++position)
        QVERIFY2(bookmarks.at(position).startsWith(QFileInfo(names.at(position)).baseName()),
                 qPrintable(bookmarks.at(position)));
    auto pages = pdf.bookmarkPages();
    QCOMPARE(pages.first(), 1);
    QVERIFY(std::ranges::adjacent_find(pages, std::greater_equal<>()) == pages.end());
    QVERIFY(pdf.bookmarkCount() > names.size());
}

void tst_endtoend_results::fontsWithoutALineEndArePrinted()
{
    m_scene->write(QStringLiteral("old.fodt"),
                   TestDocuments::inFont("Nimbus Roman", "Set in an old face"));
    const auto outcome = m_scene->convert({QStringLiteral("old.fodt")});
    QCOMPARE(outcome.results(), QStringList(QStringLiteral("converted")));
    QVERIFY(PdfFacts(outcome.pdf()).text().contains(QStringLiteral("Set in an old face")));
}

void tst_endtoend_results::webPagesKeepTheirFirstParagraph_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("page") << "a.html";
    QTest::newRow("strict page") << "a.xhtml";
    QTest::newRow("page that is called a document") << "a.doc";
}

void tst_endtoend_results::webPagesKeepTheirFirstParagraph()
{
    QFETCH(QString, name);
    m_scene->write(name, TestDocuments::page("only words"));
    const auto outcome = m_scene->convert({name});
    QCOMPARE(outcome.exitCode, 0);
    QEXPECT_FAIL("", "The engine leaves the first paragraph of a short page out.", Continue);
    QCOMPARE(PdfFacts(outcome.pdf()).text().trimmed(), QStringLiteral("only words"));
}

qint64 tst_endtoend_results::sizeAt(const QString &quality)
{
    const auto outcome =
        m_scene->convert({QStringLiteral("-q"), quality, QStringLiteral("-o"),
                          m_scene->path(quality), QStringLiteral("photographs.fodt")});
    return outcome.exitCode == 0 ? QFileInfo(outcome.pdf()).size() : -1;
}

void tst_endtoend_results::betterQualityMakesLargerFiles()
{
    m_scene->write(QStringLiteral("photographs.fodt"), TestDocuments::photographs());
    const auto low = sizeAt(QStringLiteral("Low"));
    const auto medium = sizeAt(QStringLiteral("Medium"));
    const auto high = sizeAt(QStringLiteral("High"));
    QVERIFY2(low > 0 && low < medium && medium < high,
             qPrintable(QStringLiteral("%1 %2 %3").arg(low).arg(medium).arg(high)));
}

void tst_endtoend_results::lowQualityKeepsPicturesSmall()
{
    m_scene->write(QStringLiteral("photographs.fodt"), TestDocuments::photographs());
    const auto outcome = m_scene->convert(
        {QStringLiteral("-q"), QStringLiteral("Low"), QStringLiteral("photographs.fodt")});
    const auto pictures = PdfFacts(outcome.pdf()).pictures();
    QCOMPARE(pictures.size(), 2);
    for (const auto &picture : pictures)
        QVERIFY2(picture.density <= 96, qPrintable(QString::number(picture.density)));
}

QTEST_GUILESS_MAIN(tst_endtoend_results)
#include "tst_endtoend_results.moc"
