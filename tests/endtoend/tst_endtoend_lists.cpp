#include "endtoend/ConvertScene.h"
#include "endtoend/PdfFacts.h"

#include <QFileInfo>
#include <QTest>

using namespace Quorlin;

/// Lists of documents: what is foretold of them, and how they are worked through.
class tst_endtoend_lists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ConvertScene>(); }
    void cleanup();
    void theDryRunTellsWhatTheRunDoes_data();
    void theDryRunTellsWhatTheRunDoes();
    void namesOfAListAreConvertedOneAtATime();

private:
    void writeDocuments();

    std::unique_ptr<ConvertScene> m_scene;
};

void tst_endtoend_lists::cleanup()
{
    QCOMPARE(m_scene->leftovers(), QString());
    m_scene.reset();
}

/// Documents whose results would have the same names, and names of all kinds.
void tst_endtoend_lists::writeDocuments()
{
    const QByteArray postScript("%!PS\n/Helvetica 12 selectfont 72 72 moveto (x) show showpage\n");
    for (const auto *name : {"d/a.txt", "d/a.html", "d/sub/a.txt", "b10.txt", "b9.txt", "p.txt"})
        m_scene->write(QString::fromUtf8(name), "text\n");
    m_scene->write(QStringLiteral("-q Übung 文書.txt"), "text\n");
    m_scene->write(QStringLiteral("p.ps"), postScript);
    m_scene->write(QStringLiteral("p.eps"), postScript);
    m_scene->copyExample(QStringLiteral("Membership.pdf"));
}

void tst_endtoend_lists::theDryRunTellsWhatTheRunDoes_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("beside the documents") << QStringList();
    QTest::newRow("into a folder") << QStringList{QStringLiteral("-o"), QStringLiteral("new/out")};
}

void tst_endtoend_lists::theDryRunTellsWhatTheRunDoes()
{
    QFETCH(const QStringList, options);
    writeDocuments();
    const QStringList arguments = options + QStringList{QStringLiteral("--"), QStringLiteral(".")};
    const auto plan = m_scene->convert(QStringList(QStringLiteral("-n")) + arguments);
    QCOMPARE(plan.exitCode, 0);
    QCOMPARE(plan.results(), QStringList(10, QStringLiteral("planned")));
    QVERIFY(!QFileInfo::exists(m_scene->path(QStringLiteral("new"))));
    for (int i = 0; i < 10; ++i)
        QVERIFY(!QFileInfo::exists(plan.pdf(i)));
    const auto outcome = m_scene->convert(arguments);
    QCOMPARE(outcome.output, plan.output);
    QCOMPARE(outcome.exitCode, 0);
}

void tst_endtoend_lists::namesOfAListAreConvertedOneAtATime()
{
    writeDocuments();
    m_scene->write(QStringLiteral("names"),
                   QByteArrayLiteral("b9.txt\0Membership.pdf\0p.ps\0-q Übung 文書.txt"));
    const auto outcome = m_scene->convert({QStringLiteral("-0"), QStringLiteral("-j"),
                                           QStringLiteral("1"), QStringLiteral("-T"),
                                           QStringLiteral("names"), QStringLiteral("b10.txt")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output.count(QLatin1Char('\n')), 5);
    QVERIFY(outcome.output.startsWith(QLatin1String("b10.txt -> b10.pdf\nb9.txt -> b9.pdf\n")));
    for (int i = 0; i < 5; ++i)
        QVERIFY(PdfFacts(outcome.pdf(i)).opens());
}

QTEST_GUILESS_MAIN(tst_endtoend_lists)
#include "tst_endtoend_lists.moc"
