#include "InstanceScene.h"

#include "support/SystemActions.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

#include <list>

using namespace Quorlin;
using Mark = InstanceChannel::Mark;

namespace {

constexpr int Starts = 50;
constexpr int MostMilliseconds = 30000;

} // namespace

/// Whole instances, one process each.
class InstanceProcessesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<InstanceScene>(); }
    void cleanup();
    void handsItsTextToTheEarlierInstance();
    void opensASecondWindowWithoutDocuments();
    void doesNotCountALockThatACrashLeft();
    void doesNotGiveTheLockToProgramsThatItStarts();
    void takesTheMarkOverWhenTheMarkedWindowCloses();
    void takesTheMarkOverWhenTheMarkedProcessIsKilled();
    void waitsForAnInstanceThatIsStillStarting();
    void becomesTheFirstWhenTheStartingInstanceDies();
    void hasOneServerAmongFiftyStartsAtOnce();
    void hasOneServerAmongFiftyStartsAfterAKill();

private:
    std::unique_ptr<InstanceScene> m_scene;
    std::list<std::unique_ptr<Runner>> m_starts;

    void startFifty();
    void checkFifty();
    [[nodiscard]] int running() const;
};

void InstanceProcessesTest::cleanup()
{
    m_starts.clear();
    m_scene.reset();
}

void InstanceProcessesTest::handsItsTextToTheEarlierInstance()
{
    const auto server = m_scene->run("start", QStringLiteral("own.doc"));
    QVERIFY(server->says("window"));
    const auto second = m_scene->run("start", QStringLiteral("/d/ä 第.doc,/d/b.doc"));
    QVERIFY(second->endsWell());
    QCOMPARE(second->lines(), (QStringList{QStringLiteral("waiting"), QStringLiteral("sent")}));
    QVERIFY(server->says("got /d/ä 第.doc,/d/b.doc"));
    QVERIFY(server->isRunning());
}

void InstanceProcessesTest::opensASecondWindowWithoutDocuments()
{
    const auto server = m_scene->run("start");
    QVERIFY(server->says("window"));
    const auto second = m_scene->run("start");
    QVERIFY(second->says("window"));
    const auto sender = m_scene->run("start", QStringLiteral("a.doc"));
    QVERIFY(server->says("got a.doc"));
    QCOMPARE(second->lines(), QStringList{QStringLiteral("window")});
}

void InstanceProcessesTest::doesNotCountALockThatACrashLeft()
{
    auto server = m_scene->run("start", QStringLiteral("own.doc"));
    QVERIFY(server->says("window"));
    server->kill();
    QVERIFY(QFileInfo::exists(m_scene->lockPath()));
    QCOMPARE(namesIn(m_scene->folder()).size(), 2);
    const auto next = m_scene->run("start", QStringLiteral("own.doc"));
    QVERIFY(next->says("window"));
    const auto sender = m_scene->run("send", QStringLiteral("a.doc"));
    QVERIFY(next->says("got a.doc"));
}

void InstanceProcessesTest::doesNotGiveTheLockToProgramsThatItStarts()
{
    auto server = m_scene->run("parent", QStringLiteral("own.doc"));
    QVERIFY(server->says("window"));
    const auto child = server->lines().constFirst().mid(6).toLongLong();
    QVERIFY(SystemActions::isRunning(child));
    server->kill();
    InstanceChannel channel(m_scene->folder());
    const auto mark = channel.claim();
    const bool isThere = channel.isServerThere();
    const bool outlived = SystemActions::isRunning(child);
    SystemActions::kill(child);
    QVERIFY(outlived);
    QVERIFY(!isThere);
    QCOMPARE(mark, Mark::Ours);
}

void InstanceProcessesTest::takesTheMarkOverWhenTheMarkedWindowCloses()
{
    const auto server = m_scene->run("start");
    QVERIFY(server->says("window"));
    const auto second = m_scene->run("start");
    QVERIFY(second->says("window"));
    server->close();
    QVERIFY(server->endsWell());
    const InstanceChannel channel(m_scene->folder());
    QTRY_VERIFY(channel.isServerThere());
    const auto sender = m_scene->run("start", QStringLiteral("a.doc"));
    QVERIFY(second->says("got a.doc"));
    QVERIFY(sender->endsWell());
}

void InstanceProcessesTest::takesTheMarkOverWhenTheMarkedProcessIsKilled()
{
    const auto server = m_scene->run("start");
    QVERIFY(server->says("window"));
    const auto second = m_scene->run("start");
    QVERIFY(second->says("window"));
    server->kill();
    const InstanceChannel channel(m_scene->folder());
    QTRY_VERIFY(channel.isServerThere());
    const auto sender = m_scene->run("start", QStringLiteral("a.doc"));
    QVERIFY(second->says("got a.doc"));
}

/// It holds the mark already and has no window yet.
void InstanceProcessesTest::waitsForAnInstanceThatIsStillStarting()
{
    InstanceChannel starting(m_scene->folder());
    QCOMPARE(starting.claim(), Mark::Ours);
    const auto second = m_scene->run("start", QStringLiteral("a.doc"));
    QVERIFY(second->says("waiting"));
    QStringList texts;
    QVERIFY(starting.listen([&](const HandoffFrame &frame) {
        if (frame.kind == HandoffFrame::Kind::Text)
            texts.append(frame.text());
    }));
    QVERIFY(second->endsWell());
    QCOMPARE(texts, QStringList{QStringLiteral("a.doc")});
}

void InstanceProcessesTest::becomesTheFirstWhenTheStartingInstanceDies()
{
    InstanceChannel starting(m_scene->folder());
    QCOMPARE(starting.claim(), Mark::Ours);
    const auto second = m_scene->run("start", QStringLiteral("a.doc"));
    QVERIFY(second->says("waiting"));
    starting.giveUp();
    QVERIFY(second->says("window"));
}

void InstanceProcessesTest::startFifty()
{
    for (int number = 0; number < Starts; ++number)
        m_starts.push_back(m_scene->run("start", QStringLiteral("text %1").arg(number)));
}

int InstanceProcessesTest::running() const
{
    return static_cast<int>(
        std::ranges::count_if(m_starts, [](const auto &start) { return start->isRunning(); }));
}

void InstanceProcessesTest::checkFifty()
{
    QElapsedTimer clock;
    clock.start();
    QTRY_COMPARE_WITH_TIMEOUT(running(), 1, MostMilliseconds);
    qInfo("%d starts ended %lld ms after the last began", Starts - 1, clock.elapsed());
    const auto server =
        std::ranges::find_if(m_starts, [](const auto &start) { return start->isRunning(); });
    QTRY_COMPARE((*server)->lines().filter(QStringLiteral("got text ")).size(), Starts - 1);
    const auto got = (*server)->lines().filter(QStringLiteral("got text "));
    QCOMPARE(QSet<QString>(got.begin(), got.end()).size(), Starts - 1);
    QVERIFY((*server)->has("window"));
    for (const auto &start : m_starts) {
        if (start == *server)
            continue;
        QVERIFY(start->endsWell());
        QCOMPARE(start->lines(), (QStringList{QStringLiteral("waiting"), QStringLiteral("sent")}));
    }
}

void InstanceProcessesTest::hasOneServerAmongFiftyStartsAtOnce()
{
    startFifty();
    checkFifty();
}

void InstanceProcessesTest::hasOneServerAmongFiftyStartsAfterAKill()
{
    const auto server = m_scene->run("start", QStringLiteral("own.doc"));
    QVERIFY(server->says("window"));
    server->kill();
    startFifty();
    checkFifty();
}

QTEST_GUILESS_MAIN(InstanceProcessesTest)
#include "tst_instance_processes.moc"
