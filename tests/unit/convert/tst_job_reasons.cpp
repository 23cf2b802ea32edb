#include "KeptWindow.h"
#include "convert/ComponentClient.h"
#include "convert/JobDriver.h"
#include "convert/PDFDistiller.h"
#include "convert/PDFLib.h"
#include "convert/PDFMerger.h"
#include "convert/ReasonTexts.h"
#include "support/KeptMessages.h"
#include "support/TestFolder.h"
#include "winsupport/TextSource.h"
#include "winsupport/clsKelCopyFile.h"

#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

/// Every text is its key, so that messages show which texts they are made of.
class KeyTexts : public TextSource
{
public:
    [[nodiscard]] QString text(const QString &key) const override { return key; }
};

} // namespace

/// What a job's messages say below their texts, which stay those of the table.
class TestJobReasons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void tellsWhyADocumentWasNotPrinted_data();
    void tellsWhyADocumentWasNotPrinted();
    void tellsInTheEndWhichDocumentsWereNotPrinted();
    void namesNoMoreThanFiveThatWereNotPrinted();
    void aMissingPrintedFileHasAReasonToo();
    void tellsWhyNothingWasDistilled();
    void tellsWhyADocumentWasNotDistilled();
    void tellsWhatTheComponentSaysOfAMerge();
    void blamesTheMergeOnADocumentThatWasNotDistilled();
    void tellsThatTheComponentEnded();
    void tellsWhyAResultCannotBeCopied();
    void aReasonOfTheLastJobIsForgotten();
    void reasonsAreInTheLanguageOfTheWindow();

private:
    void start(const QList<QByteArray> &names);
    /// Starts and waits until the window is idle again.
    void run(const QList<QByteArray> &names);
    [[nodiscard]] bool isOver() const;
    [[nodiscard]] QStringList messages() const;
    [[nodiscard]] QStringList details() const;
    void makeDriver(const ReasonTexts *reasons);

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<ComponentClient> m_client;
    std::unique_ptr<PDFLib> m_lib;
    std::unique_ptr<PDFDistiller> m_distiller;
    std::unique_ptr<PDFMerger> m_merger;
    std::unique_ptr<clsKelCopyFile> m_copy;
    std::unique_ptr<ResultDelivery> m_delivery;
    std::unique_ptr<JobDriver> m_driver;
    ConversionSettings m_settings;
    KeptWindow m_window;
    KeptMessages m_messages;
    KeyTexts m_texts;
};

void TestJobReasons::start(const QList<QByteArray> &names)
{
    m_window.list.clear();
    for (const auto &name : names)
        m_window.list.append(m_folder->write(name.constData(), name));
    m_driver->LblConvert_Click();
}

bool TestJobReasons::isOver() const
{
    return !m_window.working && !m_lib->isRunning() && !m_distiller->isRunning() &&
           !m_merger->isRunning();
}

void TestJobReasons::run(const QList<QByteArray> &names)
{
    start(names);
    QTRY_VERIFY_WITH_TIMEOUT(isOver(), 20000);
}

QStringList TestJobReasons::messages() const
{
    QStringList texts;
    for (const auto &message : m_messages.all()) {
        if (message.style != MessageStyle::Critical ||
            message.title != QLatin1String("ErrorWindowTitle"))
            texts.append(QStringLiteral("wrong style or title"));
        texts.append(message.text);
    }
    return texts;
}

QStringList TestJobReasons::details() const
{
    QStringList texts;
    for (const auto &message : m_messages.all())
        texts.append(message.detail);
    return texts;
}

void TestJobReasons::makeDriver(const ReasonTexts *reasons)
{
    m_driver =
        std::make_unique<JobDriver>(JobDriver::Parts{*m_lib, *m_distiller, *m_merger, m_window,
                                                     m_messages, m_texts, *m_delivery, reasons},
                                    m_settings);
}

void TestJobReasons::init()
{
    m_folder = std::make_unique<TestFolder>();
    m_window = {};
    m_messages.clear();
    m_folder->write("Quorlin.ini", "[Printer]\nName = Test PDF\n[JobOptions]\nLow = l.joboptions\n"
                                   "High = h.joboptions\n");
    m_folder->write("Settings/l.joboptions", "<< >> setdistillerparams");
    m_folder->write("Settings/h.joboptions", "<< >> setdistillerparams");
    m_settings = *ConversionSettings::load(m_folder->path());
    ComponentSettings component;
    component.program = QStringLiteral(QUORLIN_FAKE_COMPONENT);
    m_client = std::make_unique<ComponentClient>(component);
    m_lib = std::make_unique<PDFLib>(*m_client);
    m_distiller = std::make_unique<PDFDistiller>(*m_client);
    m_merger = std::make_unique<PDFMerger>(*m_client);
    m_copy = std::make_unique<clsKelCopyFile>();
    m_delivery = std::make_unique<ResultDelivery>(
        [this](const QString &source, const QString &destination) {
            return m_copy->CopyFile(source, destination, true, true);
        },
        [](const QString &) {}, m_messages, m_texts);
    makeDriver(nullptr);
}

void TestJobReasons::cleanup()
{
    m_driver.reset();
    m_merger.reset();
    m_distiller.reset();
    m_lib.reset();
    m_client.reset();
    qunsetenv("QUORLIN_FAKE");
    qunsetenv("QUORLIN_FAKE_LOG");
}

void TestJobReasons::tellsWhyADocumentWasNotPrinted_data()
{
    QTest::addColumn<int>("reason");
    for (const auto reason : allReasons())
        if (reason != Reason::None)
            QTest::newRow(qPrintable(reasonKey(reason))) << static_cast<int>(reason);
}

void TestJobReasons::tellsWhyADocumentWasNotPrinted()
{
    QFETCH(const int, reason);
    const auto key = reasonKey(static_cast<Reason>(reason));
    const auto name = "because-" + key.toLatin1() + "-.txt";
    run({name});
    QCOMPARE(messages(), QStringList({QStringLiteral("ErrorPrintFilename1 ") +
                                          m_folder->path(name.constData()) +
                                          QStringLiteral("ErrorPrintFilename2"),
                                      QStringLiteral("ErrorPDFLibPrint")}));
    const ReasonTexts english;
    const auto sentence = english.sentence(static_cast<Reason>(reason));
    const auto advice = english.advice(static_cast<Reason>(reason));
    const auto detail = QStringLiteral("\nDetail: it is ") + key;
    QCOMPARE(details().first(), sentence + QLatin1Char(' ') + advice + detail);
    QCOMPARE(details().last(), QString::fromLatin1(name) + QStringLiteral(": ") + sentence +
                                   QLatin1Char('\n') + advice + detail);
}

void TestJobReasons::tellsInTheEndWhichDocumentsWereNotPrinted()
{
    run({"a.txt", "because-no-room-.txt", "c.txt", "protected.txt"});
    QCOMPARE(messages().size(), 3);
    QCOMPARE(details().last(),
             QStringLiteral("because-no-room-.txt: There is no room on the disk.\n"
                            "protected.txt: The document is protected by a password."));
}

void TestJobReasons::namesNoMoreThanFiveThatWereNotPrinted()
{
    qputenv("QUORLIN_FAKE", "failall");
    QList<QByteArray> names;
    for (int number = 0; number < 8; ++number)
        names.append(QByteArray::number(number) + ".txt");
    run(names);
    QCOMPARE(messages().size(), 9);
    QCOMPARE(details().last().count(QLatin1String(".txt: ")), 5);
    QVERIFY(details().last().contains(QStringLiteral("\n… and 3 more\n")));
}

void TestJobReasons::aMissingPrintedFileHasAReasonToo()
{
    run({"a.txt", "missing.txt"});
    QCOMPARE(messages().size(), 2);
    const ReasonTexts english;
    for (const auto &detail : details())
        QVERIFY2(detail.contains(english.sentence(Reason::EngineFailed)), qPrintable(detail));
    QVERIFY(!details().last().contains(QLatin1String("a.txt")));
}

void TestJobReasons::tellsWhyNothingWasDistilled()
{
    run({"later-out-of-memory-.txt"});
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorPDFLibConvert")));
    // The document is named, not the PostScript that was made of it.
    QVERIFY2(details().first().startsWith(
                 QLatin1String("later-out-of-memory-.txt: It needed too much memory.\n")),
             qPrintable(details().first()));
}

void TestJobReasons::tellsWhyADocumentWasNotDistilled()
{
    run({"a.txt", "undistillable.txt", "c.txt", "later-too-long-.txt"});
    QTRY_COMPARE(m_window.count("idle"), 4);
    QCOMPARE(messages(), QStringList(2, QStringLiteral("ErrorPDFLibConvert")));
    QVERIFY(details().first().startsWith(QLatin1String("undistillable.txt: The document is dam")));
    QVERIFY(details().last().startsWith(QLatin1String("later-too-long-.txt: It took too long.")));
}

void TestJobReasons::tellsWhatTheComponentSaysOfAMerge()
{
    m_window.optLink = true;
    run({"a.txt", "unmergeable.txt"});
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorPDFLibMerge")));
    const ReasonTexts english;
    QCOMPARE(details().first(), english.sentence(Reason::Damaged) + QLatin1Char(' ') +
                                    english.advice(Reason::Damaged) +
                                    QStringLiteral("\nDetail: it is damaged"));
}

void TestJobReasons::blamesTheMergeOnADocumentThatWasNotDistilled()
{
    m_window.optLink = true;
    m_window.answer = m_folder->path("all.pdf");
    run({"a.txt", "later-nothing-printed-unmergeable.txt", "c.txt"});
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorPDFLibMerge")));
    QVERIFY2(details().first().startsWith(
                 QLatin1String("later-nothing-printed-unmergeable.txt: The document has no")),
             qPrintable(details().first()));
    QVERIFY(!details().first().contains(QLatin1String("a.txt")));
}

void TestJobReasons::tellsThatTheComponentEnded()
{
    run({"die.txt"});
    QCOMPARE(messages(), QStringList(QStringLiteral("ErrorPDFLibPrint")));
    QVERIFY(details().first().startsWith(QLatin1String("die.txt: The converter failed")));
    QVERIFY(details().first().contains(QLatin1String("\nDetail: the PDF component")));
}

void TestJobReasons::tellsWhyAResultCannotBeCopied()
{
    m_window.optLink = true;
    m_window.answer = m_folder->path("no such folder/all.pdf");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no such folder")));
    run({"a.txt", "b.txt"});
    QCOMPARE(details(), QStringList(QStringLiteral("The result may not be written.")));
}

void TestJobReasons::aReasonOfTheLastJobIsForgotten()
{
    run({"a.txt", "protected.txt"});
    QCOMPARE(m_lib->Documents().Item(2).failure(), Reason::None); // the list is empty again
    m_messages.clear();
    run({"a.txt", "missing.txt"});
    for (const auto &detail : details())
        QVERIFY2(!detail.contains(QLatin1String("password")), qPrintable(detail));
    QVERIFY(!m_lib->isRunning());
}

void TestJobReasons::reasonsAreInTheLanguageOfTheWindow()
{
    class Reversed : public ReasonTexts
    {
        [[nodiscard]] QString sentence(Reason reason) const override { return reasonKey(reason); }
        [[nodiscard]] QString advice(Reason) const override { return {}; }
    };
    const Reversed reasons;
    makeDriver(&reasons);
    run({"protected.txt", "later-no-room-.txt"});
    QCOMPARE(details().first(), QStringLiteral("protected Detail: it is protected"));
    QCOMPARE(details().last(), QStringLiteral("protected.txt: protected\nDetail: it is protected"));
}

QTEST_GUILESS_MAIN(TestJobReasons)
#include "tst_job_reasons.moc"
