#include "MainScene.h"
#include "skin/controls/KelLabel.h"
#include "ui/ConvertRequests.h"
#include "ui/FileList.h"
#include "ui/ListMenu.h"
#include "ui/PictureBox.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <functional>
#include <utility>

using namespace Quorlin;

/// The main window and what file managers ask of it: the verbs of the file types' commands.
class TestFrmMainRequests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_scene.reset(); }
    void documentsBehindTheVerbAreConverted();
    void otherVerbsOnlyAdd();
    void aRequestOfAnotherStartIsConverted();
    void theDocumentsOfTheNextRequestTakeTheirPlace();
    void whatTheUserHasGatheredIsNotConverted();
    void aRequestDuringAJobIsConvertedAfterIt();
    void documentsThatAreOnlyAddedWaitForTheRequest();
    void requestsBeforeTheWindowIsShownAreOneJob();
    void aLongSelectionIsMergedOnce();
    void theNextRequestFollowsAFailedJob();
    void aJobWaitsUntilTheOneBeforeIsDelivered();
    void clearingForgetsARequest();
    void noJobBeginsUnderAMenu();
    void noJobBeginsAfterTheEnd();
    void aWindowThatCouldNotBeLoadedStartsNothing();
    void aPendingFileMayBeARequest();

private:
    [[nodiscard]] frmMain &window() { return m_scene->window(); }
    [[nodiscard]] bool exists(const char *name) const
    {
        return QFile::exists(m_scene->folder().path(name));
    }
    [[nodiscard]] QString request(const QList<const char *> &names) const;
    void ask(const QList<const char *> &names) { window().AddCommandLineFiles(request(names)); }
    [[nodiscard]] bool isIdleWith(const QList<const char *> &results);
    [[nodiscard]] bool duringAJobOf(const char *name, const std::function<void()> &act);
    [[nodiscard]] QStringList names();

    std::unique_ptr<MainScene> m_scene;
};

namespace {

constexpr int LongestJob = 20'000;
constexpr int Longer = int(ConvertRequests::Quiet.count()) * 2;

/// Sees what is shown while a job runs come, once.
class Beginning : public QObject
{
public:
    explicit Beginning(std::function<void()> act) : m_act(std::move(act)) {}

    bool hasCome = false;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Show && !std::exchange(hasCome, true))
            m_act();
        return false;
    }

private:
    std::function<void()> m_act;
};

} // namespace

void TestFrmMainRequests::init()
{
    m_scene = std::make_unique<MainScene>();
    m_scene->open();
}

QString TestFrmMainRequests::request(const QList<const char *> &names) const
{
    QStringList items{QStringLiteral("/p")};
    for (const auto *const name : names)
        items.append(m_scene->write(name));
    return items.join(QLatin1Char(','));
}

bool TestFrmMainRequests::isIdleWith(const QList<const char *> &results)
{
    const auto isThere = [this](const char *name) { return exists(name); };
    return QTest::qWaitFor(
        [&] { return std::ranges::all_of(results, isThere) && !window().AtWork(); }, LongestJob);
}

/// Asks for a job of this document, and acts when it has begun.
bool TestFrmMainRequests::duringAJobOf(const char *name, const std::function<void()> &act)
{
    Beginning beginning(act);
    window().PctInfo->installEventFilter(&beginning);
    ask({name});
    return QTest::qWaitFor([&] { return beginning.hasCome; }, LongestJob);
}

QStringList TestFrmMainRequests::names()
{
    QStringList all;
    for (int row = 0; row < window().LstFile->count(); ++row)
        all.append(window().LstFile->item(row)->text());
    return all;
}

void TestFrmMainRequests::documentsBehindTheVerbAreConverted()
{
    ask({"a.txt", "b.txt"});
    QVERIFY(window().isTakingIn());
    QVERIFY(isIdleWith({"a.pdf", "b.pdf"}));
    QCOMPARE(window().DocFullNameList(),
             QStringList({m_scene->folder().path("a.txt"), m_scene->folder().path("b.txt")}));
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestFrmMainRequests::otherVerbsOnlyAdd()
{
    window().AddCommandLineFiles(QStringLiteral("/n"));
    window().AddCommandLineFiles(QStringLiteral("/p"));
    window().AddCommandLineFiles(QStringLiteral("/a,") + m_scene->write("a.txt"));
    QVERIFY(m_scene->hasDocuments(1));
    QTest::qWait(Longer);
    QVERIFY(!window().AtWork());
    QCOMPARE(names(), QStringList{QStringLiteral("a.txt")});
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestFrmMainRequests::aRequestOfAnotherStartIsConverted()
{
    window().ReceiveMessage(request({"a.txt"}));
    QVERIFY(isIdleWith({"a.pdf"}));
}

void TestFrmMainRequests::theDocumentsOfTheNextRequestTakeTheirPlace()
{
    ask({"a.txt"});
    QVERIFY(isIdleWith({"a.pdf"}));
    QVERIFY(QFile::remove(m_scene->folder().path("a.pdf")));
    ask({"b.txt"});
    QVERIFY(isIdleWith({"b.pdf"}));
    QCOMPARE(names(), QStringList{QStringLiteral("b.txt")});
    QVERIFY(!exists("a.pdf"));
}

void TestFrmMainRequests::whatTheUserHasGatheredIsNotConverted()
{
    m_scene->fill({"mine.txt"});
    ask({"a.txt"});
    QVERIFY(m_scene->hasDocuments(2));
    QTest::qWait(Longer);
    QVERIFY(!window().AtWork());
    QVERIFY(!exists("a.pdf"));
    QVERIFY(m_scene->convert());
    QVERIFY(isIdleWith({"mine.pdf", "a.pdf"}));
}

void TestFrmMainRequests::aRequestDuringAJobIsConvertedAfterIt()
{
    window().OptLink->setChecked(true);
    QVERIFY(duringAJobOf("a.txt", [this] { window().ReceiveMessage(request({"b.txt"})); }));
    QVERIFY(isIdleWith({"a.pdf", "b.pdf"}));
    QCOMPARE(names(), QStringList{QStringLiteral("b.txt")});
    // Neither job has had two documents.
    QVERIFY(m_scene->dialogs.questions.isEmpty());
}

void TestFrmMainRequests::documentsThatAreOnlyAddedWaitForTheRequest()
{
    QVERIFY(duringAJobOf("a.txt", [this] {
        window().AddCommandLineFiles(m_scene->write("mine.txt"));
        window().AddCommandLineFiles(request({"b.txt"}));
    }));
    QVERIFY(isIdleWith({"a.pdf", "b.pdf"}));
    QTRY_COMPARE(names(), QStringList({QStringLiteral("b.txt"), QStringLiteral("mine.txt")}));
    QVERIFY(!exists("mine.pdf"));
}

void TestFrmMainRequests::requestsBeforeTheWindowIsShownAreOneJob()
{
    auto &window = m_scene->make();
    QVERIFY(window.load());
    window.ReceiveMessage(request({"a.txt"}));
    window.ReceiveMessage(request({"b.txt"}));
    QTest::qWait(Longer);
    QVERIFY(!window.AtWork());
    window.show();
    window.LstFile->clear();
    QVERIFY(isIdleWith({"a.pdf", "b.pdf"}));
    QCOMPARE(names().size(), 2);
}

void TestFrmMainRequests::aLongSelectionIsMergedOnce()
{
    window().OptLink->setChecked(true);
    m_scene->dialogs.target = m_scene->folder().path("all.pdf");
    for (const auto *const name : {"a.txt", "b.txt", "c.txt"}) {
        ask({name});
        QTest::qWait(20);
    }
    QVERIFY(isIdleWith({"all.pdf"}));
    QCOMPARE(m_scene->dialogs.questions.size(), 1);
    QFile merged(m_scene->dialogs.target);
    QVERIFY(merged.open(QIODevice::ReadOnly));
    const auto content = merged.readAll();
    for (const auto *const name : {"a.txt", "b.txt", "c.txt"})
        QVERIFY2(content.contains(name), name);
}

void TestFrmMainRequests::theNextRequestFollowsAFailedJob()
{
    ask({"fail.txt", "a.txt"});
    QTRY_VERIFY_WITH_TIMEOUT(m_scene->messages.all().size() == 2 && !window().AtWork(), LongestJob);
    QCOMPARE(names().size(), 2);
    ask({"b.txt"});
    QVERIFY(isIdleWith({"b.pdf"}));
    QCOMPARE(names(), QStringList{QStringLiteral("b.txt")});
    QVERIFY(!exists("a.pdf"));
}

/// The window is idle after the first result; the next one cannot take its name, and is told.
void TestFrmMainRequests::aJobWaitsUntilTheOneBeforeIsDelivered()
{
    const auto folder = m_scene->folder().makeFolder("b.pdf");
    int told = 0;
    m_scene->messages.setWhileShown([&] {
        ++told;
        QVERIFY(!window().AtWork());
        ask({"d.txt"});
        QTest::qWait(Longer);
        QVERIFY(!window().AtWork());
        QCOMPARE(names().size(), 3);
    });
    ask({"a.txt", "b.txt", "c.txt"});
    QVERIFY(isIdleWith({"a.pdf", "c.pdf", "d.pdf"}));
    QCOMPARE(told, 1);
    QCOMPARE(names(), QStringList{QStringLiteral("d.txt")});
    QVERIFY(QDir(folder).exists());
}

void TestFrmMainRequests::clearingForgetsARequest()
{
    ask({"a.txt"});
    window().findChild<ListMenu *>()->ss_lst_clear->trigger();
    QTest::qWait(Longer);
    QVERIFY(names().isEmpty());
    ask({"b.txt"});
    QVERIFY(isIdleWith({"b.pdf"}));
    QVERIFY(!exists("a.pdf"));
}

void TestFrmMainRequests::noJobBeginsUnderAMenu()
{
    Q_EMIT window().LstFile->menuAsked({100, 100});
    auto &menu = *window().findChild<ListMenu *>();
    QTRY_VERIFY(menu.isVisible());
    ask({"a.txt"});
    QTest::qWait(Longer);
    QVERIFY(names().isEmpty());
    QVERIFY(!window().AtWork());
    menu.close();
    QVERIFY(isIdleWith({"a.pdf"}));
}

void TestFrmMainRequests::noJobBeginsAfterTheEnd()
{
    ask({"a.txt"});
    QVERIFY(m_scene->hasDocuments(1));
    window().endBySystem();
    QTest::qWait(Longer);
    QVERIFY(!window().AtWork());
    QVERIFY(!exists("a.pdf"));
}

void TestFrmMainRequests::aWindowThatCouldNotBeLoadedStartsNothing()
{
    m_scene->setComponent(QStringLiteral("/nowhere/quorlin-pdf"));
    auto &window = m_scene->make();
    QVERIFY(!window.load());
    window.AddCommandLineFiles(request({"a.txt"}));
    QTest::qWait(Longer);
    QVERIFY(!window.AtWork());
    QVERIFY(window.DocFullNameList().isEmpty());
}

void TestFrmMainRequests::aPendingFileMayBeARequest()
{
    m_scene->remember("File", request({"a.txt"}));
    window().ReadPendingFile();
    QVERIFY(isIdleWith({"a.pdf"}));
}

QTEST_MAIN(TestFrmMainRequests)
#include "tst_frmmain_requests.moc"
