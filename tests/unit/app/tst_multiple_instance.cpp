#include "InstanceScene.h"
#include "MarkedWindow.h"

#include "app/mdlMultipleInstanceDialog.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

using namespace Quorlin;

/// The module in this process, mostly as the server; other instances are processes.
class MultipleInstanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void cutsATextOf3000CharactersToItsFirst2048();
    void handsTwoQuickTextsOnInTheirOrder();
    void neverSendsAnEmptyText();
    void restoresAMinimisedServerBeforeItComesToTheFront();
    void bringsAServerToTheFrontThatIsNotMinimised();
    void handsOnTheTokenOfTheSendersDesktop();
    void keepsAMaximisedWindowMaximised();
    void sendsNothingWithoutAServer();
    void forgetsTheServerWithTheNextSearch();
    void findsNoServerBeforeAWindowIsHooked();
    void isTheFirstWhenNobodyHoldsTheMark();
    void endsInTwoSecondsWhenTheServerNeverAnswers();
    void receivesWhileAnotherEventLoopRuns();
    void onlyStoresInTheHandler();
    void handsOnTextsWhateverTheirTag();
    void bearsAWindowWithoutTheMember();
    void ignoresNoWindow();
    void isUnhookedWithItsWindow();
    void mayBeHookedAgain();
    void runsOnItsOwnAndSaysSoWithoutASafeFolder();

private:
    std::unique_ptr<InstanceScene> m_scene;
    std::unique_ptr<MarkedWindow> m_window;
};

void MultipleInstanceTest::init()
{
    m_scene = std::make_unique<InstanceScene>();
    mdlMultipleInstanceDialog::useFolder(m_scene->folder());
    m_window = std::make_unique<MarkedWindow>();
    m_window->show();
    mdlMultipleInstanceDialog::pHook(m_window.get());
}

void MultipleInstanceTest::cleanup()
{
    mdlMultipleInstanceDialog::pUnhook();
    m_window.reset();
    m_scene.reset();
}

void MultipleInstanceTest::cutsATextOf3000CharactersToItsFirst2048()
{
    QString text;
    for (int index = 0; index < 3000; ++index)
        text.append(QChar(u'a' + index % 26));
    const auto sender = m_scene->run("send", text);
    QVERIFY(sender->endsWell());
    QCOMPARE(m_window->texts, QStringList{text.left(2048)});
}

/// The window joins them; here they arrive one by one.
void MultipleInstanceTest::handsTwoQuickTextsOnInTheirOrder()
{
    const auto first = m_scene->run("send", QStringLiteral("a.doc"));
    QVERIFY(first->endsWell());
    const auto second = m_scene->run("send", QStringLiteral("b.doc"));
    QVERIFY(second->endsWell());
    QCOMPARE(m_window->texts, (QStringList{QStringLiteral("a.doc"), QStringLiteral("b.doc")}));
}

/// Not even the window comes to the front.
void MultipleInstanceTest::neverSendsAnEmptyText()
{
    m_window->setWindowState(Qt::WindowMinimized);
    QVERIFY(mdlMultipleInstanceDialog::GetServer());
    mdlMultipleInstanceDialog::SendData({});
    const auto sender = m_scene->run("send", QStringLiteral("after"));
    QVERIFY(sender->endsWell());
    QCOMPARE(m_window->texts, QStringList{QStringLiteral("after")});
    QTRY_VERIFY(!m_window->isMinimized());
}

void MultipleInstanceTest::restoresAMinimisedServerBeforeItComesToTheFront()
{
    QWidget other;
    other.show();
    m_window->setWindowState(Qt::WindowMinimized);
    other.activateWindow();
    QTRY_VERIFY(other.isActiveWindow());
    bool wasMinimised = true;
    connect(qApp, &QApplication::focusWindowChanged, m_window.get(),
            [&] { wasMinimised = m_window->isMinimized(); });
    const auto sender = m_scene->run("send", QStringLiteral("a.doc"));
    QVERIFY(sender->endsWell());
    QTRY_VERIFY(m_window->isActiveWindow());
    QVERIFY(!wasMinimised);
    QVERIFY(!m_window->isMinimized());
}

void MultipleInstanceTest::bringsAServerToTheFrontThatIsNotMinimised()
{
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_VERIFY(other.isActiveWindow());
    const auto sender = m_scene->run("send", QStringLiteral("a.doc"));
    QVERIFY(sender->endsWell());
    QTRY_VERIFY(m_window->isActiveWindow());
}

void MultipleInstanceTest::handsOnTheTokenOfTheSendersDesktop()
{
    m_window->setWindowState(Qt::WindowMinimized);
    qputenv("XDG_ACTIVATION_TOKEN", "token-1");
    const auto sender = m_scene->run("send", QStringLiteral("a.doc"));
    qunsetenv("XDG_ACTIVATION_TOKEN");
    QVERIFY(sender->endsWell());
    QTRY_VERIFY(!m_window->isMinimized());
    QCOMPARE(m_window->tokenAtChange, QByteArray("token-1"));
    QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

void MultipleInstanceTest::keepsAMaximisedWindowMaximised()
{
    m_window->setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
    const auto sender = m_scene->run("send", QStringLiteral("a.doc"));
    QVERIFY(sender->endsWell());
    QTRY_VERIFY(!m_window->isMinimized());
    QVERIFY(m_window->isMaximized());
}

void MultipleInstanceTest::sendsNothingWithoutAServer()
{
    mdlMultipleInstanceDialog::pUnhook();
    const auto sender = m_scene->run("send", QStringLiteral("a.doc"));
    QVERIFY(sender->endsWell());
    QCOMPARE(sender->lines(), QStringList{QStringLiteral("nobody")});
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!mdlMultipleInstanceDialog::GetServer());
    mdlMultipleInstanceDialog::SendData(QStringLiteral("b.doc"));
    mdlMultipleInstanceDialog::RestoreAndActivate();
    QVERIFY(clock.elapsed() < 1000);
    QVERIFY(m_window->texts.isEmpty());
}

void MultipleInstanceTest::forgetsTheServerWithTheNextSearch()
{
    QVERIFY(mdlMultipleInstanceDialog::GetServer());
    mdlMultipleInstanceDialog::pUnhook();
    QVERIFY(!mdlMultipleInstanceDialog::GetServer());
}

void MultipleInstanceTest::findsNoServerBeforeAWindowIsHooked()
{
    mdlMultipleInstanceDialog::pUnhook();
    QVERIFY(!mdlMultipleInstanceDialog::PrevInstance());
    QVERIFY(!mdlMultipleInstanceDialog::GetServer());
    QCOMPARE(InstanceChannel(m_scene->folder()).claim(), InstanceChannel::Mark::Others);
}

void MultipleInstanceTest::isTheFirstWhenNobodyHoldsTheMark()
{
    QVERIFY(!mdlMultipleInstanceDialog::PrevInstance());
    mdlMultipleInstanceDialog::pUnhook();
    InstanceChannel other(m_scene->folder());
    QCOMPARE(other.claim(), InstanceChannel::Mark::Ours);
    QVERIFY(mdlMultipleInstanceDialog::PrevInstance());
    other.giveUp();
    QVERIFY(!mdlMultipleInstanceDialog::PrevInstance());
    QVERIFY(!mdlMultipleInstanceDialog::PrevInstance());
}

/// It listens and holds the mark, and its thread does nothing: that is this one, while it waits.
void MultipleInstanceTest::endsInTwoSecondsWhenTheServerNeverAnswers()
{
    QVERIFY(mdlMultipleInstanceDialog::GetServer());
    m_window->setWindowState(Qt::WindowMinimized);
    QElapsedTimer clock;
    clock.start();
    mdlMultipleInstanceDialog::SendData(QStringLiteral("a.doc"));
    const auto took = clock.elapsed();
    QVERIFY2(took >= 1900 && took < 4000, qPrintable(QString::number(took)));
    QVERIFY(m_window->texts.isEmpty());
    QTRY_COMPARE(m_window->texts, QStringList{QStringLiteral("a.doc")});
    QTRY_VERIFY2(!m_window->isMinimized(), "the window must come in any case");
}

void MultipleInstanceTest::receivesWhileAnotherEventLoopRuns()
{
    QEventLoop nested;
    m_window->whileReceiving = [&nested] { nested.quit(); };
    const auto sender = m_scene->run("send", QStringLiteral("a.doc"));
    QTimer::singleShot(30000, &nested, &QEventLoop::quit);
    nested.exec();
    QCOMPARE(m_window->texts, QStringList{QStringLiteral("a.doc")});
    QVERIFY(sender->endsWell());
}

/// The text reaches the member while its sender still waits, so the member must only keep it.
void MultipleInstanceTest::onlyStoresInTheHandler()
{
    std::unique_ptr<Runner> sender;
    bool waited = false;
    m_window->whileReceiving = [&] { waited = sender->isRunning(); };
    sender = m_scene->run("send", QStringLiteral("a.doc"));
    QVERIFY(sender->endsWell());
    QVERIFY(waited);
}

void MultipleInstanceTest::handsOnTextsWhateverTheirTag()
{
    mdlMultipleInstanceDialog::WindowProc({HandoffFrame::Kind::Text, 77, "a.doc\0b"});
    mdlMultipleInstanceDialog::pReceiveMsg({HandoffFrame::Kind::Text, 3, QByteArray("b\0c", 3)});
    QCOMPARE(m_window->texts, (QStringList{QStringLiteral("a.doc"), QStringLiteral("b")}));
}

void MultipleInstanceTest::bearsAWindowWithoutTheMember()
{
    QWidget plain;
    mdlMultipleInstanceDialog::pHook(&plain);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("No such method")));
    mdlMultipleInstanceDialog::pReceiveMsg(HandoffFrame::ofText(QStringLiteral("a.doc")));
    QVERIFY(m_window->texts.isEmpty());
    mdlMultipleInstanceDialog::pUnhook();
}

void MultipleInstanceTest::ignoresNoWindow()
{
    mdlMultipleInstanceDialog::pHook(nullptr);
    mdlMultipleInstanceDialog::pReceiveMsg(HandoffFrame::ofText(QStringLiteral("a.doc")));
    QCOMPARE(m_window->texts.size(), 1);
    mdlMultipleInstanceDialog::pUnhook();
    mdlMultipleInstanceDialog::pReceiveMsg(HandoffFrame::ofText(QStringLiteral("b.doc")));
    mdlMultipleInstanceDialog::WindowProc(HandoffFrame::ofActivation({}));
    QCOMPARE(m_window->texts.size(), 1);
}

void MultipleInstanceTest::isUnhookedWithItsWindow()
{
    InstanceChannel other(m_scene->folder());
    QCOMPARE(other.claim(), InstanceChannel::Mark::Others);
    m_window.reset();
    QCOMPARE(other.claim(), InstanceChannel::Mark::Ours);
}

void MultipleInstanceTest::mayBeHookedAgain()
{
    mdlMultipleInstanceDialog::pUnhook();
    mdlMultipleInstanceDialog::pHook(m_window.get());
    mdlMultipleInstanceDialog::pHook(m_window.get());
    const auto sender = m_scene->run("send", QStringLiteral("a.doc"));
    QVERIFY(sender->endsWell());
    QCOMPARE(m_window->texts, QStringList{QStringLiteral("a.doc")});
}

void MultipleInstanceTest::runsOnItsOwnAndSaysSoWithoutASafeFolder()
{
    TestFolder folder;
    mdlMultipleInstanceDialog::useFolder(folder.write("file", "no folder"));
    const auto warning = QStringLiteral("There is no safe folder in which to meet other "
                                        "instances; this one runs on its own.");
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    QVERIFY(!mdlMultipleInstanceDialog::PrevInstance());
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    mdlMultipleInstanceDialog::pHook(m_window.get());
    QVERIFY(!mdlMultipleInstanceDialog::GetServer());
    mdlMultipleInstanceDialog::SendData(QStringLiteral("a.doc"));
    QVERIFY(m_window->findChildren<QTimer *>().isEmpty());
}

QTEST_MAIN(MultipleInstanceTest)
#include "tst_multiple_instance.moc"
