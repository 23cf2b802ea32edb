#include "app/ServerSearch.h"

#include <QList>
#include <QTest>

using namespace Quorlin;
using Result = ServerSearch::Result;

/// The steps of a search, told beforehand.
struct Script
{
    int serverAtLook = 0; ///< the look that finds one, from 1; 0 is none
    int earlierFor = 0;   ///< the earlier instance is there for so many questions
    QList<int> pauses;
    int looks = 0;
    int questions = 0;

    ServerSearch::Steps steps()
    {
        return {[this] { return ++looks == serverAtLook; },
                [this] { return ++questions <= earlierFor; },
                [this](int milliseconds) { pauses.append(milliseconds); }};
    }
};

class ServerSearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void doesNotWaitForAServerThatIsThere();
    void waitsTheFirstTimeFor200Milliseconds();
    void thenLooksEvery500Milliseconds();
    void waitsForeverSinceItsAttemptsNeverGrow();
    void becomesTheFirstWhenTheEarlierInstanceHasEnded();
    void givesUpOnlyWhenTheAttemptsAreUsedUp();
    void takesAServerFoundInTheLastLook();
};

void ServerSearchTest::doesNotWaitForAServerThatIsThere()
{
    Script script{.serverAtLook = 1, .earlierFor = 1};
    QCOMPARE(ServerSearch(script.steps()).run(), Result::ServerFound);
    QVERIFY(script.pauses.isEmpty());
}

void ServerSearchTest::waitsTheFirstTimeFor200Milliseconds()
{
    Script script{.serverAtLook = 2, .earlierFor = 1};
    QCOMPARE(ServerSearch(script.steps()).run(), Result::ServerFound);
    QCOMPARE(script.pauses, QList<int>{200});
}

void ServerSearchTest::thenLooksEvery500Milliseconds()
{
    Script script{.serverAtLook = 4, .earlierFor = 9};
    QCOMPARE(ServerSearch(script.steps()).run(), Result::ServerFound);
    QCOMPARE(script.pauses, (QList<int>{200, 500, 500}));
}

/// Twenty rounds are not the end: an instance that loads a slow skin is waited for.
void ServerSearchTest::waitsForeverSinceItsAttemptsNeverGrow()
{
    Script script{.serverAtLook = 1000, .earlierFor = 2000};
    const ServerSearch search(script.steps());
    QCOMPARE(search.run(), Result::ServerFound);
    QCOMPARE(script.looks, 1000);
    QCOMPARE(search.attempts(), 0);
}

void ServerSearchTest::becomesTheFirstWhenTheEarlierInstanceHasEnded()
{
    Script script{.serverAtLook = 0, .earlierFor = 3};
    QCOMPARE(ServerSearch(script.steps()).run(), Result::NowFirst);
    QCOMPARE(script.pauses, (QList<int>{200, 500, 500, 500}));
}

void ServerSearchTest::givesUpOnlyWhenTheAttemptsAreUsedUp()
{
    Script script{.serverAtLook = 0, .earlierFor = 1000};
    QCOMPARE(ServerSearch(script.steps(), ServerSearch::MostAttempts).run(), Result::NotAnswering);
    QCOMPARE(script.pauses, QList<int>{200});
}

void ServerSearchTest::takesAServerFoundInTheLastLook()
{
    Script script{.serverAtLook = 2, .earlierFor = 1000};
    QCOMPARE(ServerSearch(script.steps(), ServerSearch::MostAttempts).run(), Result::ServerFound);
}

QTEST_GUILESS_MAIN(ServerSearchTest)
#include "tst_server_search.moc"
