#include "InstanceScene.h"

#include "app/InstanceConnection.h"
#include "app/InstanceServer.h"
#include "app/LocalSocket.h"
#include "support/SystemActions.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

#include <ctime>
#include <limits>
#include <list>

using namespace Quorlin;
using Mark = InstanceChannel::Mark;

class InstanceChannelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isServedByTheHolderOfTheMarkOnly();
    void hasNoServerBeforeSomebodyListens();
    void carriesATextAndTellsTheSender();
    void carriesTextsInTheOrderOfTheirSending();
    void takesATextWhoseSenderIsGone();
    void takesTheTextsOfFiftyAtOnce();
    void takesOneTextOnlyFromAConnection();
    void ignoresGarbage_data();
    void ignoresGarbage();
    void ignoresRandomBytes();
    void hangsUpOnWhoStaysSilent();
    void hangsUpOnWhoSpeaksTooSlowly();
    void servesOthersWhileManyStaySilent();
    void limitsTheConnections();
    void staysUsableWhenTheSystemHasNoMoreFiles();
    void endsItsSendingAfterTwoSeconds();
    void triesAgainWhileTheMarkChangesHands();
    void mayBeGivenUpByTheHandler();
    void mayHandleEventsInTheHandler();
    void replacesADeadSocket();
    void takesItsNameAwayWhenGivenUp();
    void isQuickAtStart();

private:
    std::unique_ptr<InstanceScene> m_scene;
    std::unique_ptr<InstanceChannel> m_channel;
    QStringList m_texts;

    void listen();
    [[nodiscard]] Descriptor speak(const QByteArray &bytes) const;
};

namespace {

QByteArray frameOf(const char *text)
{
    return HandoffFrame::ofText(QString::fromUtf8(text)).encoded();
}

/// Whether the other end has hung up; what it said before is passed over.
bool hasHungUp(const Descriptor &socket)
{
    char byte = 0;
    qsizetype count = 0;
    auto outcome = LocalSocket::Outcome::Done;
    while (outcome == LocalSocket::Outcome::Done)
        outcome = LocalSocket::receive(socket, &byte, 1, count);
    return outcome == LocalSocket::Outcome::Closed;
}

} // namespace

void InstanceChannelTest::init()
{
    m_texts.clear();
    m_scene = std::make_unique<InstanceScene>();
    m_channel = std::make_unique<InstanceChannel>(m_scene->folder());
    QCOMPARE(m_channel->claim(), Mark::Ours);
}

void InstanceChannelTest::cleanup()
{
    m_channel.reset();
    m_scene.reset();
}

void InstanceChannelTest::listen()
{
    QVERIFY(m_channel->listen([this](const HandoffFrame &frame) { m_texts.append(frame.text()); }));
}

Descriptor InstanceChannelTest::speak(const QByteArray &bytes) const
{
    auto socket = m_scene->connected();
    const bool isSent = LocalSocket::sendAll(socket, bytes, QDeadlineTimer(500));
    return isSent ? std::move(socket) : Descriptor(-1);
}

void InstanceChannelTest::isServedByTheHolderOfTheMarkOnly()
{
    InstanceChannel other(m_scene->folder());
    QCOMPARE(other.claim(), Mark::Others);
    QVERIFY(!other.listen([](const HandoffFrame &) {}));
    listen();
    QVERIFY(other.isServerThere());
    m_channel->giveUp();
    QVERIFY(!other.isServerThere());
    QCOMPARE(other.claim(), Mark::Ours);
    QCOMPARE(m_channel->claim(), Mark::Others);
}

void InstanceChannelTest::hasNoServerBeforeSomebodyListens()
{
    QVERIFY(!InstanceChannel(m_scene->folder()).isServerThere());
}

void InstanceChannelTest::carriesATextAndTellsTheSender()
{
    listen();
    const SenderThread sender(m_scene->folder(), QStringLiteral("/d/é 第 😀.doc,/d/b.doc"));
    QTRY_COMPARE(sender.result(), 1);
    QCOMPARE(m_texts, QStringList{QStringLiteral("/d/é 第 😀.doc,/d/b.doc")});
}

void InstanceChannelTest::carriesTextsInTheOrderOfTheirSending()
{
    listen();
    QStringList sent;
    for (int number = 0; number < 20; ++number) {
        sent.append(QString::number(number));
        QVERIFY(m_channel->post(HandoffFrame::ofText(sent.last())));
    }
    QTRY_COMPARE(m_texts, sent);
}

/// A server that was busy for longer than its sender waits loses nothing.
void InstanceChannelTest::takesATextWhoseSenderIsGone()
{
    listen();
    QVERIFY(speak(frameOf("late")).isOpen());
    QTRY_COMPARE(m_texts, QStringList{QStringLiteral("late")});
}

void InstanceChannelTest::takesTheTextsOfFiftyAtOnce()
{
    listen();
    std::list<SenderThread> senders;
    for (int number = 0; number < 50; ++number)
        senders.emplace_back(m_scene->folder(), QString::number(number));
    QTRY_COMPARE_WITH_TIMEOUT(m_texts.size(), 50, 20000);
    for (const auto &sender : senders)
        QTRY_COMPARE(sender.result(), 1);
    QCOMPARE(QSet<QString>(m_texts.begin(), m_texts.end()).size(), 50);
}

void InstanceChannelTest::takesOneTextOnlyFromAConnection()
{
    listen();
    const auto socket = speak(frameOf("one") + frameOf("two"));
    QTRY_VERIFY(hasHungUp(socket));
    QCOMPARE(m_texts, QStringList{QStringLiteral("one")});
}

void InstanceChannelTest::ignoresGarbage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const auto good = frameOf("a.doc");
    QTest::newRow("another protocol") << QByteArray("GET / HTTP/1.1\r\n\r\n");
    QTest::newRow("magic of somebody else") << "QRLM" + good.mid(4);
    QTest::newRow("another version") << good.left(4) + '\2' + good.mid(5);
    QTest::newRow("huge count") << good.left(12) + QByteArray(4, '\xFF') + QByteArray(20000, 'x');
    QTest::newRow("no bytes") << good.left(12) + QByteArray(4, '\0');
    QTest::newRow("zero bytes") << QByteArray(100, '\0');
}

void InstanceChannelTest::ignoresGarbage()
{
    QFETCH(const QByteArray, bytes);
    listen();
    const auto socket = speak(bytes);
    QVERIFY(socket.isOpen());
    QTRY_VERIFY(hasHungUp(socket));
    const auto after = speak(frameOf("good"));
    QTRY_COMPARE(m_texts, QStringList{QStringLiteral("good")});
}

void InstanceChannelTest::ignoresRandomBytes()
{
    listen();
    QRandomGenerator random(7);
    for (int round = 0; round < 200; ++round) {
        QByteArray bytes(1 + random.bounded(500), '\0');
        std::ranges::generate(bytes, [&] { return static_cast<char>(random.bounded(256)); });
        const auto socket = speak('\xFF' + bytes);
        QTRY_VERIFY(hasHungUp(socket));
    }
    QVERIFY(m_texts.isEmpty());
}

void InstanceChannelTest::hangsUpOnWhoStaysSilent()
{
    listen();
    const auto silent = m_scene->connected();
    const auto half = speak(frameOf("a.doc").left(18));
    QElapsedTimer clock;
    clock.start();
    QTRY_VERIFY(hasHungUp(silent) && hasHungUp(half));
    QVERIFY(clock.elapsed() >= InstanceConnection::MostMilliseconds / 2);
    QVERIFY(m_texts.isEmpty());
}

/// The time is for the whole frame: a byte now and then does not hold a place.
void InstanceChannelTest::hangsUpOnWhoSpeaksTooSlowly()
{
    listen();
    const auto socket = m_scene->connected();
    const auto bytes = HandoffFrame::ofText(QString(2000, QLatin1Char('x'))).encoded();
    qsizetype next = 0;
    QTimer speaker;
    QObject::connect(&speaker, &QTimer::timeout, this, [&] {
        static_cast<void>(
            LocalSocket::sendAll(socket, bytes.mid(next++ % bytes.size(), 1), QDeadlineTimer(0)));
    });
    speaker.start(50);
    QTRY_VERIFY(hasHungUp(socket));
    QVERIFY(next > 10);
    QVERIFY(m_texts.isEmpty());
}

void InstanceChannelTest::servesOthersWhileManyStaySilent()
{
    listen();
    std::vector<Descriptor> silent;
    for (int number = 0; number < 200; ++number)
        silent.push_back(m_scene->connected());
    QVERIFY(silent.back().isOpen());
    const SenderThread sender(m_scene->folder(), QStringLiteral("a.doc"));
    QTRY_COMPARE(sender.result(), 1);
    QCOMPARE(m_texts, QStringList{QStringLiteral("a.doc")});
}

void InstanceChannelTest::limitsTheConnections()
{
    m_channel->giveUp();
    InstanceServer server(LocalSocket::listenAt(m_scene->socketPath()),
                          [](const HandoffFrame &) {});
    std::vector<Descriptor> silent;
    for (int number = 0; number < 200; ++number)
        silent.push_back(m_scene->connected());
    QTRY_VERIFY(hasHungUp(silent.at(200 - InstanceServer::MostConnections - 1)));
    QCOMPARE(server.connections(), InstanceServer::MostConnections);
    QVERIFY(!hasHungUp(silent.back()));
    QTRY_COMPARE(server.connections(), 0);
}

/// The caller must not be kept busy by a connection that it cannot accept.
void InstanceChannelTest::staysUsableWhenTheSystemHasNoMoreFiles()
{
    listen();
    const auto waiting = speak(frameOf("a.doc"));
    const auto before = SystemActions::limitOpenFiles(3);
    const auto processor = std::clock();
    QElapsedTimer clock;
    clock.start();
    QTRY_VERIFY(clock.elapsed() > 300);
    const auto used = (std::clock() - processor) * 1000 / CLOCKS_PER_SEC;
    const auto textsMeanwhile = m_texts.size();
    SystemActions::limitOpenFiles(before);
    QCOMPARE(textsMeanwhile, 0);
    QVERIFY2(used < 150, qPrintable(QString::number(used)));
    QTRY_COMPARE(m_texts, QStringList{QStringLiteral("a.doc")});
}

/// The server's thread does nothing here, as when its window is blocked.
void InstanceChannelTest::endsItsSendingAfterTwoSeconds()
{
    listen();
    const InstanceChannel sender(m_scene->folder());
    QVERIFY2(sender.isServerThere(), "a busy server must be found, too");
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!sender.deliver(HandoffFrame::ofText(QStringLiteral("a.doc"))));
    const auto took = clock.elapsed();
    QVERIFY2(took >= 1900 && took < 4000, qPrintable(QString::number(took)));
    QTRY_COMPARE(m_texts, QStringList{QStringLiteral("a.doc")});
}

void InstanceChannelTest::triesAgainWhileTheMarkChangesHands()
{
    const SenderThread sender(m_scene->folder(), QStringLiteral("a.doc"));
    QElapsedTimer clock;
    clock.start();
    QTRY_VERIFY(clock.elapsed() > 100);
    QCOMPARE(sender.result(), -1);
    listen();
    QTRY_COMPARE(sender.result(), 1);
    QCOMPARE(m_texts, QStringList{QStringLiteral("a.doc")});
}

void InstanceChannelTest::mayBeGivenUpByTheHandler()
{
    QVERIFY(m_channel->listen([this](const HandoffFrame &frame) {
        m_texts.append(frame.text());
        m_channel->giveUp();
    }));
    const auto socket = speak(frameOf("a.doc"));
    const auto other = speak(frameOf("b.doc"));
    QTRY_VERIFY(hasHungUp(socket) && hasHungUp(other));
    QCOMPARE(m_texts.size(), 1);
    QVERIFY(!m_channel->isListening());
}

void InstanceChannelTest::mayHandleEventsInTheHandler()
{
    QVERIFY(m_channel->listen([this](const HandoffFrame &frame) {
        m_texts.append(frame.text());
        if (m_texts.size() == 1)
            QTRY_COMPARE(m_texts.size(), 2);
    }));
    const auto one = speak(frameOf("a.doc"));
    const auto two = speak(frameOf("b.doc"));
    QTRY_COMPARE(m_texts, (QStringList{QStringLiteral("a.doc"), QStringLiteral("b.doc")}));
    QTRY_VERIFY(hasHungUp(one) && hasHungUp(two));
}

void InstanceChannelTest::replacesADeadSocket()
{
    {
        const auto dead = LocalSocket::listenAt(m_scene->socketPath());
        QVERIFY(dead.isOpen());
    }
    QVERIFY(!m_channel->isServerThere());
    listen();
    QVERIFY(m_channel->isServerThere());
}

void InstanceChannelTest::takesItsNameAwayWhenGivenUp()
{
    listen();
    m_channel->giveUp();
    QCOMPARE(namesIn(m_scene->folder()).filter(QStringLiteral("socket")), QStringList());
}

/// The best of some tries counts: the machine may have other work.
void InstanceChannelTest::isQuickAtStart()
{
    constexpr qint64 MostToLook = 2000000;
    constexpr qint64 MostToMark = 1000000;
    auto looked = std::numeric_limits<qint64>::max();
    auto marked = looked;
    for (int round = 0; round < 20; ++round) {
        QVERIFY(m_channel->claim() == Mark::Ours);
        listen();
        QElapsedTimer clock;
        clock.start();
        InstanceChannel other(m_scene->folder());
        QVERIFY(other.claim() == Mark::Others && other.isServerThere());
        looked = std::min(looked, clock.nsecsElapsed());
        m_channel->giveUp();
        clock.restart();
        QVERIFY(other.claim() == Mark::Ours && other.listen([](const HandoffFrame &) {}));
        marked = std::min(marked, clock.nsecsElapsed());
    }
    qInfo("looked in %lld us, marked in %lld us", looked / 1000, marked / 1000);
    QVERIFY(looked < MostToLook && marked < MostToMark);
}

QTEST_GUILESS_MAIN(InstanceChannelTest)
#include "tst_instance_channel.moc"
