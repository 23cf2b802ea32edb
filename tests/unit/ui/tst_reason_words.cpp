#include "ui/ReasonWords.h"

#include <QSet>
#include <QTest>

using namespace Quorlin;

class TestReasonWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyReasonIsToldInEveryLanguage_data();
    void everyReasonIsToldInEveryLanguage();
    void noTwoReasonsAreToldAlike_data() { everyReasonIsToldInEveryLanguage_data(); }
    void noTwoReasonsAreToldAlike();
    void theLanguageMayChangeAtAnyTime();
    void otherLanguagesAreEnglish();
    void severalAndOneDiffer_data() { everyReasonIsToldInEveryLanguage_data(); }
    void severalAndOneDiffer();
};

void TestReasonWords::everyReasonIsToldInEveryLanguage_data()
{
    QTest::addColumn<QString>("language");
    for (const auto *const language : {"english", "français", "deutsch"})
        QTest::newRow(language) << QString::fromUtf8(language);
}

void TestReasonWords::everyReasonIsToldInEveryLanguage()
{
    QFETCH(const QString, language);
    const ReasonWords words([&language] { return language; });
    const ReasonTexts english;
    for (const auto reason : allReasons()) {
        const auto sentence = words.sentence(reason);
        const auto advice = words.advice(reason);
        QVERIFY2(sentence.at(0).isUpper() && sentence.endsWith(QLatin1Char('.')),
                 qPrintable(sentence));
        QCOMPARE(sentence == english.sentence(reason), language == QLatin1String("english"));
        QCOMPARE(advice.isEmpty(), reason == Reason::None);
        if (advice.isEmpty())
            continue;
        QVERIFY2(advice.at(0).isUpper() && advice.endsWith(QLatin1Char('.')), qPrintable(advice));
        QCOMPARE(advice == english.advice(reason), language == QLatin1String("english"));
    }
}

void TestReasonWords::noTwoReasonsAreToldAlike()
{
    QFETCH(const QString, language);
    const ReasonWords words([&language] { return language; });
    QSet<QString> sentences;
    QSet<QString> advices;
    for (const auto reason : allReasons()) {
        sentences.insert(words.sentence(reason));
        advices.insert(words.advice(reason));
    }
    QCOMPARE(sentences.size(), allReasons().size());
    QCOMPARE(advices.size(), allReasons().size());
}

void TestReasonWords::theLanguageMayChangeAtAnyTime()
{
    auto language = QStringLiteral("deutsch");
    const ReasonWords words([&language] { return language; });
    QCOMPARE(words.sentence(Reason::Empty), QStringLiteral("Die Datei ist leer."));
    language = QStringLiteral("français");
    QCOMPARE(words.sentence(Reason::Empty), QStringLiteral("Le fichier est vide."));
    language = QStringLiteral("english");
    QCOMPARE(words.sentence(Reason::Empty), QStringLiteral("The file is empty."));
}

void TestReasonWords::otherLanguagesAreEnglish()
{
    const ReasonWords words([] { return QStringLiteral("nederlands"); });
    const ReasonTexts english;
    QCOMPARE(words.sentence(Reason::Damaged), english.sentence(Reason::Damaged));
    QCOMPARE(words.advice(Reason::Damaged), english.advice(Reason::Damaged));
    QCOMPARE(words.introduce(QStringLiteral("x")), english.introduce(QStringLiteral("x")));
    QCOMPARE(words.more(3), english.more(3));
}

void TestReasonWords::severalAndOneDiffer()
{
    QFETCH(const QString, language);
    const ReasonWords words([&language] { return language; });
    QVERIFY(words.more(12).contains(QLatin1String("12")));
    QVERIFY(words.more(1) != words.more(12));
    QVERIFY(words.introduce(QStringLiteral("gs")).endsWith(QLatin1String(": gs")));
}

QTEST_GUILESS_MAIN(TestReasonWords)
#include "tst_reason_words.moc"
