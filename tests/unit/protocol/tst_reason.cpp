#include "component/protocol/Reason.h"

#include <QSet>
#include <QTest>

#include <array>

using namespace Quorlin;

namespace {

constexpr std::array Reasons{
    Reason::None,        Reason::UnknownFormat, Reason::NotFound,       Reason::NotRegular,
    Reason::NotReadable, Reason::Empty,         Reason::LockFile,       Reason::NotPostScript,
    Reason::Protected,   Reason::NotPrintable,  Reason::Damaged,        Reason::TookTooLong,
    Reason::OutOfMemory, Reason::EngineFailed,  Reason::ProgramMissing, Reason::NoRoom,
    Reason::NotAllowed,  Reason::BadOptions,    Reason::NothingPrinted, Reason::Cancelled};

} // namespace

class TestReason : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theKeyLeadsBackToTheReason();
    void noTwoReasonsShareAKey();
    void noTwoReasonsShareATextOrANumber();
    void keysAreWordsForThePipe();
    void textsAreSentencesWithoutAFullStop();
    void aPostScriptFileThatIsNoneIs42();
    void everyReasonIsListed();
    void thereIsSomethingToDoAboutEveryReason();
    void aDetailIsWhatTheSentenceDoesNotSay();
    void aKeyThatNobodyKnowsMeansThatTheEngineFailed();
    void aReasonThatNobodyKnowsMeansThatTheEngineFailed();
};

void TestReason::theKeyLeadsBackToTheReason()
{
    for (const auto reason : Reasons)
        QCOMPARE(reasonFromKey(reasonKey(reason)), reason);
}

void TestReason::noTwoReasonsShareAKey()
{
    QSet<QString> keys;
    for (const auto reason : Reasons)
        keys.insert(reasonKey(reason));
    QCOMPARE(keys.size(), qsizetype(Reasons.size()));
}

void TestReason::noTwoReasonsShareATextOrANumber()
{
    QSet<QString> texts;
    QSet<int> numbers;
    for (const auto reason : Reasons) {
        texts.insert(reasonText(reason));
        numbers.insert(static_cast<int>(reason));
    }
    QCOMPARE(texts.size(), qsizetype(Reasons.size()));
    QCOMPARE(numbers.size(), qsizetype(Reasons.size()));
}

void TestReason::keysAreWordsForThePipe()
{
    for (const auto reason : Reasons)
        for (const auto character : reasonKey(reason))
            QVERIFY((character >= u'a' && character <= u'z') || character == u'-');
}

void TestReason::textsAreSentencesWithoutAFullStop()
{
    for (const auto reason : Reasons) {
        QVERIFY(!reasonText(reason).isEmpty());
        QVERIFY(!reasonText(reason).endsWith(QLatin1Char('.')));
    }
}

void TestReason::aPostScriptFileThatIsNoneIs42()
{
    QCOMPARE(static_cast<int>(Reason::NotPostScript), 42);
}

void TestReason::everyReasonIsListed()
{
    QCOMPARE(allReasons(), QList<Reason>(Reasons.begin(), Reasons.end()));
}

void TestReason::thereIsSomethingToDoAboutEveryReason()
{
    for (const auto reason : Reasons) {
        const auto advice = reasonAdvice(reason);
        QCOMPARE(advice.isEmpty(), reason == Reason::None);
        QVERIFY(advice.isEmpty() || (advice.at(0).isUpper() && advice.endsWith(QLatin1Char('.'))));
    }
}

void TestReason::aDetailIsWhatTheSentenceDoesNotSay()
{
    QCOMPARE(reasonDetail(Reason::Damaged, reasonText(Reason::Damaged)), QString());
    QCOMPARE(reasonDetail(Reason::Damaged, QString()), QString());
    QCOMPARE(reasonDetail(Reason::Damaged, QStringLiteral("no pages")), QStringLiteral("no pages"));
}

void TestReason::aKeyThatNobodyKnowsMeansThatTheEngineFailed()
{
    QCOMPARE(reasonFromKey(QStringLiteral("made-up")), Reason::EngineFailed);
    QCOMPARE(reasonFromKey(QString()), Reason::EngineFailed);
    QCOMPARE(reasonFromKey(QStringLiteral("Protected")), Reason::EngineFailed);
}

void TestReason::aReasonThatNobodyKnowsMeansThatTheEngineFailed()
{
    QCOMPARE(reasonKey(static_cast<Reason>(12345)), QStringLiteral("engine-failed"));
    QVERIFY(!reasonText(static_cast<Reason>(12345)).isEmpty());
    QVERIFY(!reasonAdvice(static_cast<Reason>(12345)).isEmpty());
}

QTEST_GUILESS_MAIN(TestReason)
#include "tst_reason.moc"
