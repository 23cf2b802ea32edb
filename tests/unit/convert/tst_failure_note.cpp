#include "convert/FailureNote.h"

#include "convert/ReasonTexts.h"

#include <QTest>

using namespace Quorlin;

class TestFailureNote : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ofOneItSaysWhatHappenedAndWhatToDo();
    void whatTheComponentKnowsComesOnALineOfItsOwn();
    void ofOneInAListItNamesTheFile();
    void ofSeveralEachHasALine();
    void adviceIsGivenWhereItIsTheSameForAll();
    void noMoreThanFiveAreNamed_data();
    void noMoreThanFiveAreNamed();
    void nothingFailedIsNoNote();
    void aLongNameKeepsItsEnds();
    void aNameIsOneLine();
    void aLongDetailIsCut();

private:
    static QList<FailedDocument> documents(qsizetype count);

    ReasonTexts m_english;
};

QList<FailedDocument> TestFailureNote::documents(qsizetype count)
{
    QList<FailedDocument> list;
    for (qsizetype number = 1; number <= count; ++number)
        list.append({QStringLiteral("/d/%1.odt").arg(number), Reason::Protected, {}});
    return list;
}

void TestFailureNote::ofOneItSaysWhatHappenedAndWhatToDo()
{
    QCOMPARE(FailureNote::ofOne({QStringLiteral("/d/a.odt"), Reason::Protected, {}}, m_english),
             QStringLiteral("The document is protected by a password. Open it in its program, save "
                            "a copy without a password, and convert the copy."));
}

void TestFailureNote::whatTheComponentKnowsComesOnALineOfItsOwn()
{
    const auto note = FailureNote::ofOne(
        {QStringLiteral("/d/a.odt"), Reason::ProgramMissing, QStringLiteral("gs is missing")},
        m_english);
    QCOMPARE(note.split(QLatin1Char('\n')).size(), 2);
    QVERIFY(note.endsWith(QLatin1String("\nDetail: gs is missing")));
}

void TestFailureNote::ofOneInAListItNamesTheFile()
{
    const auto note = FailureNote::ofAll(documents(1), m_english);
    QVERIFY(note.startsWith(QLatin1String("1.odt: The document is protected by a password.\n")));
    QVERIFY(note.endsWith(reasonAdvice(Reason::Protected)));
}

void TestFailureNote::ofSeveralEachHasALine()
{
    QCOMPARE(FailureNote::ofAll({{QStringLiteral("/d/a.odt"), Reason::Protected, {}},
                                 {QStringLiteral("/d/b.odt"), Reason::NoRoom, {}}},
                                m_english),
             QStringLiteral("a.odt: The document is protected by a password.\n"
                            "b.odt: There is no room on the disk."));
}

void TestFailureNote::adviceIsGivenWhereItIsTheSameForAll()
{
    const auto note = FailureNote::ofAll(documents(3), m_english).split(QLatin1Char('\n'));
    QCOMPARE(note.size(), 4);
    QCOMPARE(note.last(), reasonAdvice(Reason::Protected));
}

void TestFailureNote::noMoreThanFiveAreNamed_data()
{
    QTest::addColumn<qsizetype>("count");
    QTest::addColumn<QString>("line");
    QTest::newRow("five") << qsizetype(5) << QString();
    QTest::newRow("six") << qsizetype(6) << QStringLiteral("… and 1 more");
    QTest::newRow("a thousand") << qsizetype(1000) << QStringLiteral("… and 995 more");
}

void TestFailureNote::noMoreThanFiveAreNamed()
{
    QFETCH(const qsizetype, count);
    QFETCH(const QString, line);
    const auto note = FailureNote::ofAll(documents(count), m_english).split(QLatin1Char('\n'));
    QCOMPARE(note.filter(QStringLiteral(".odt")).size(), 5);
    QCOMPARE(note.filter(QStringLiteral("more")).join(QString()), line);
    QVERIFY(note.size() <= 7);
}

void TestFailureNote::nothingFailedIsNoNote()
{
    QCOMPARE(FailureNote::ofAll({}, m_english), QString());
}

void TestFailureNote::aLongNameKeepsItsEnds()
{
    const auto name =
        QStringLiteral("begin") + QString(500, QLatin1Char('x')) + QStringLiteral("end.odt");
    const auto line =
        FailureNote::ofAll({{name, Reason::Empty, {}}}, m_english).split(QLatin1Char(':')).first();
    QVERIFY(line.startsWith(QLatin1String("begin")) && line.endsWith(QLatin1String("end.odt")));
    QVERIFY(line.size() <= 60);
}

void TestFailureNote::aNameIsOneLine()
{
    const auto note = FailureNote::ofAll(
        {{QStringLiteral("/d/two\nlines.odt"), Reason::Cancelled, QStringLiteral("a\nb")}},
        m_english);
    QCOMPARE(note.count(QLatin1Char('\n')), 2);
    QVERIFY(note.startsWith(QLatin1String("two lines.odt: ")));
    QVERIFY(note.endsWith(QLatin1String("a b")));
}

void TestFailureNote::aLongDetailIsCut()
{
    const FailedDocument document{QStringLiteral("a"), Reason::Damaged,
                                  QStringLiteral("word ").repeated(9999)};
    QVERIFY(FailureNote::ofOne(document, m_english).size() < 500);
}

QTEST_GUILESS_MAIN(TestFailureNote)
#include "tst_failure_note.moc"
