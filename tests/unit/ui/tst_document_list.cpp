#include "ui/DocumentList.h"

#include "ui/FileList.h"

#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace Quorlin;

namespace {

QStringList paths(const char *names)
{
    QStringList all;
    for (const auto &name : QString::fromUtf8(names).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        all.append(QStringLiteral("/folder/") + name);
    return all;
}

} // namespace

class TestDocumentList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theSameDocumentCanBeInTheListTwice();
    void aPathWithoutASeparatorIsShownWhole();
    void theNameIsWhatFollowsTheLastSeparator_data();
    void theNameIsWhatFollowsTheLastSeparator();
    void anIndexEqualToTheCountInsertsBeforeTheLast();
    void anIndexPastTheCountAppends();
    void noIndexAppends();
    void anIndexThatIsNoPositionAppends_data();
    void anIndexThatIsNoPositionAppends();
    void positionsCountFromOne();
    void aPositionThatDoesNotExistDoesNoHarm_data();
    void aPositionThatDoesNotExistDoesNoHarm();
    void theMembersForPathsLeaveTheVisibleListAlone();
    void theCollectionIsSharedNotCopied();
    void bothHalvesGrowInStep();
    void anAddedDocumentIsNotSelected();
    void addingNothingIsNoChange();
    void removingMakesTheNextOneCurrent();
    void removingTheLastMakesTheOneBeforeCurrent();
    void removingTheOnlyOneLeavesNothing();
    void removingNeedsACurrentEntry();
    void clearingEmptiesBothHalves();
    void movesReorderBothHalves_data();
    void movesReorderBothHalves();
    void repeatedMovesActOnTheSameDocument();
    void movingTheFirstToFirstChangesNothing();
    void movesThatCannotBeChangeNothing_data();
    void movesThatCannotBeChangeNothing();
    void aMoveNeedsASelectedEntry();
    void duplicatesAreMovedByPosition();
    void bothHalvesAreInStepWhenAChangeIsTold();
    void onlyOneEntryCanBeSelected();
    void anEntryTellsItsFullPath();
    void aPathIsNoPageOfATip();
    void tenThousandDocumentsAreAddedAtOnce();

private:
    void add(const char *names) { m_documents->addDocuments(paths(names)); }
    void verify(const char *names, int current);
    [[nodiscard]] bool isInStep() const;

    std::unique_ptr<FileList> m_list;
    std::unique_ptr<DocumentList> m_documents;
    std::unique_ptr<QSignalSpy> m_changes;
};

void TestDocumentList::init()
{
    m_list = std::make_unique<FileList>();
    m_documents = std::make_unique<DocumentList>(*m_list);
    m_changes = std::make_unique<QSignalSpy>(m_documents.get(), &DocumentList::changed);
}

void TestDocumentList::cleanup()
{
    m_changes.reset();
    m_documents.reset();
    m_list.reset();
}

bool TestDocumentList::isInStep() const
{
    QStringList shown;
    QStringList expected;
    for (int row = 0; row < m_list->count(); ++row)
        shown.append(m_list->item(row)->text());
    for (const auto &path : m_documents->DocFullNameList())
        expected.append(DocumentList::GetNameFromFullPath(path));
    return shown == expected;
}

/// @param current row of the current and selected entry, -1 for none.
void TestDocumentList::verify(const char *names, int current)
{
    QCOMPARE(m_documents->DocFullNameList(), paths(names));
    QVERIFY(isInStep());
    QCOMPARE(m_documents->hasCurrent(), current >= 0);
    if (current < 0)
        return;
    QCOMPARE(m_list->currentRow(), current);
    QCOMPARE(m_list->selectedItems(), QList<QListWidgetItem *>{m_list->item(current)});
}

void TestDocumentList::theSameDocumentCanBeInTheListTwice()
{
    add("a.doc a.doc");
    add("a.doc");
    verify("a.doc a.doc a.doc", -1);
}

void TestDocumentList::aPathWithoutASeparatorIsShownWhole()
{
    QCOMPARE(DocumentList::GetNameFromFullPath(QStringLiteral("my report.docx")),
             QStringLiteral("my report.docx"));
}

void TestDocumentList::theNameIsWhatFollowsTheLastSeparator_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::newRow("drive") << QStringLiteral("C:\\documents\\report.v2.docx")
                           << QStringLiteral("report.v2.docx");
    QTest::newRow("slashes") << QStringLiteral("/my folder/report.docx")
                             << QStringLiteral("report.docx");
    QTest::newRow("both") << QStringLiteral("/folder/a\\b.docx") << QStringLiteral("b.docx");
    QTest::newRow("slash last") << QStringLiteral("C:\\home/b.docx") << QStringLiteral("b.docx");
    QTest::newRow("share") << QStringLiteral("\\\\server\\share\\a b.doc")
                           << QStringLiteral("a b.doc");
    QTest::newRow("at the end") << QStringLiteral("C:\\folder\\") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestDocumentList::theNameIsWhatFollowsTheLastSeparator()
{
    QFETCH(const QString, path);
    QFETCH(const QString, name);
    QCOMPARE(DocumentList::GetNameFromFullPath(path), name);
    m_documents->addDocuments({path});
    QCOMPARE(m_list->item(0)->text(), name);
    QCOMPARE(m_documents->DocFullName(1), path);
}

void TestDocumentList::anIndexEqualToTheCountInsertsBeforeTheLast()
{
    add("a b c");
    m_documents->AddDocFullName(QStringLiteral("/folder/x"), 3);
    QCOMPARE(m_documents->DocFullNameList(), paths("a b x c"));
}

void TestDocumentList::anIndexPastTheCountAppends()
{
    add("a b c");
    m_documents->AddDocFullName(QStringLiteral("/folder/x"), 4);
    QCOMPARE(m_documents->DocFullNameList(), paths("a b c x"));
}

void TestDocumentList::noIndexAppends()
{
    add("a");
    m_documents->AddDocFullName(QStringLiteral("/folder/x"));
    QCOMPARE(m_documents->DocFullNameList(), paths("a x"));
}

void TestDocumentList::anIndexThatIsNoPositionAppends_data()
{
    QTest::addColumn<qint32>("index");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -1;
    QTest::newRow("least") << std::numeric_limits<qint32>::min();
    QTest::newRow("largest") << std::numeric_limits<qint32>::max();
}

void TestDocumentList::anIndexThatIsNoPositionAppends()
{
    QFETCH(const qint32, index);
    add("a b");
    m_documents->AddDocFullName(QStringLiteral("/folder/x"), index);
    QCOMPARE(m_documents->DocFullNameList(), paths("a b x"));
}

void TestDocumentList::positionsCountFromOne()
{
    add("a b");
    QCOMPARE(m_documents->DocFullName(1), QStringLiteral("/folder/a"));
    QCOMPARE(m_documents->DocFullName(2), QStringLiteral("/folder/b"));
    m_documents->AddDocFullName(QStringLiteral("/folder/x"), 1);
    QCOMPARE(m_documents->DocFullNameList(), paths("x a b"));
    m_documents->RemoveDocFullName(2);
    QCOMPARE(m_documents->DocFullNameList(), paths("x b"));
}

void TestDocumentList::aPositionThatDoesNotExistDoesNoHarm_data()
{
    anIndexThatIsNoPositionAppends_data();
    QTest::newRow("past the end") << 3;
}

void TestDocumentList::aPositionThatDoesNotExistDoesNoHarm()
{
    QFETCH(const qint32, index);
    add("a b");
    QCOMPARE(m_documents->DocFullName(index), QString());
    m_documents->RemoveDocFullName(index);
    verify("a b", -1);
}

void TestDocumentList::theMembersForPathsLeaveTheVisibleListAlone()
{
    add("a b");
    m_documents->AddDocFullName(QStringLiteral("/folder/x"), 1);
    QCOMPARE(m_list->count(), 2);
    m_documents->RemoveDocFullName(1);
    QCOMPARE(m_list->count(), 2);
    m_documents->DocFullNameClear();
    QCOMPARE(m_list->count(), 2);
    QCOMPARE(m_documents->count(), 0);
}

void TestDocumentList::theCollectionIsSharedNotCopied()
{
    const auto &collection = m_documents->DocFullNameList();
    add("a b");
    m_documents->AddDocFullName(QStringLiteral("/folder/c"));
    QCOMPARE(collection, paths("a b c"));
}

void TestDocumentList::bothHalvesGrowInStep()
{
    add("a.doc b.xls");
    add("c.pdf");
    verify("a.doc b.xls c.pdf", -1);
    QCOMPARE(m_documents->count(), 3);
    QCOMPARE(m_changes->count(), 2);
}

void TestDocumentList::anAddedDocumentIsNotSelected()
{
    m_list->show();
    m_list->setFocus();
    add("a b");
    QVERIFY(!m_documents->hasCurrent());
    m_list->setCurrentRow(1);
    add("c");
    verify("a b c", 1);
}

void TestDocumentList::addingNothingIsNoChange()
{
    m_documents->addDocuments({});
    QCOMPARE(m_changes->count(), 0);
}

void TestDocumentList::removingMakesTheNextOneCurrent()
{
    add("a b c");
    m_list->setCurrentRow(1);
    m_changes->clear();
    m_documents->removeCurrent();
    verify("a c", 1);
    QCOMPARE(m_changes->count(), 1);
}

void TestDocumentList::removingTheLastMakesTheOneBeforeCurrent()
{
    add("a b c");
    m_list->setCurrentRow(2);
    m_documents->removeCurrent();
    verify("a b", 1);
}

void TestDocumentList::removingTheOnlyOneLeavesNothing()
{
    add("a");
    m_list->setCurrentRow(0);
    m_documents->removeCurrent();
    verify("", -1);
    QCOMPARE(m_changes->count(), 2);
}

void TestDocumentList::removingNeedsACurrentEntry()
{
    m_documents->removeCurrent();
    add("a b");
    m_documents->removeCurrent();
    m_list->setCurrentRow(1, QItemSelectionModel::NoUpdate);
    m_documents->removeCurrent();
    verify("a b", -1);
    QCOMPARE(m_changes->count(), 1);
}

void TestDocumentList::clearingEmptiesBothHalves()
{
    add("a b c");
    m_list->setCurrentRow(1);
    m_changes->clear();
    m_documents->clear();
    verify("", -1);
    QCOMPARE(m_changes->count(), 1);
    m_documents->clear();
    QCOMPARE(m_changes->count(), 1);
}

using Move = void (DocumentList::*)();

void TestDocumentList::movesReorderBothHalves_data()
{
    QTest::addColumn<Move>("move");
    QTest::addColumn<int>("from");
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<int>("to");
    QTest::newRow("first") << &DocumentList::moveToFirst << 2 << QByteArray("c a b d") << 0;
    QTest::newRow("last to first") << &DocumentList::moveToFirst << 3 << QByteArray("d a b c") << 0;
    QTest::newRow("up") << &DocumentList::moveUp << 2 << QByteArray("a c b d") << 1;
    QTest::newRow("down") << &DocumentList::moveDown << 1 << QByteArray("a c b d") << 2;
    QTest::newRow("down to the end") << &DocumentList::moveDown << 2 << QByteArray("a b d c") << 3;
    QTest::newRow("last") << &DocumentList::moveToLast << 1 << QByteArray("a c d b") << 3;
    QTest::newRow("first to last") << &DocumentList::moveToLast << 0 << QByteArray("b c d a") << 3;
}

void TestDocumentList::movesReorderBothHalves()
{
    QFETCH(const Move, move);
    QFETCH(const int, from);
    QFETCH(const QByteArray, order);
    QFETCH(const int, to);
    add("a b c d");
    m_list->setCurrentRow(from);
    m_changes->clear();
    (*m_documents.*move)();
    verify(order.constData(), to);
    QCOMPARE(m_changes->count(), 1);
}

void TestDocumentList::repeatedMovesActOnTheSameDocument()
{
    add("a b c d");
    m_list->setCurrentRow(3);
    m_documents->moveUp();
    m_documents->moveUp();
    verify("a d b c", 1);
    m_documents->moveToFirst();
    m_documents->moveDown();
    m_documents->moveToLast();
    verify("a b c d", 3);
}

void TestDocumentList::movingTheFirstToFirstChangesNothing()
{
    add("a b c");
    m_list->setCurrentRow(0);
    m_documents->moveToFirst();
    verify("a b c", 0);
}

void TestDocumentList::movesThatCannotBeChangeNothing_data()
{
    QTest::addColumn<Move>("move");
    QTest::addColumn<int>("from");
    QTest::newRow("first up") << &DocumentList::moveUp << 0;
    QTest::newRow("last down") << &DocumentList::moveDown << 2;
    QTest::newRow("last to last") << &DocumentList::moveToLast << 2;
}

void TestDocumentList::movesThatCannotBeChangeNothing()
{
    QFETCH(const Move, move);
    QFETCH(const int, from);
    add("a b c");
    m_list->setCurrentRow(from);
    m_changes->clear();
    (*m_documents.*move)();
    verify("a b c", from);
    QCOMPARE(m_changes->count(), 0);
}

void TestDocumentList::aMoveNeedsASelectedEntry()
{
    const auto moveAll = [this] {
        for (const Move move : {&DocumentList::moveToFirst, &DocumentList::moveUp,
                                &DocumentList::moveDown, &DocumentList::moveToLast})
            (*m_documents.*move)();
    };
    moveAll();
    add("a b c");
    moveAll();
    m_list->setCurrentRow(1, QItemSelectionModel::NoUpdate);
    moveAll();
    verify("a b c", -1);
    QCOMPARE(m_changes->count(), 1);
}

void TestDocumentList::duplicatesAreMovedByPosition()
{
    m_documents->addDocuments(
        {QStringLiteral("/1/a"), QStringLiteral("/2/a"), QStringLiteral("/3/a")});
    m_list->setCurrentRow(2);
    m_documents->moveToFirst();
    QCOMPARE(m_documents->DocFullNameList(),
             QStringList({QStringLiteral("/3/a"), QStringLiteral("/1/a"), QStringLiteral("/2/a")}));
    QCOMPARE(m_list->item(0)->toolTip(), QStringLiteral("/3/a"));
}

void TestDocumentList::bothHalvesAreInStepWhenAChangeIsTold()
{
    int told = 0;
    connect(m_documents.get(), &DocumentList::changed, this, [&] {
        QVERIFY(isInStep());
        ++told;
    });
    add("a b c d");
    m_list->setCurrentRow(1);
    m_documents->moveToLast();
    m_documents->moveToFirst();
    m_documents->removeCurrent();
    m_documents->clear();
    QCOMPARE(told, 5);
}

void TestDocumentList::onlyOneEntryCanBeSelected()
{
    add("a b c");
    m_list->item(0)->setSelected(true);
    m_list->item(2)->setSelected(true);
    QCOMPARE(m_list->selectedItems(), QList<QListWidgetItem *>{m_list->item(2)});
}

void TestDocumentList::anEntryTellsItsFullPath()
{
    add("a.doc");
    const auto index = m_list->model()->index(0, 0);
    QCOMPARE(index.data(Qt::ToolTipRole).toString(), QStringLiteral("/folder/a.doc"));
    QCOMPARE(index.data(Qt::AccessibleDescriptionRole).toString(), QStringLiteral("/folder/a.doc"));
}

/// Tips show text as a page when it looks like one.
void TestDocumentList::aPathIsNoPageOfATip()
{
    m_documents->addDocuments({QStringLiteral("/folder/<img src='x'>.doc")});
    QCOMPARE(m_list->item(0)->toolTip(),
             QStringLiteral("<span>/folder/&lt;img src='x'&gt;.doc</span>"));
    QCOMPARE(m_list->item(0)->text(), QStringLiteral("<img src='x'>.doc"));
}

void TestDocumentList::tenThousandDocumentsAreAddedAtOnce()
{
    QStringList many;
    for (int number = 0; number < 10'000; ++number)
        many.append(QStringLiteral("/folder/report %1.docx").arg(number));
    m_documents->addDocuments(many);
    QCOMPARE(m_documents->DocFullNameList(), many);
    QVERIFY(isInStep());
    QCOMPARE(m_changes->count(), 1);
}

QTEST_MAIN(TestDocumentList)
#include "tst_document_list.moc"
