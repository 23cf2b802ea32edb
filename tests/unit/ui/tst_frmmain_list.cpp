#include "MainScene.h"
#include "i18n/AppText.h"
#include "skin/controls/KelLabel.h"
#include "ui/FileList.h"
#include "ui/ListMenu.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>

using namespace Quorlin;

/// The documents of the main window, and everything that the user does with them.
class TestFrmMainList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_scene.reset(); }
    void itemsOfACommandTextAreAddedFromLeftToRight();
    void aTrailingCommaAddsNothing();
    void aPathWithSpacesIsOneItem();
    void aPathWithACommaIsTwoItems();
    void aFolderGivesItsFilesBeforeThoseOfItsSubFolders();
    void theSameFileDroppedTwiceIsThereTwice();
    void everyWayInGivesTheSameOrder();
    void aRefusedPostScriptFileIsTold();
    void aFolderOfRefusedFilesIsToldInOneMessage();
    void otherRefusalsAreNotTold();
    void theAddDialogAsksForTheSupportedTypes();
    void anEmptyListOffersToAdd();
    void theMailOptionNeedsFewerThanTwoDocuments();
    void removingIsDoneByMenuAndKey();
    void clearingEmptiesTheList();
    void clearingForgetsWhatIsOnItsWay();
    void movingTheFirstToFirstKeepsItCurrent();
    void buttonsAndMenuMoveAlike_data();
    void buttonsAndMenuMoveAlike();
    void keysMove_data();
    void keysMove();
    void theKeysOfTheListAreLeftToOtherControls();
    void theListMenuOffersWhatCanBeDone();
    void openingShowsTheDocument();
    void aPendingFileIsTakenOnce();
    void aMessageIsHandledLater();
    void twoMessagesBeforeTheTimerBecomeOneItem();
    void anEmptyMessageAddsNothing();

private:
    [[nodiscard]] frmMain &window() { return m_scene->window(); }
    [[nodiscard]] ListMenu &menu() { return *window().findChild<ListMenu *>(); }
    [[nodiscard]] QStringList names();
    [[nodiscard]] bool isInStep();
    void drop(const QStringList &paths);
    void select(int row) { window().LstFile->setCurrentRow(row); }

    std::unique_ptr<MainScene> m_scene;
};

void TestFrmMainList::init()
{
    m_scene = std::make_unique<MainScene>();
    m_scene->open();
}

QStringList TestFrmMainList::names()
{
    QStringList all;
    for (int row = 0; row < window().LstFile->count(); ++row)
        all.append(window().LstFile->item(row)->text());
    return all;
}

bool TestFrmMainList::isInStep()
{
    QStringList expected;
    for (const auto &path : window().DocFullNameList())
        expected.append(frmMain::GetNameFromFullPath(path));
    return names() == expected;
}

void TestFrmMainList::drop(const QStringList &paths)
{
    QList<QUrl> addresses;
    for (const auto &path : paths)
        addresses.append(QUrl::fromLocalFile(path));
    QMimeData data;
    data.setUrls(addresses);
    auto *const target = window().LstFile->viewport();
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    QDropEvent dropped(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &dropped);
}

void TestFrmMainList::itemsOfACommandTextAreAddedFromLeftToRight()
{
    const auto a = m_scene->write("a.doc");
    const auto b = m_scene->write("b.xls");
    window().AddCommandLineFiles(b + QLatin1Char(',') + a);
    QVERIFY(m_scene->hasDocuments(2));
    QCOMPARE(window().DocFullNameList(), QStringList({b, a}));
    QCOMPARE(window().DocFullName(1), b);
    QVERIFY(isInStep());
}

void TestFrmMainList::aTrailingCommaAddsNothing()
{
    const auto a = m_scene->write("a.doc");
    // An empty item must not be taken for the current folder.
    m_scene->write("here/x.doc");
    const auto before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_scene->folder().path("here")));
    window().AddCommandLineFiles(a + QLatin1Char(','));
    QVERIFY(m_scene->hasDocuments(1));
    QVERIFY(QDir::setCurrent(before));
    m_scene->fill({"b.doc"});
    QCOMPARE(names(), QStringList({QStringLiteral("a.doc"), QStringLiteral("b.doc")}));
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestFrmMainList::aPathWithSpacesIsOneItem()
{
    window().AddCommandLineFiles(m_scene->write("a folder/a document.doc"));
    QVERIFY(m_scene->hasDocuments(1));
    QCOMPARE(names(), QStringList{QStringLiteral("a document.doc")});
}

void TestFrmMainList::aPathWithACommaIsTwoItems()
{
    const auto whole = m_scene->write("one.doc,two.doc");
    const auto first = m_scene->write("one.doc");
    window().AddCommandLineFiles(whole);
    QVERIFY(m_scene->hasDocuments(1));
    QCOMPARE(window().DocFullName(1), first);
}

void TestFrmMainList::aFolderGivesItsFilesBeforeThoseOfItsSubFolders()
{
    for (const auto *const name :
         {"f/a/deep/1.doc", "f/a/2.doc", "f/z.doc", "f/b/3.doc", "f/picture.xyz"})
        m_scene->write(name);
    window().AddCommandLineFiles(m_scene->folder().path("f"));
    QVERIFY(m_scene->hasDocuments(4));
    QCOMPARE(names(), QStringList({QStringLiteral("z.doc"), QStringLiteral("2.doc"),
                                   QStringLiteral("1.doc"), QStringLiteral("3.doc")}));
    QVERIFY(isInStep());
}

void TestFrmMainList::theSameFileDroppedTwiceIsThereTwice()
{
    const auto a = m_scene->write("a.doc");
    drop({a});
    QVERIFY(m_scene->hasDocuments(1));
    drop({a});
    QVERIFY(m_scene->hasDocuments(2));
    QCOMPARE(window().DocFullNameList(), QStringList({a, a}));
}

void TestFrmMainList::everyWayInGivesTheSameOrder()
{
    for (const auto *const name : {"f/10.doc", "f/9.doc", "f/sub/1.doc", "f/Ab.doc", "f/aa.doc"})
        m_scene->write(name);
    const auto folder = m_scene->folder().path("f");
    const auto collect = [this, folder](const std::function<void()> &add) {
        window().DocFullNameClear();
        window().LstFile->clear();
        add();
        return m_scene->hasDocuments(5) ? window().DocFullNameList() : QStringList();
    };
    const auto dropped = collect([this, folder] { drop({folder}); });
    QCOMPARE(dropped.size(), 5);
    QCOMPARE(dropped.first(), folder + QStringLiteral("/9.doc"));
    QCOMPARE(collect([this, folder] { window().AddCommandLineFiles(folder); }), dropped);
    QCOMPARE(collect([this, folder] { window().ReceiveMessage(folder); }), dropped);
    m_scene->dialogs.documents = {folder};
    QCOMPARE(collect([this] { menu().ss_lst_add->trigger(); }), dropped);
}

void TestFrmMainList::aRefusedPostScriptFileIsTold()
{
    const auto file = m_scene->write("no.ps");
    drop({file});
    QTRY_COMPARE(m_scene->messages.all().size(), 1);
    const auto message = m_scene->messages.all().first();
    QCOMPARE(message.style, MessageStyle::Information);
    QCOMPARE(message.title, AppText::GetText(TextKey::InfoWindowTitle));
    QCOMPARE(message.text, AppText::GetText(TextKey::ErrorInvalidPRNFile1) + QLatin1Char(' ') +
                               file + QLatin1Char(' ') +
                               AppText::GetText(TextKey::ErrorInvalidPRNFile2));
    const ReasonWords words([this] { return window().Language(); });
    QCOMPARE(message.detail, words.advice(Reason::NotPostScript));
    QVERIFY(window().DocFullNameList().isEmpty());
}

void TestFrmMainList::aFolderOfRefusedFilesIsToldInOneMessage()
{
    for (int number = 1; number <= 30; ++number)
        m_scene->write(qPrintable(QStringLiteral("f/%1.ps").arg(number)));
    m_scene->write("f/z.doc");
    drop({m_scene->folder().path("f")});
    QVERIFY(m_scene->hasDocuments(1));
    QCOMPARE(m_scene->messages.all().size(), 1);
    const auto lines = m_scene->messages.all().first().text.split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 11);
    QVERIFY(lines.first().contains(QLatin1String("/f/1.ps")));
    QVERIFY(lines.at(9).contains(QLatin1String("/f/10.ps")));
}

void TestFrmMainList::otherRefusalsAreNotTold()
{
    drop({m_scene->write("x.unknown"), m_scene->folder().path("gone.doc"),
          m_scene->folder().write("empty.doc", {}), m_scene->write("a.doc")});
    QVERIFY(m_scene->hasDocuments(1));
    QVERIFY(m_scene->messages.all().isEmpty());
}

void TestFrmMainList::theAddDialogAsksForTheSupportedTypes()
{
    m_scene->dialogs.documents = {m_scene->write("b.doc"), m_scene->write("a.doc")};
    menu().ss_lst_add->trigger();
    QVERIFY(m_scene->hasDocuments(2));
    QCOMPARE(names(), QStringList({QStringLiteral("b.doc"), QStringLiteral("a.doc")}));
    QCOMPARE(m_scene->dialogs.questions.size(), 1);
    const auto parts = m_scene->dialogs.questions.first().split(QLatin1Char('|'));
    QCOMPARE(parts.size(), 11);
    QVERIFY(parts.at(2).contains(QStringLiteral("*.docx;")));
    QVERIFY(parts.last() == QLatin1String("*.pdf"));
}

void TestFrmMainList::anEmptyListOffersToAdd()
{
    auto &button = *window().LstFile->addButton();
    QVERIFY(button.isVisible());
    QCOMPARE(button.text(), AppText::GetText(TextKey::MenuLstAdd));
    m_scene->dialogs.documents = {m_scene->write("a.doc")};
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(m_scene->hasDocuments(1));
    QVERIFY(!button.isVisible());
    menu().ss_lst_clear->trigger();
    QVERIFY(button.isVisible());
    m_scene->fill({"a.doc"});
    select(0);
    menu().ss_lst_remove->trigger();
    QVERIFY(button.isVisible());
}

void TestFrmMainList::theMailOptionNeedsFewerThanTwoDocuments()
{
    const auto canSend = [this] {
        return window().OptMail->isEnabled() && window().LblMail->isEnabled();
    };
    QVERIFY(canSend());
    m_scene->fill({"a.doc"});
    QVERIFY(canSend());
    m_scene->fill({"b.doc"});
    QVERIFY(!window().OptMail->isEnabled() && !window().LblMail->isEnabled());
    select(0);
    menu().ss_lst_remove->trigger();
    QVERIFY(canSend());
    menu().ss_lst_remove->trigger();
    QVERIFY(window().DocFullNameList().isEmpty());
    QVERIFY(canSend());
    m_scene->fill({"a.doc", "b.doc"});
    menu().ss_lst_clear->trigger();
    QVERIFY(canSend());
}

void TestFrmMainList::removingIsDoneByMenuAndKey()
{
    m_scene->fill({"a.doc", "b.doc", "c.doc"});
    select(1);
    menu().ss_lst_remove->trigger();
    QCOMPARE(names(), QStringList({QStringLiteral("a.doc"), QStringLiteral("c.doc")}));
    select(0);
    QTest::keyClick(window().LstFile, Qt::Key_Delete);
    QCOMPARE(names(), QStringList{QStringLiteral("c.doc")});
    QVERIFY(isInStep());
}

void TestFrmMainList::clearingEmptiesTheList()
{
    m_scene->fill({"a.doc", "b.doc"});
    menu().ss_lst_clear->trigger();
    QVERIFY(names().isEmpty());
    QVERIFY(window().DocFullNameList().isEmpty());
}

void TestFrmMainList::clearingForgetsWhatIsOnItsWay()
{
    m_scene->fill({"a.doc"});
    window().AddCommandLineFiles(m_scene->write("b.doc"));
    menu().ss_lst_clear->trigger();
    m_scene->fill({"c.doc"});
    QCOMPARE(names(), QStringList{QStringLiteral("c.doc")});
}

void TestFrmMainList::movingTheFirstToFirstKeepsItCurrent()
{
    m_scene->fill({"a.doc", "b.doc"});
    select(0);
    Q_EMIT window().LblFirst->Click();
    QCOMPARE(names(), QStringList({QStringLiteral("a.doc"), QStringLiteral("b.doc")}));
    QCOMPARE(window().LstFile->currentRow(), 0);
    QVERIFY(window().LstFile->currentItem()->isSelected());
}

void TestFrmMainList::buttonsAndMenuMoveAlike_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("order");
    const auto row = [](const char *button, const char *entry, const char *order) {
        QTest::newRow(entry) << QString::fromLatin1(button) << QString::fromLatin1(entry)
                             << QString::fromLatin1(order);
    };
    row("LblFirst", "ss_lst_first", "c a b d");
    row("LblPrevious", "ss_lst_previous", "a c b d");
    row("LblNext", "ss_lst_next", "a b d c");
    row("LblLast", "ss_lst_last", "a b d c");
}

void TestFrmMainList::buttonsAndMenuMoveAlike()
{
    QFETCH(QString, button);
    QFETCH(QString, entry);
    QFETCH(QString, order);
    const auto press = [this, button] { Q_EMIT window().findChild<KelLabel *>(button)->Click(); };
    const auto choose = [this, entry] { window().findChild<QAction *>(entry)->trigger(); };
    for (const std::function<void()> &act : {std::function<void()>(press), {choose}}) {
        menu().ss_lst_clear->trigger();
        m_scene->fill({"a.doc", "b.doc", "c.doc", "d.doc"});
        select(2);
        act();
        QCOMPARE(names().join(QLatin1Char(' ')).remove(QStringLiteral(".doc")), order);
        QCOMPARE(window().LstFile->currentItem()->text(), QStringLiteral("c.doc"));
        QVERIFY(isInStep());
    }
}

void TestFrmMainList::keysMove_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("order");
    QTest::newRow("first") << int(Qt::Key_Home) << QStringLiteral("c a b d");
    QTest::newRow("up") << int(Qt::Key_Up) << QStringLiteral("a c b d");
    QTest::newRow("down") << int(Qt::Key_Down) << QStringLiteral("a b d c");
    QTest::newRow("last") << int(Qt::Key_End) << QStringLiteral("a b d c");
}

void TestFrmMainList::keysMove()
{
    QFETCH(int, key);
    QFETCH(QString, order);
    m_scene->fill({"a.doc", "b.doc", "c.doc", "d.doc"});
    select(2);
    window().LstFile->setFocus();
    QTest::keyClick(window().LstFile, Qt::Key(key), Qt::AltModifier);
    QCOMPARE(names().join(QLatin1Char(' ')).remove(QStringLiteral(".doc")), order);
}

/// Alt+Down opens a choice.
void TestFrmMainList::theKeysOfTheListAreLeftToOtherControls()
{
    m_scene->fill({"a.doc", "b.doc"});
    select(0);
    auto &choice = *window().cmbCompression;
    choice.setFocus();
    QTest::keyClick(&choice, Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(names().first(), QStringLiteral("a.doc"));
    QVERIFY(choice.view()->isVisible());
    choice.hidePopup();
}

void TestFrmMainList::theListMenuOffersWhatCanBeDone()
{
    const auto offered = [this] {
        Q_EMIT window().LstFile->menuAsked({100, 100});
        QStringList entries;
        for (const auto *const entry : {menu().ss_lst_add, menu().ss_lst_open, menu().ss_lst_remove,
                                        menu().ss_lst_move->menuAction(), menu().ss_lst_clear}) {
            if (entry->isEnabled())
                entries.append(entry->objectName().mid(7));
        }
        const auto isShown = menu().isVisible();
        menu().close();
        return isShown ? entries.join(QLatin1Char(' ')) : QStringLiteral("no menu");
    };
    QCOMPARE(offered(), QStringLiteral("add"));
    m_scene->fill({"a.doc", "b.doc"});
    QCOMPARE(offered(), QStringLiteral("add clear"));
    select(1);
    QCOMPARE(offered(), QStringLiteral("add open remove move clear"));
}

void TestFrmMainList::openingShowsTheDocument()
{
    m_scene->fill({"a.doc", "b.doc"});
    select(1);
    menu().ss_lst_open->trigger();
    QCOMPARE(m_scene->opened, QStringList{m_scene->folder().path("b.doc")});
}

void TestFrmMainList::aPendingFileIsTakenOnce()
{
    const auto a = m_scene->write("a.doc");
    m_scene->remember("File", a);
    window().ReadPendingFile();
    QCOMPARE(m_scene->remembered("File"), QString());
    QVERIFY(m_scene->hasDocuments(1));
    window().ReadPendingFile();
    m_scene->fill({"b.doc"});
    QCOMPARE(names().size(), 2);
}

void TestFrmMainList::aMessageIsHandledLater()
{
    const auto a = m_scene->write("a.doc");
    QVERIFY(QMetaObject::invokeMethod(&window(), "ReceiveMessage", Q_ARG(QString, a)));
    QVERIFY(window().DocFullNameList().isEmpty());
    QVERIFY(m_scene->hasDocuments(1));
}

/// Joined by ";", which separates nothing: what is there is one path, and there is no such file.
void TestFrmMainList::twoMessagesBeforeTheTimerBecomeOneItem()
{
    const auto a = m_scene->write("a.doc");
    const auto b = m_scene->write("b.doc");
    const auto both = m_scene->write((QByteArray("x;") + "y.doc").constData());
    window().ReceiveMessage(a);
    window().ReceiveMessage(b);
    QCoreApplication::processEvents();
    m_scene->fill({"c.doc"});
    QCOMPARE(names(), QStringList{QStringLiteral("c.doc")});
    window().ReceiveMessage(m_scene->folder().path("x"));
    window().ReceiveMessage(QStringLiteral("y.doc"));
    QVERIFY(m_scene->hasDocuments(2));
    QCOMPARE(window().DocFullName(2), both);
}

void TestFrmMainList::anEmptyMessageAddsNothing()
{
    window().ReceiveMessage({});
    m_scene->fill({"a.doc"});
    QCOMPARE(names().size(), 1);
    QVERIFY(m_scene->messages.all().isEmpty());
}

QTEST_MAIN(TestFrmMainList)
#include "tst_frmmain_list.moc"
