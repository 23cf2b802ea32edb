#include "ui/FileList.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QStyleOptionFrame>
#include <QSysInfo>
#include <QTest>
#include <QUrl>

using namespace Quorlin;

namespace {

/// A list that lets its frame be looked at.
class OpenList : public FileList
{
public:
    [[nodiscard]] bool showsRing() const
    {
        QStyleOptionFrame option;
        initStyleOption(&option);
        return option.state.testFlag(QStyle::State_HasFocus);
    }
};

/// What a file manager does, step by step.
class Drag
{
public:
    explicit Drag(FileList &list, Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction)
        : m_target(*list.viewport()), m_actions(actions)
    {
    }

    Drag &with(const QStringList &addresses)
    {
        QList<QUrl> urls;
        for (const auto &address : addresses)
            urls.append(QUrl(address));
        m_data.setUrls(urls);
        return *this;
    }

    Drag &withText(const QString &text)
    {
        m_data.setText(text);
        return *this;
    }

    Drag &enter()
    {
        QDragEnterEvent event(Place, m_actions, &m_data, Qt::LeftButton, Qt::NoModifier);
        return send(event);
    }

    Drag &move()
    {
        QDragMoveEvent event(Place, m_actions, &m_data, Qt::LeftButton, Qt::NoModifier);
        return send(event);
    }

    Drag &leave()
    {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(&m_target, &event);
        return *this;
    }

    Drag &drop()
    {
        QDropEvent event(Place, m_actions, &m_data, Qt::LeftButton, Qt::NoModifier);
        return send(event);
    }

    [[nodiscard]] bool isTaken() const { return m_isTaken; }
    [[nodiscard]] Qt::DropAction action() const { return m_action; }

private:
    static constexpr QPoint Place{20, 20};

    Drag &send(QDropEvent &event)
    {
        event.ignore();
        QCoreApplication::sendEvent(&m_target, &event);
        m_isTaken = event.isAccepted();
        m_action = event.dropAction();
        return *this;
    }

    QWidget &m_target;
    Qt::DropActions m_actions;
    QMimeData m_data;
    bool m_isTaken = false;
    Qt::DropAction m_action = Qt::IgnoreAction;
};

} // namespace

class TestFileList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theFirstStepSelectsTheEntryWithTheFocus_data();
    void theFirstStepSelectsTheEntryWithTheFocus();
    void filesAreDroppedInTheirOrder();
    void theSameFileCanBeDroppedTwice();
    void theCursorForACopyIsShownOverTheList();
    void filesAreNeverMovedAway();
    void aSourceThatOnlyMovesIsRefused();
    void aDragWithoutFilesIsRefused_data();
    void aDragWithoutFilesIsRefused();
    void addressesOfOtherPlacesAreLeftOut();
    void addressesOfThisComputerAreFiles_data();
    void addressesOfThisComputerAreFiles();
    void namesComeThroughUnchanged();
    void aDisabledListTakesNothing();
    void aListThatIsDisabledMeanwhileTakesNothing();
    void theRingShowsWhereFilesCanBeDropped();
    void droppingChangesNoEntry();
    void releasingDeleteIsTold();
    void pressingDeleteAloneIsNotTold();
    void holdingDeleteIsNotTold();
    void anotherKeyIsNotTold();
    void pressingTheRightButtonAsksForTheMenu();
    void theRightButtonSelectsTheEntryUnderIt();
    void theRightButtonAsksOnce();
    void everyPressOfTheRightButtonAsks();
    void theKeyboardAsksForTheMenu();
    void shiftAndF10AskForTheMenu();
    void aDisabledListAsksForNothing();
    void aDoubleClickChangesNothing();

private:
    [[nodiscard]] QPoint placeOf(int row) const;

    std::unique_ptr<OpenList> m_list;
    std::unique_ptr<QSignalSpy> m_dropped;
    std::unique_ptr<QSignalSpy> m_deleted;
    std::unique_ptr<QSignalSpy> m_asked;
};

void TestFileList::init()
{
    m_list = std::make_unique<OpenList>();
    m_list->resize(200, 200);
    m_list->appendDocuments(
        {QStringLiteral("/f/a"), QStringLiteral("/f/b"), QStringLiteral("/f/c")});
    m_list->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_list.get()));
    m_dropped = std::make_unique<QSignalSpy>(m_list.get(), &FileList::filesDropped);
    m_deleted = std::make_unique<QSignalSpy>(m_list.get(), &FileList::deleteReleased);
    m_asked = std::make_unique<QSignalSpy>(m_list.get(), &FileList::menuAsked);
}

void TestFileList::cleanup()
{
    m_list.reset();
}

QPoint TestFileList::placeOf(int row) const
{
    return m_list->visualItemRect(m_list->item(row)).center();
}

void TestFileList::theFirstStepSelectsTheEntryWithTheFocus_data()
{
    QTest::addColumn<int>("key");
    for (const auto key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End})
        QTest::addRow("%x", unsigned(key)) << int(key);
}

void TestFileList::theFirstStepSelectsTheEntryWithTheFocus()
{
    QFETCH(int, key);
    m_list->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_list.get()));
    m_list->setFocus();
    m_list->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    m_list->clearSelection();
    QTest::keyClick(m_list.get(), Qt::Key(key));
    QCOMPARE(m_list->currentRow(), 0);
    QVERIFY(m_list->currentItem()->isSelected());
    QTest::keyClick(m_list.get(), Qt::Key_Down);
    QCOMPARE(m_list->currentRow(), 1);
}

void TestFileList::filesAreDroppedInTheirOrder()
{
    Drag drag(*m_list);
    drag.with({QStringLiteral("file:///z.doc"), QStringLiteral("file:///a.doc"),
               QStringLiteral("file:///folder")});
    drag.enter().move().drop();
    QVERIFY(drag.isTaken());
    QCOMPARE(m_dropped->count(), 1);
    QCOMPARE(m_dropped->at(0).at(0).toStringList(),
             QStringList(
                 {QStringLiteral("/z.doc"), QStringLiteral("/a.doc"), QStringLiteral("/folder")}));
}

void TestFileList::theSameFileCanBeDroppedTwice()
{
    Drag drag(*m_list);
    drag.with({QStringLiteral("file:///a.doc"), QStringLiteral("file:///a.doc")});
    drag.enter().drop();
    QCOMPARE(m_dropped->value(0).value(0).toStringList(),
             QStringList({QStringLiteral("/a.doc"), QStringLiteral("/a.doc")}));
}

void TestFileList::theCursorForACopyIsShownOverTheList()
{
    Drag drag(*m_list);
    drag.with({QStringLiteral("file:///a.doc")}).enter();
    QVERIFY(drag.isTaken());
    QCOMPARE(drag.action(), Qt::CopyAction);
    drag.move();
    QVERIFY(drag.isTaken());
    QCOMPARE(drag.action(), Qt::CopyAction);
}

void TestFileList::filesAreNeverMovedAway()
{
    Drag drag(*m_list, Qt::MoveAction | Qt::LinkAction);
    drag.with({QStringLiteral("file:///a.doc")}).enter().drop();
    QVERIFY(drag.isTaken());
    QCOMPARE(drag.action(), Qt::LinkAction);
}

void TestFileList::aSourceThatOnlyMovesIsRefused()
{
    Drag drag(*m_list, Qt::MoveAction);
    drag.with({QStringLiteral("file:///a.doc")}).enter();
    QVERIFY(!drag.isTaken());
    QVERIFY(!m_list->showsRing() || m_list->hasFocus());
    QVERIFY(!drag.drop().isTaken());
    QCOMPARE(m_dropped->count(), 0);
}

void TestFileList::aDragWithoutFilesIsRefused_data()
{
    QTest::addColumn<QStringList>("addresses");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("page") << QStringList(QStringLiteral("http://example.org/a.doc"));
    QTest::newRow("other computer") << QStringList(QStringLiteral("file://elsewhere.test/a.doc"));
    QTest::newRow("nonsense") << QStringList({QStringLiteral("::"), QString()});
}

void TestFileList::aDragWithoutFilesIsRefused()
{
    QFETCH(const QStringList, addresses);
    Drag drag(*m_list);
    drag.with(addresses).withText(QStringLiteral("/a.doc")).enter();
    QVERIFY(!drag.isTaken());
    QVERIFY(!drag.move().isTaken());
    QVERIFY(!drag.drop().isTaken());
    QCOMPARE(m_dropped->count(), 0);
}

void TestFileList::addressesOfOtherPlacesAreLeftOut()
{
    Drag drag(*m_list);
    drag.with({QStringLiteral("http://example.org/a.doc"), QStringLiteral("file:///b.doc"),
               QStringLiteral("file://elsewhere.test/c.doc")});
    QVERIFY(drag.enter().isTaken());
    drag.drop();
    QCOMPARE(m_dropped->value(0).value(0).toStringList(), QStringList(QStringLiteral("/b.doc")));
}

void TestFileList::addressesOfThisComputerAreFiles_data()
{
    QTest::addColumn<QString>("host");
    QTest::newRow("none") << QString();
    QTest::newRow("local") << QStringLiteral("localhost");
    QTest::newRow("name") << QSysInfo::machineHostName();
}

void TestFileList::addressesOfThisComputerAreFiles()
{
    QFETCH(const QString, host);
    Drag drag(*m_list);
    drag.with({QStringLiteral("file://%1/folder/b.doc").arg(host)}).enter().drop();
    QCOMPARE(m_dropped->value(0).value(0).toStringList(),
             QStringList(QStringLiteral("/folder/b.doc")));
}

void TestFileList::namesComeThroughUnchanged()
{
    const auto path = QString::fromUtf8("/my folder/100% #1, \xc3\x9c\x62ung?\n.docx");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QCOMPARE(FileList::localPaths(data), QStringList(path));
}

void TestFileList::aDisabledListTakesNothing()
{
    m_list->setEnabled(false);
    Drag drag(*m_list);
    drag.with({QStringLiteral("file:///a.doc")}).enter();
    QVERIFY(!drag.isTaken());
    QVERIFY(!drag.move().isTaken());
    QVERIFY(!drag.drop().isTaken());
    QCOMPARE(m_dropped->count(), 0);
}

void TestFileList::aListThatIsDisabledMeanwhileTakesNothing()
{
    Drag drag(*m_list);
    drag.with({QStringLiteral("file:///a.doc")}).enter();
    QVERIFY(drag.isTaken());
    m_list->setEnabled(false);
    QVERIFY(!drag.move().isTaken());
    QVERIFY(!drag.drop().isTaken());
    QCOMPARE(m_dropped->count(), 0);
}

void TestFileList::theRingShowsWhereFilesCanBeDropped()
{
    m_list->clearFocus();
    QVERIFY(!m_list->showsRing());
    Drag drag(*m_list);
    drag.with({QStringLiteral("file:///a.doc")}).enter();
    QVERIFY(m_list->showsRing());
    drag.leave();
    QVERIFY(!m_list->showsRing());
    drag.enter();
    QVERIFY(m_list->showsRing());
    drag.drop();
    QVERIFY(!m_list->showsRing());
    Drag other(*m_list);
    other.with({QStringLiteral("http://example.org/a.doc")}).enter();
    QVERIFY(!m_list->showsRing());
}

void TestFileList::droppingChangesNoEntry()
{
    Drag drag(*m_list);
    drag.with({QStringLiteral("file:///x.doc")}).enter().move().drop();
    QCOMPARE(m_list->count(), 3);
    QCOMPARE(m_list->item(0)->text(), QStringLiteral("a"));
}

void TestFileList::releasingDeleteIsTold()
{
    QTest::keyClick(m_list.get(), Qt::Key_Delete);
    QCOMPARE(m_deleted->count(), 1);
    QCOMPARE(m_list->count(), 3);
}

void TestFileList::pressingDeleteAloneIsNotTold()
{
    QTest::keyPress(m_list.get(), Qt::Key_Delete);
    QCOMPARE(m_deleted->count(), 0);
}

void TestFileList::holdingDeleteIsNotTold()
{
    QKeyEvent repeat(QEvent::KeyRelease, Qt::Key_Delete, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(m_list.get(), &repeat);
    QCOMPARE(m_deleted->count(), 0);
}

void TestFileList::anotherKeyIsNotTold()
{
    QTest::keyClick(m_list.get(), Qt::Key_Backspace);
    QTest::keyClick(m_list.get(), Qt::Key_Period);
    QCOMPARE(m_deleted->count(), 0);
}

void TestFileList::pressingTheRightButtonAsksForTheMenu()
{
    QTest::mousePress(m_list->viewport(), Qt::RightButton, Qt::NoModifier, QPoint(30, 150));
    QCOMPARE(m_asked->count(), 1);
    QCOMPARE(m_asked->at(0).at(0).toPoint(), m_list->viewport()->mapToGlobal(QPoint(30, 150)));
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton);
    QCOMPARE(m_asked->count(), 1);
}

void TestFileList::theRightButtonSelectsTheEntryUnderIt()
{
    bool wasSelected = false;
    connect(m_list.get(), &FileList::menuAsked, this,
            [&] { wasSelected = m_list->item(1)->isSelected(); });
    QTest::mousePress(m_list->viewport(), Qt::RightButton, Qt::NoModifier, placeOf(1));
    QVERIFY(wasSelected);
}

/// The system sends an event for the menu as well.
void TestFileList::theRightButtonAsksOnce()
{
    QTest::mousePress(m_list->viewport(), Qt::RightButton, Qt::NoModifier, placeOf(1));
    QContextMenuEvent event(QContextMenuEvent::Mouse, placeOf(1), QCursor::pos());
    QCoreApplication::sendEvent(m_list->viewport(), &event);
    QVERIFY(event.isAccepted());
    QCOMPARE(m_asked->count(), 1);
}

/// A press soon after another one is told as a double click.
void TestFileList::everyPressOfTheRightButtonAsks()
{
    const auto pressAgain = [this](Qt::MouseButton button) {
        const auto place = placeOf(1);
        QMouseEvent event(QEvent::MouseButtonDblClick, place,
                          m_list->viewport()->mapToGlobal(place), button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(m_list->viewport(), &event);
    };
    QTest::mouseClick(m_list->viewport(), Qt::RightButton, Qt::NoModifier, placeOf(1));
    pressAgain(Qt::RightButton);
    QCOMPARE(m_asked->count(), 2);
    pressAgain(Qt::LeftButton);
    QCOMPARE(m_asked->count(), 2);
}

void TestFileList::theKeyboardAsksForTheMenu()
{
    m_list->setCurrentRow(2);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(m_list->viewport(), &event);
    QCOMPARE(m_asked->count(), 1);
    QCOMPARE(m_asked->at(0).at(0).toPoint(), m_list->viewport()->mapToGlobal(placeOf(2)));
}

void TestFileList::shiftAndF10AskForTheMenu()
{
    m_list->clear();
    QTest::keyClick(m_list.get(), Qt::Key_F10);
    QCOMPARE(m_asked->count(), 0);
    QTest::keyClick(m_list.get(), Qt::Key_F10, Qt::ShiftModifier);
    QCOMPARE(m_asked->count(), 1);
    QVERIFY(m_list->viewport()->rect().contains(
        m_list->viewport()->mapFromGlobal(m_asked->at(0).at(0).toPoint())));
}

void TestFileList::aDisabledListAsksForNothing()
{
    m_list->setEnabled(false);
    QTest::mousePress(m_list->viewport(), Qt::RightButton);
    QTest::keyClick(m_list.get(), Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(m_list.get(), Qt::Key_Delete);
    QCOMPARE(m_asked->count(), 0);
    QCOMPARE(m_deleted->count(), 0);
}

void TestFileList::aDoubleClickChangesNothing()
{
    QTest::mouseClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(1));
    QTest::mouseDClick(m_list->viewport(), Qt::LeftButton, Qt::NoModifier, placeOf(1));
    QCOMPARE(m_list->currentRow(), 1);
    QCOMPARE(m_list->currentItem()->text(), QStringLiteral("b"));
    QCOMPARE(m_list->count(), 3);
    QVERIFY(!m_list->isPersistentEditorOpen(m_list->item(1)));
    QVERIFY(m_list->findChildren<QWidget *>(QStringLiteral("qt_editing_widget")).isEmpty());
    QCOMPARE(m_asked->count() + m_deleted->count() + m_dropped->count(), 0);
}

QTEST_MAIN(TestFileList)
#include "tst_file_list.moc"
