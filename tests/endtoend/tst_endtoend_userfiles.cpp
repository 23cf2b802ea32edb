#include "endtoend/ConvertScene.h"
#include "endtoend/PdfFacts.h"
#include "endtoend/TestDocuments.h"
#include "support/SystemActions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace Quorlin;

/// The files of the user stay as they are; that they do is looked at after every test.
class tst_endtoend_userfiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ConvertScene>(); }
    void cleanup();
    void filesWithTheNamesOfTemporaryOnesAreKept();
    void anEarlierResultIsReplacedAtTheEnd();
    void anEarlierResultIsKeptWhenTheConversionFails();
    void resultsNeverOverwriteDocuments();
    void aSecondRunOverAFolderMakesNoNewFile();
    void anOriginalWithTheNameOfAResultIsNotReplaced();
    void aFolderThatCannotBeWrittenIsLeftForTheDocumentsFolder();
    void twoRunsOverOneFolderDoNotDisturbEachOther();

private:
    std::unique_ptr<SmallDisk> m_disk;
    std::unique_ptr<ConvertScene> m_scene;
};

void tst_endtoend_userfiles::cleanup()
{
    QCOMPARE(m_scene->leftovers(), QString());
    m_disk.reset();
    m_scene.reset();
}

void tst_endtoend_userfiles::filesWithTheNamesOfTemporaryOnesAreKept()
{
    m_scene->write(QStringLiteral("report.fodt"), TestDocuments::letter("report"));
    m_scene->write(QStringLiteral("other.fodt"), TestDocuments::letter("other"));
    for (const auto *name : {"report.ps~", "report.pdf~", "report.ps2~", "report.merged~"})
        m_scene->write(QString::fromLatin1(name), "This is mine.\n");
    const QStringList names{QStringLiteral("report.fodt"), QStringLiteral("other.fodt")};
    QCOMPARE(m_scene->convert(names).exitCode, 0);
    QCOMPARE(m_scene->convert(QStringList{QStringLiteral("-m"), QStringLiteral("all.pdf")} + names)
                 .exitCode,
             0);
}

void tst_endtoend_userfiles::anEarlierResultIsReplacedAtTheEnd()
{
    const QByteArray before("the result of an earlier run\n");
    m_scene->write(QStringLiteral("long.html"), TestDocuments::longPage(300));
    const auto result = m_scene->write(QStringLiteral("long.pdf"), before);
    m_scene->mayChange(QStringLiteral("long.pdf"));
    m_scene->start({QStringLiteral("long.html")});
    const auto printed = [this] {
        return QFileInfo::exists(m_scene->path(QStringLiteral("long.ps~")));
    };
    QVERIFY(m_scene->waitWhileRunning(printed));
    QCOMPARE(contentOf(result), before);
    QCOMPARE(m_scene->finish().exitCode, 0);
    QVERIFY(PdfFacts(result).opens());
}

void tst_endtoend_userfiles::anEarlierResultIsKeptWhenTheConversionFails()
{
    m_scene->write(QStringLiteral("half.docx"), "PK\x03\x04 and no more");
    m_scene->write(QStringLiteral("half.pdf"), "the result of an earlier run\n");
    m_scene->write(QStringLiteral("faulty.ps"), "%!PS\n1 0 div\n");
    m_scene->write(QStringLiteral("faulty.pdf"), "the result of an earlier run\n");
    const auto outcome =
        m_scene->convert({QStringLiteral("half.docx"), QStringLiteral("faulty.ps")});
    QCOMPARE(outcome.results(), QStringList(2, QStringLiteral("damaged")));
}

void tst_endtoend_userfiles::resultsNeverOverwriteDocuments()
{
    QStringList names;
    for (const auto *name : {"report.fodt", "report.txt", "report.pdf", "report (2).pdf"})
        names += QString::fromLatin1(name);
    for (const auto &name : names)
        m_scene->write(name, name.endsWith(QLatin1String(".pdf")) ? TestDocuments::pdf("a pdf")
                                                                  : TestDocuments::letter("text"));
    const auto outcome = m_scene->convert(names);
    QCOMPARE(outcome.exitCode, 0);
    QSet<QString> results;
    for (qsizetype position = 0; position < names.size(); ++position)
        results.insert(outcome.pdf(position));
    QCOMPARE(results.size(), names.size());
}

void tst_endtoend_userfiles::aSecondRunOverAFolderMakesNoNewFile()
{
    m_scene->write(QStringLiteral("d/report.odt"),
                   contentOf(m_scene->copyExample(QStringLiteral("Grüße aus Thistlemere.odt"))));
    m_scene->write(QStringLiteral("d/report.xlsx"),
                   contentOf(m_scene->copyExample(QStringLiteral("Harvest 2025.xlsx"))));
    for (const auto *name : {"d/report (2).pdf", "d/scan.pdf", "d/UPPER.PDF"})
        m_scene->write(QString::fromLatin1(name), TestDocuments::pdf("a pdf"));
    const auto names = [this] {
        return QDir(m_scene->path(QStringLiteral("d"))).entryList(QDir::Files, QDir::Name);
    };
    for (const auto *quality : {"Default", "Low", "Medium", "High"}) {
        const auto outcome = m_scene->convert(
            {QStringLiteral("-q"), QString::fromLatin1(quality), QStringLiteral("d")});
        QCOMPARE(outcome.results(), QStringList(5, QStringLiteral("converted")));
        QCOMPARE(
            names(),
            QStringList({QStringLiteral("UPPER.PDF"), QStringLiteral("UPPER.pdf"),
                         QStringLiteral("report (2) (2).pdf"), QStringLiteral("report (2).pdf"),
                         QStringLiteral("report.odt"), QStringLiteral("report.pdf"),
                         QStringLiteral("report.xlsx"), QStringLiteral("report.xlsx.pdf"),
                         QStringLiteral("scan (2).pdf"), QStringLiteral("scan.pdf")}));
    }
}

void tst_endtoend_userfiles::anOriginalWithTheNameOfAResultIsNotReplaced()
{
    m_scene->write(QStringLiteral("d/scan.pdf"), TestDocuments::pdf("one"));
    m_scene->write(QStringLiteral("d/scan (2).pdf"), TestDocuments::pdf("two"));
    for (int run = 0; run < 2; ++run) {
        const auto outcome = m_scene->convert({QStringLiteral("d")});
        QCOMPARE(outcome.results(), QStringList(2, QStringLiteral("converted")));
        QCOMPARE(QDir(m_scene->path(QStringLiteral("d"))).entryList(QDir::Files).size(), 4);
    }
}

void tst_endtoend_userfiles::aFolderThatCannotBeWrittenIsLeftForTheDocumentsFolder()
{
    const auto folder = m_scene->path(QStringLiteral("disk"));
    QDir().mkpath(folder);
    m_disk = std::make_unique<SmallDisk>(folder, 1000);
    if (!m_disk->isMounted())
        QSKIP("This user may not mount a disk to make it read-only.");
    m_scene->write(QStringLiteral("disk/a.fodt"), TestDocuments::letter("a"));
    QVERIFY(m_disk->makeReadOnly());
    auto outcome = m_scene->convert({QStringLiteral("disk/a.fodt")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.pdf(), m_scene->home() + QStringLiteral("/a.pdf"));
    QDir().mkpath(m_scene->home() + QStringLiteral("/Documents"));
    outcome = m_scene->convert({QStringLiteral("disk/a.fodt")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.pdf(), m_scene->home() + QStringLiteral("/Documents/a.pdf"));
    QCOMPARE(PdfFacts(outcome.pdf()).text().trimmed(), QStringLiteral("a"));
}

void tst_endtoend_userfiles::twoRunsOverOneFolderDoNotDisturbEachOther()
{
    QStringList names;
    for (int number = 0; number < 6; ++number) {
        names += QStringLiteral("%1.fodt").arg(number);
        m_scene->write(names.last(), TestDocuments::letter("words"));
    }
    QProcess second;
    second.setProcessEnvironment(m_scene->environment());
    second.setWorkingDirectory(m_scene->documents());
    m_scene->start(names);
    second.start(QStringLiteral(QUORLIN_BIN_DIR "/quorlin-convert"), names);
    QVERIFY(second.waitForFinished(60'000));
    QCOMPARE(second.exitCode(), 0);
    const auto outcome = m_scene->finish();
    QCOMPARE(outcome.exitCode, 0);
    for (qsizetype position = 0; position < names.size(); ++position)
        QVERIFY(PdfFacts(outcome.pdf(position)).opens());
}

QTEST_GUILESS_MAIN(tst_endtoend_userfiles)
#include "tst_endtoend_userfiles.moc"
