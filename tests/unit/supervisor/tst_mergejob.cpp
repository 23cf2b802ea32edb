#include "unit/supervisor/ComponentScene.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

QByteArray pdfOf(const QByteArray &text)
{
    return "%PDF-1.4\n" + text + "\n%%EOF\n";
}

} // namespace

/// The merging step; the stand-in joins bytes.
class TestMergeJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ComponentScene>(); }
    void cleanup() { m_scene.reset(); }
    void joinsTheDocumentsInTheirOrder();
    void everyEntryHasTheOneOutput();
    void theWorkerGetsTitlesAndTheSwitch();
    void foreignDocumentsStay();
    void distilledDocumentsAreRemovedAfterwards();
    void distilledDocumentsAreRemovedAlsoWhenTheStepFails();
    void oneUnreadableDocumentFailsTheStep();
    void aWorkerThatSaysDoneForNothingHasFailed();
    void aWorkerThatDiesHasFailed();
    void aMissingWorkerIsNamed();
    void aFileOfTheUsersUnderTheHiddenNameStays();
    void theNextMergeWorksAfterAFailedOne();

private:
    std::unique_ptr<ComponentScene> m_scene;
};

void TestMergeJob::joinsTheDocumentsInTheirOrder()
{
    const auto b = m_scene->document("b.pdf", pdfOf("b")),
               a = m_scene->document("a.pdf", pdfOf("a"));
    const auto outputs = m_scene->merge({b, a});
    QVERIFY(m_scene->succeeded());
    QCOMPARE(contentOf(outputs[0]), pdfOf("b") + pdfOf("a"));
}

void TestMergeJob::everyEntryHasTheOneOutput()
{
    const auto outputs = m_scene->merge({m_scene->document("a.pdf", pdfOf("a")),
                                         m_scene->document("b.pdf", pdfOf("b")),
                                         m_scene->document("c.pdf", pdfOf("c"))});
    const auto merged = m_scene->path("a.merged~");
    QCOMPARE(outputs, QStringList({merged, merged, merged}));
    QCOMPARE(m_scene->reports.of("complete").size(), 1);
    QVERIFY(!m_scene->reports.has("output"));
}

void TestMergeJob::theWorkerGetsTitlesAndTheSwitch()
{
    const auto file = m_scene->document("my report.v2.pdf~", pdfOf("a"));
    for (const bool bookmarks : {true, false}) {
        m_scene->merge({file}, bookmarks);
        const auto request = m_scene->requests("merge").last();
        QCOMPARE(request.value(QLatin1String("bookmarks")), QJsonValue(bookmarks));
        const auto input = request.value(QLatin1String("inputs")).toArray().first().toObject();
        QCOMPARE(input.value(QLatin1String("name")).toString(), file);
        QCOMPARE(input.value(QLatin1String("title")).toString(), QStringLiteral("my report.v2"));
    }
}

void TestMergeJob::foreignDocumentsStay()
{
    const auto a = m_scene->document("a.pdf", pdfOf("a")),
               b = m_scene->document("b.pdf", pdfOf("b"));
    m_scene->merge({a, b});
    m_scene->end();
    QCOMPARE(contentOf(a), pdfOf("a"));
    QCOMPARE(contentOf(b), pdfOf("b"));
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("a.pdf"), QStringLiteral("b.pdf")}));
}

void TestMergeJob::distilledDocumentsAreRemovedAfterwards()
{
    const auto distilled =
        m_scene->distil(m_scene->print({m_scene->document("a.docx"), m_scene->document("b.docx")}));
    m_scene->merge(distilled + QStringList{m_scene->document("c.pdf", pdfOf("c"))});
    QVERIFY(m_scene->succeeded());
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("a.docx"), QStringLiteral("a.merged~"),
                          QStringLiteral("b.docx"), QStringLiteral("c.pdf")}));
}

void TestMergeJob::distilledDocumentsAreRemovedAlsoWhenTheStepFails()
{
    const auto distilled = m_scene->distil(m_scene->print({m_scene->document("a.docx")}));
    m_scene->merge(distilled + QStringList{m_scene->document("c.pdf", "no PDF")});
    QVERIFY(!m_scene->succeeded());
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("a.docx"), QStringLiteral("c.pdf")}));
}

void TestMergeJob::oneUnreadableDocumentFailsTheStep()
{
    const auto outputs = m_scene->merge({m_scene->document("a.pdf", pdfOf("a")),
                                         m_scene->document("b.pdf", "no PDF"),
                                         m_scene->document("c.pdf", pdfOf("c"))});
    QVERIFY(!m_scene->succeeded());
    QCOMPARE(m_scene->reports.failures().size(), 3);
    for (const auto &failure : m_scene->reports.failures())
        QVERIFY(failure.endsWith(QStringLiteral(":damaged")));
    for (const auto &output : outputs)
        QVERIFY(!QFileInfo::exists(output));
}

void TestMergeJob::aWorkerThatSaysDoneForNothingHasFailed()
{
    m_scene->merge({m_scene->document("a.pdf", pdfOf("merge nothing"))});
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:engine-failed")});
}

void TestMergeJob::aWorkerThatDiesHasFailed()
{
    m_scene->merge({m_scene->document("a.pdf", pdfOf("merge die"))});
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:engine-failed")});
}

void TestMergeJob::aMissingWorkerIsNamed()
{
    m_scene->removeProgram("quorlin-pdf-merge");
    m_scene->merge({m_scene->document("a.pdf", pdfOf("a"))});
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:program-missing")});
    QVERIFY(m_scene->reports.last("failure")
                .value(QLatin1String("text"))
                .toString()
                .contains(QStringLiteral("quorlin-pdf-merge")));
}

void TestMergeJob::aFileOfTheUsersUnderTheHiddenNameStays()
{
    const auto users = m_scene->document("a.merged~", "the user's");
    QCOMPARE(m_scene->merge({m_scene->document("a.pdf", pdfOf("a"))}),
             QStringList{m_scene->path("a.merged2~")});
    m_scene->end();
    QCOMPARE(contentOf(users), QByteArray("the user's"));
}

void TestMergeJob::theNextMergeWorksAfterAFailedOne()
{
    m_scene->merge({m_scene->document("a.pdf", pdfOf("merge die"))});
    QVERIFY(!m_scene->succeeded());
    m_scene->merge({m_scene->document("b.pdf", pdfOf("b"))});
    QVERIFY(m_scene->succeeded());
}

QTEST_GUILESS_MAIN(TestMergeJob)
#include "tst_mergejob.moc"
