#include "component/supervisor/Job.h"
#include "component/supervisor/Workers.h"
#include "unit/supervisor/ComponentScene.h"

#include <QTest>

#include <memory>

using namespace Quorlin;

/// How many documents of a job are worked on at once.
class TestAtOnce : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ComponentScene>(); }
    void cleanup() { m_scene.reset(); }
    void oneIsPrintedAfterTheOther();
    void oneIsDistilledAfterTheOther();
    void secondTriesComeOneAfterTheOther();
    void moreAreUnderWayTogether_data();
    void moreAreUnderWayTogether();
    void theWishOfOneJobIsNotThatOfTheNext();
    void enginesSuitTheWishTheListAndTheMachine_data();
    void enginesSuitTheWishTheListAndTheMachine();

private:
    [[nodiscard]] QStringList documents(int count, const QByteArray &text) const;
    /// The reports of these types in their order, as one word each.
    [[nodiscard]] QStringList sequence(const QStringList &types) const;

    std::unique_ptr<ComponentScene> m_scene;
};

QStringList TestAtOnce::documents(int count, const QByteArray &text) const
{
    QStringList files;
    for (int i = 0; i < count; ++i)
        files << m_scene->document(QByteArray(QByteArray::number(i) + ".docx").constData(), text);
    return files;
}

QStringList TestAtOnce::sequence(const QStringList &types) const
{
    QStringList found;
    for (const auto &report : m_scene->reports.all()) {
        if (const auto type = report.value(QLatin1String("type")).toString(); types.contains(type))
            found << type;
    }
    return found;
}

void TestAtOnce::oneIsPrintedAfterTheOther()
{
    m_scene->atOnce = 1;
    m_scene->print(documents(4, "text"));
    QVERIFY(m_scene->succeeded());
    QStringList expected;
    for (int i = 0; i < 4; ++i)
        expected << QStringLiteral("state") << QStringLiteral("output");
    QCOMPARE(sequence({QStringLiteral("state"), QStringLiteral("output")}), expected);
}

void TestAtOnce::oneIsDistilledAfterTheOther()
{
    QStringList files;
    for (const auto *name : {"a.ps", "b.ps", "c.ps"})
        files << m_scene->document(name, "%!\nnosuchoperator");
    m_scene->atOnce = 1;
    m_scene->distil(files);
    QStringList expected;
    for (int i = 0; i < 3; ++i)
        expected << QStringLiteral("state") << QStringLiteral("failure");
    QCOMPARE(sequence({QStringLiteral("state"), QStringLiteral("failure")}), expected);
}

void TestAtOnce::secondTriesComeOneAfterTheOther()
{
    const auto go = m_scene->home.path("go");
    m_scene->atOnce = 1;
    const auto job = m_scene->askToPrint(
        documents(2, "export-first fail engine-failed\nprint wait-for " + QFile::encodeName(go)));
    QTRY_COMPARE_WITH_TIMEOUT(m_scene->requests("print").size(), 1, 30'000);
    QTest::qWait(300); // the other second try would have begun by now
    QCOMPARE(m_scene->requests("export").size(), 3);
    m_scene->home.write("go", "");
    QVERIFY(m_scene->waitFor("complete", job));
    QVERIFY(m_scene->reports.failures().isEmpty());
    QCOMPARE(m_scene->requests("export").size(), 4);
}

void TestAtOnce::moreAreUnderWayTogether_data()
{
    QTest::addColumn<QJsonValue>("wish");
    QTest::addColumn<int>("together");
    const auto row = [](const char *name, const QJsonValue &wish, int together) {
        QTest::newRow(name) << wish << together;
    };
    row("two", 2, 2);
    row("a part is left out", 3.9, 3);
    row("no wish", QJsonValue::Undefined, Job::MostUnderWay);
    row("too many", 1000, Job::MostUnderWay);
    row("absurdly many", 1e300, Job::MostUnderWay);
    row("none", 0, Job::MostUnderWay);
    row("less than one", 0.5, Job::MostUnderWay);
    row("negative", -1, Job::MostUnderWay);
    row("a word", QStringLiteral("1"), Job::MostUnderWay);
    row("nothing", QJsonValue::Null, Job::MostUnderWay);
    row("an object", QJsonObject(), Job::MostUnderWay);
}

void TestAtOnce::moreAreUnderWayTogether()
{
    QFETCH(const QJsonValue, wish);
    QFETCH(const int, together);
    const auto go = m_scene->home.path("go");
    m_scene->atOnce = wish;
    const auto job = m_scene->askToPrint(
        documents(Job::MostUnderWay + 4, "export wait-for " + QFile::encodeName(go)));
    QVERIFY(QTest::qWaitFor([&] { return !m_scene->requests("export").isEmpty(); }, 30'000));
    QCOMPARE(m_scene->reports.of("state").size(), together);
    m_scene->home.write("go", "");
    QVERIFY(m_scene->waitFor("complete", job));
    QVERIFY(m_scene->succeeded());
}

void TestAtOnce::theWishOfOneJobIsNotThatOfTheNext()
{
    m_scene->atOnce = 1;
    m_scene->print({m_scene->document("a.docx")});
    m_scene->reports.clear();
    m_scene->atOnce = QJsonValue::Undefined;
    m_scene->print(documents(3, "text"));
    QCOMPARE(sequence({QStringLiteral("state"), QStringLiteral("output")}).mid(0, 3),
             QStringList(3, QStringLiteral("state")));
}

void TestAtOnce::enginesSuitTheWishTheListAndTheMachine_data()
{
    QTest::addColumn<int>("atOnce");
    QTest::addColumn<int>("documents");
    QTest::addColumn<int>("cores");
    QTest::addColumn<int>("engines");
    QTest::newRow("one at a time") << 1 << 1000 << 8 << 1;
    QTest::newRow("a short list") << 4 << 8 << 8 << 1;
    QTest::newRow("a second one pays") << 4 << 9 << 8 << 2;
    QTest::newRow("as many as wished") << 4 << 1000 << 8 << 4;
    QTest::newRow("no more than cores") << 16 << 1000 << 2 << 2;
    QTest::newRow("nothing to do") << 4 << 0 << 8 << 1;
}

void TestAtOnce::enginesSuitTheWishTheListAndTheMachine()
{
    QFETCH(const int, atOnce);
    QFETCH(const int, documents);
    QFETCH(const int, cores);
    QTEST(Workers::enginesFor(atOnce, documents, cores), "engines");
}

QTEST_GUILESS_MAIN(TestAtOnce)
#include "tst_atonce.moc"
