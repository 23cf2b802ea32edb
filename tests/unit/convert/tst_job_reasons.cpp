#include "unit/convert/JobScene.h"

#include <QTest>

using namespace Quorlin;

/// What a job's messages say below their texts, which stay those of the table.
class TestJobReasons : public JobScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { prepare(); }
    void cleanup() { tidyUp(); }
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
    [[nodiscard]] QStringList details() const;
};

QStringList TestJobReasons::details() const
{
    QStringList texts;
    for (const auto &message : m_messages.all())
        texts.append(message.detail);
    return texts;
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
