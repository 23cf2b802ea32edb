#include "ui/CommandItems.h"

#include <QTest>

using namespace Quorlin;
using namespace Quorlin::CommandItems;

/// The verbs of command texts.
class TestCommandItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstItemIsTheVerb();
    void aFolderWithTheNameOfAVerbIsAFolder();
};

void TestCommandItems::theFirstItemIsTheVerb()
{
    const auto verb = [](const char *text) { return verbOf(split(QString::fromLatin1(text))); };
    QCOMPARE(verb("/p,/d/x.odt"), Verb::Print);
    QCOMPARE(verb("/p"), Verb::Print);
    QCOMPARE(verb("/a,/d/x.odt"), Verb::Add);
    QCOMPARE(verb("/n"), Verb::New);
    for (const auto *const text :
         {"", "/d/x.odt,/p", "/P,x.odt", "/p /x.odt", "/p;/x.odt", "/pdf,x.odt", ",/p", "-p,x.odt"})
        QCOMPARE(verb(text), Verb::None);
}

void TestCommandItems::aFolderWithTheNameOfAVerbIsAFolder()
{
    const auto isFolder = [](const QString &path) { return path == QLatin1String("/p"); };
    QCOMPARE(verbOf(split(QStringLiteral("/p,/x.odt")), isFolder), Verb::None);
    QCOMPARE(verbOf(split(QStringLiteral("/a,/x.odt")), isFolder), Verb::Add);
}

QTEST_GUILESS_MAIN(TestCommandItems)
#include "tst_command_items.moc"
