#include "support/SystemActions.h"
#include "unit/supervisor/ComponentScene.h"

#include <QFileInfo>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

} // namespace

/// The printing step with documents that fail, and what is tried to save them.
class TestPrintFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ComponentScene>(); }
    void cleanup() { m_scene.reset(); }
    void oneFailureCostsNoOtherDocument();
    void refusedDocumentsAreTold();
    void succeedsWhenOneDocumentCameThrough();
    void failsWhenNoneCameThrough();
    void aDocumentThatKillsItsEngineIsTriedAgainInANewOne();
    void theSecondTryIsPlainer();
    void theFirstReasonIsReported_data();
    void theFirstReasonIsReported();
    void aProtectedDocumentIsTriedOnce();
    void anEngineThatHangsIsReplaced();
    void anEngineThatSaysDoneForNothingHasFailed_data();
    void anEngineThatSaysDoneForNothingHasFailed();
    void aPrinterThatFailsIsTold_data();
    void aPrinterThatFailsIsTold();
    void aMissingProgramIsNamed_data();
    void aMissingProgramIsNamed();
    void theWorkOfAFailedDocumentIsRemoved();

private:
    std::unique_ptr<ComponentScene> m_scene;
};

void TestPrintFailures::oneFailureCostsNoOtherDocument()
{
    const auto outputs =
        m_scene->print({m_scene->document("a.docx"), m_scene->document("b.docx", "export die"),
                        m_scene->document("c.docx", "export fail protected"),
                        m_scene->document("d.docx", "print die"), m_scene->document("e.docx")});
    QCOMPARE(m_scene->reports.failures(),
             QStringList({QStringLiteral("2:engine-failed"), QStringLiteral("3:protected"),
                          QStringLiteral("4:engine-failed")}));
    QList<bool> there;
    for (const auto &output : outputs)
        there.append(QFileInfo::exists(output));
    QCOMPARE(there, QList<bool>({true, false, false, false, true}));
}

void TestPrintFailures::refusedDocumentsAreTold()
{
    m_scene->documents.makeFolder("folder.docx");
    QVERIFY(SystemActions::makeFifo(m_scene->path("pipe.docx")));
    m_scene->print({m_scene->path("gone.docx"), m_scene->path("folder.docx"),
                    m_scene->path("pipe.docx"), m_scene->document("empty.docx", ""),
                    m_scene->document("program.exe"), m_scene->document("no.ps"),
                    m_scene->document("no.eps")});
    QCOMPARE(m_scene->reports.failures(),
             QStringList({QStringLiteral("1:not-found"), QStringLiteral("2:not-regular"),
                          QStringLiteral("3:not-regular"), QStringLiteral("4:empty"),
                          QStringLiteral("5:unknown-format"), QStringLiteral("6:not-postscript"),
                          QStringLiteral("7:not-postscript")}));
}

void TestPrintFailures::succeedsWhenOneDocumentCameThrough()
{
    m_scene->print({m_scene->path("gone.docx"), m_scene->document("a.docx")});
    QVERIFY(m_scene->succeeded());
}

void TestPrintFailures::failsWhenNoneCameThrough()
{
    const auto outputs = m_scene->print({m_scene->path("gone.docx"), m_scene->path("gone.xlsx")});
    QVERIFY(!m_scene->succeeded());
    QCOMPARE(outputs.size(), 2);
    for (const auto &output : outputs)
        QVERIFY(!QFileInfo::exists(output));
    QCOMPARE(m_scene->reports.of("output").size(), 2);
}

void TestPrintFailures::aDocumentThatKillsItsEngineIsTriedAgainInANewOne()
{
    m_scene->print({m_scene->document("a.docx"), m_scene->document("b.docx", "export-first die"),
                    m_scene->document("c.docx")});
    QCOMPARE(m_scene->reports.failures(), QStringList());
    const auto requests = m_scene->requests("export");
    QCOMPARE(requests.size(), 4);
    for (int i = 0; i < 3; ++i)
        QVERIFY(requests[i].value(QLatin1String("pid")) != requests[3].value(QLatin1String("pid")));
}

void TestPrintFailures::theSecondTryIsPlainer()
{
    m_scene->print({m_scene->document("my report.DOCX", "export-first fail damaged")});
    QCOMPARE(m_scene->reports.failures(), QStringList());
    const auto requests = m_scene->requests("export");
    QCOMPARE(requests.size(), 2);
    QCOMPARE(requests[1].value(QLatin1String("plain")), QJsonValue(true));
    const auto name = QFileInfo(textOf(requests[1], "input")).fileName();
    QVERIFY(name.endsWith(QStringLiteral(".docx")));
    QVERIFY(!name.contains(QLatin1Char(' ')));
    QVERIFY(requests[1].value(QLatin1String("pid")) != requests[0].value(QLatin1String("pid")));
}

void TestPrintFailures::theFirstReasonIsReported_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("text");
    QTest::newRow("another reason the second time")
        << QByteArray("export-first fail damaged page-3\nexport fail engine-failed page-4")
        << QStringLiteral("damaged") << QStringLiteral("page-3");
    QTest::newRow("died the second time")
        << QByteArray("export-first fail damaged page-3\nexport die") << QStringLiteral("damaged")
        << QStringLiteral("page-3");
    QTest::newRow("died the first time")
        << QByteArray("export-first die\nexport fail damaged page-4")
        << QStringLiteral("engine-failed") << reasonText(Reason::EngineFailed);
    QTest::newRow("a reason that no try would change")
        << QByteArray("export-first die\nexport fail protected locked")
        << QStringLiteral("protected") << QStringLiteral("locked");
}

void TestPrintFailures::theFirstReasonIsReported()
{
    QFETCH(const QByteArray, document);
    QFETCH(const QString, reason);
    QFETCH(const QString, text);
    m_scene->print({m_scene->document("a.docx", document)});
    QCOMPARE(m_scene->requests("export").size(), 2);
    QCOMPARE(textOf(m_scene->reports.last("failure"), "reason"), reason);
    QCOMPARE(textOf(m_scene->reports.last("failure"), "text"), text);
}

void TestPrintFailures::aProtectedDocumentIsTriedOnce()
{
    m_scene->print({m_scene->document("a.docx", "export fail protected")});
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:protected")});
    QCOMPARE(m_scene->requests("export").size(), 1);
}

void TestPrintFailures::anEngineThatHangsIsReplaced()
{
    m_scene->stallSeconds = 1;
    m_scene->print({m_scene->document("a.docx", "export hang"),
                    m_scene->document("b.docx", "export-first hang"), m_scene->document("c.docx")});
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:too-long")});
    for (const auto &request : m_scene->requests("export"))
        if (textOf(request, "input").contains(QStringLiteral("a.docx")))
            QVERIFY(!SystemActions::isRunning(request.value(QLatin1String("pid")).toInteger()));
}

void TestPrintFailures::anEngineThatSaysDoneForNothingHasFailed_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::newRow("no file") << QByteArray("nothing");
    QTest::newRow("half a file") << QByteArray("half");
}

void TestPrintFailures::anEngineThatSaysDoneForNothingHasFailed()
{
    QFETCH(const QByteArray, what);
    m_scene->print({m_scene->document("a.docx", "export " + what),
                    m_scene->document("b.docx", "export-first " + what)});
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:engine-failed")});
    QVERIFY(QFileInfo::exists(m_scene->path("b.ps~")));
}

void TestPrintFailures::aPrinterThatFailsIsTold_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<QString>("reason");
    QTest::newRow("refuses") << QByteArray("fail not-printable") << QStringLiteral("not-printable");
    QTest::newRow("dies") << QByteArray("die") << QStringLiteral("engine-failed");
    QTest::newRow("writes nothing") << QByteArray("nothing") << QStringLiteral("engine-failed");
}

void TestPrintFailures::aPrinterThatFailsIsTold()
{
    QFETCH(const QByteArray, what);
    QFETCH(const QString, reason);
    m_scene->print({m_scene->document("a.pdf", "print " + what), m_scene->document("b.docx")});
    QCOMPARE(m_scene->reports.failures(), QStringList{QStringLiteral("1:") + reason});
    QVERIFY(QFileInfo::exists(m_scene->path("b.ps~")));
}

void TestPrintFailures::aMissingProgramIsNamed_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::newRow("office") << QByteArray("quorlin-pdf-office");
    QTest::newRow("print") << QByteArray("quorlin-pdf-print");
}

void TestPrintFailures::aMissingProgramIsNamed()
{
    QFETCH(const QByteArray, program);
    m_scene->removeProgram(program.constData());
    m_scene->print({m_scene->document("a.docx"), m_scene->document("b.docx")});
    QCOMPARE(m_scene->reports.failures(), QStringList({QStringLiteral("1:program-missing"),
                                                       QStringLiteral("2:program-missing")}));
    QVERIFY(
        textOf(m_scene->reports.last("failure"), "text").contains(QString::fromLatin1(program)));
}

void TestPrintFailures::theWorkOfAFailedDocumentIsRemoved()
{
    m_scene->print({m_scene->document("a.docx", "print die"), m_scene->document("b.docx", "")});
    QCOMPARE(namesIn(m_scene->workFolder()).filter(QStringLiteral("document")), QStringList());
    QCOMPARE(m_scene->documents.names(),
             QStringList({QStringLiteral("a.docx"), QStringLiteral("b.docx")}));
}

QTEST_GUILESS_MAIN(TestPrintFailures)
#include "tst_printfailures.moc"
