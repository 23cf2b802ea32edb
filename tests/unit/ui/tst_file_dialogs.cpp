#include "ui/SystemFileDialogs.h"

#include "convert/PDFLib.h"
#include "support/TestFolder.h"
#include "ui/DocumentFilter.h"
#include "winsupport/TextSource.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace Quorlin;

namespace {

/// A text that tells its key.
class KeyTexts : public TextSource
{
public:
    [[nodiscard]] QString text(const QString &key) const override { return key; }
};

const auto Filter = QStringLiteral("All|*.doc;*.docx|Other|*.pdf");

/// Answers the dialog that is asked next as a user would.
class Answer : public QObject
{
public:
    using Steps = std::function<void(QFileDialog &)>;

    explicit Answer(Steps steps) : m_steps(std::move(steps))
    {
        connect(&m_timer, &QTimer::timeout, this, &Answer::look);
        m_timer.start(5);
    }

    /// What is asked when a file is to be replaced is answered so.
    void whenAsked(QMessageBox::StandardButton button) { m_button = button; }
    [[nodiscard]] int questions() const { return m_questions; }

    static void accept(QDialog &dialog) { dialog.accept(); }

    static void type(QFileDialog &dialog, const QString &name)
    {
        dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(name);
    }

private:
    void look()
    {
        auto *const window = QApplication::activeModalWidget();
        if (auto *const question = qobject_cast<QMessageBox *>(window)) {
            ++m_questions;
            auto *const dialog = qobject_cast<QFileDialog *>(question->parentWidget());
            question->button(m_button)->click();
            if (m_button == QMessageBox::No)
                dialog->reject();
        } else if (auto *const dialog = qobject_cast<QFileDialog *>(window)) {
            // Not from within the timer's own call: it must go on while they ask a question.
            if (auto steps = std::exchange(m_steps, {}))
                QTimer::singleShot(0, dialog, [steps, dialog] { steps(*dialog); });
        }
    }

    Steps m_steps;
    QTimer m_timer;
    QMessageBox::StandardButton m_button = QMessageBox::Yes;
    int m_questions = 0;
};

QStringList shownNames(QFileDialog &dialog)
{
    const auto *const view = dialog.findChild<QAbstractItemView *>(QStringLiteral("listView"));
    QStringList names;
    for (int row = 0; row < view->model()->rowCount(view->rootIndex()); ++row)
        names.append(view->model()->index(row, 0, view->rootIndex()).data().toString());
    names.sort();
    return names;
}

} // namespace

class TestFileDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFilterHasAnEntryForEachFamily();
    void aFamilyWithoutExtensionsIsLeftOut();
    void noExtensionsAtAllMakeNoFilter();
    void filtersAreTurnedIntoTheToolkitsForm_data();
    void filtersAreTurnedIntoTheToolkitsForm();
    void severalDocumentsCanBeChosen();
    void theDialogHasTheTitleAndTheFilters();
    void capitalsInExtensionsAreShown();
    void aCancelledDialogGivesNothing();
    void theLastFolderIsRemembered();
    void aRememberedFolderThatIsGoneDoesNoHarm();
    void theProposedNameIsThere();
    void theProposedPathGivesTheFolder();
    void aNameWithoutAnExtensionGetsOne();
    void aNameWithAnExtensionIsLeftAlone();
    void replacingAFileIsAskedFor();
    void replacingIsAskedForTheNameWithTheExtensionAdded();
    void aFileThatMayNotBeReplacedIsNoTarget();
    void theWindowMayGoWhileTheUserIsAsked();

private:
    [[nodiscard]] static QString target(SystemFileDialogs &dialogs, const QString &proposal)
    {
        return dialogs.askForTarget(QStringLiteral("Save"), QStringLiteral("Document PDF|*.pdf"),
                                    proposal);
    }
};

void TestFileDialogs::theFilterHasAnEntryForEachFamily()
{
    const auto parts = DocumentFilter::text(KeyTexts()).split(QLatin1Char('|'));
    QCOMPARE(parts.size(), 10);
    const QStringList keys{
        QStringLiteral("DialogAllValidExtension"), QStringLiteral("DialogWordExtension"),
        QStringLiteral("DialogExcelExtension"), QStringLiteral("DialogPowerpointExtension"),
        QStringLiteral("DialogPDFExtension")};
    for (qsizetype family = 0; family < keys.size(); ++family) {
        QCOMPARE(parts.at(2 * family), keys.at(family));
        QStringList patterns;
        for (const auto &extension : PDFLib::extensions(Family(family)))
            patterns.append(QStringLiteral("*.") + extension);
        QCOMPARE(parts.at(2 * family + 1), patterns.join(QLatin1Char(';')));
    }
}

void TestFileDialogs::aFamilyWithoutExtensionsIsLeftOut()
{
    const QStringList doc(QStringLiteral("doc"));
    QCOMPARE(DocumentFilter::text(
                 KeyTexts(), {doc, {}, {QStringLiteral("xls"), QStringLiteral("ods")}, {}, {}}),
             QStringLiteral("DialogAllValidExtension|*.doc|DialogExcelExtension|*.xls;*.ods"));
}

void TestFileDialogs::noExtensionsAtAllMakeNoFilter()
{
    QVERIFY(DocumentFilter::text(KeyTexts(), {}).isEmpty());
    QVERIFY(DocumentFilter::text(KeyTexts(), QList<QStringList>(5)).isEmpty());
}

void TestFileDialogs::filtersAreTurnedIntoTheToolkitsForm_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("toolkit");
    const auto row = [](const char *name, const char *filter, const QStringList &toolkit) {
        QTest::newRow(name) << QString::fromLatin1(filter) << toolkit;
    };
    row("one", "Document PDF|*.pdf", {QStringLiteral("Document PDF (*.pdf)")});
    row("several", "All|*.a;*.b|Other|*.c",
        {QStringLiteral("All (*.a *.b)"), QStringLiteral("Other (*.c)")});
    row("brackets", "Word (97-2003)|*.doc", {QStringLiteral("Word (97-2003) (*.doc)")});
    row("no pattern", "All", {QStringLiteral("All (*)")});
    row("empty pattern", "All||Other|*.c",
        {QStringLiteral("All (*)"), QStringLiteral("Other (*.c)")});
    row("empty", "", {QStringLiteral(" (*)")});
}

void TestFileDialogs::filtersAreTurnedIntoTheToolkitsForm()
{
    QFETCH(const QString, filter);
    QFETCH(const QStringList, toolkit);
    QCOMPARE(DocumentFilter::toolkitFilters(filter), toolkit);
}

void TestFileDialogs::severalDocumentsCanBeChosen()
{
    const TestFolder folder;
    const auto a = folder.write("a b.doc", "text");
    const auto b = folder.write("c, d.docx", "text");
    SystemFileDialogs dialogs;
    Answer answer([&](QFileDialog &dialog) {
        QCOMPARE(dialog.fileMode(), QFileDialog::ExistingFiles);
        dialog.setDirectory(folder.path());
        Answer::type(dialog, QStringLiteral("\"a b.doc\" \"c, d.docx\""));
        Answer::accept(dialog);
    });
    QCOMPARE(dialogs.askForDocuments(QStringLiteral("Open"), Filter), QStringList({a, b}));
}

void TestFileDialogs::theDialogHasTheTitleAndTheFilters()
{
    SystemFileDialogs dialogs;
    Answer answer([](QFileDialog &dialog) {
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Open file"));
        QCOMPARE(dialog.nameFilters(), QStringList({QStringLiteral("All (*.doc *.docx)"),
                                                    QStringLiteral("Other (*.pdf)")}));
        const auto *const types = dialog.findChild<QComboBox *>(QStringLiteral("fileTypeCombo"));
        QCOMPARE(types->currentText(), QStringLiteral("All"));
        dialog.reject();
    });
    QVERIFY(dialogs.askForDocuments(QStringLiteral("Open file"), Filter).isEmpty());
}

void TestFileDialogs::capitalsInExtensionsAreShown()
{
    const TestFolder folder;
    for (const auto *name : {"A.DOCX", "b.docx", "c.txt", "d.Doc"})
        folder.write(name, "text");
    SystemFileDialogs dialogs;
    QStringList shown;
    Answer answer([&](QFileDialog &dialog) {
        dialog.setDirectory(folder.path());
        QTRY_COMPARE(shownNames(dialog).size(), 3);
        shown = shownNames(dialog);
        dialog.reject();
    });
    QVERIFY(dialogs.askForDocuments(QStringLiteral("Open"), Filter).isEmpty());
    QCOMPARE(shown, QStringList({QStringLiteral("A.DOCX"), QStringLiteral("b.docx"),
                                 QStringLiteral("d.Doc")}));
}

void TestFileDialogs::aCancelledDialogGivesNothing()
{
    SystemFileDialogs dialogs;
    const auto cancel = [](QFileDialog &dialog) { dialog.reject(); };
    Answer first(cancel);
    QVERIFY(dialogs.askForDocuments(QStringLiteral("Open"), Filter).isEmpty());
    Answer second(cancel);
    QVERIFY(target(dialogs, QStringLiteral("a.pdf")).isEmpty());
}

void TestFileDialogs::theLastFolderIsRemembered()
{
    const TestFolder folder;
    folder.write("a.doc", "text");
    SystemFileDialogs dialogs;
    Answer first([&](QFileDialog &dialog) {
        dialog.setDirectory(folder.path());
        Answer::type(dialog, QStringLiteral("a.doc"));
        Answer::accept(dialog);
    });
    QCOMPARE(dialogs.askForDocuments(QStringLiteral("Open"), Filter).size(), 1);
    QString seen;
    Answer second([&](QFileDialog &dialog) {
        seen = dialog.directory().path();
        dialog.reject();
    });
    QVERIFY(dialogs.askForDocuments(QStringLiteral("Open"), Filter).isEmpty());
    QCOMPARE(seen, folder.path());
}

void TestFileDialogs::aRememberedFolderThatIsGoneDoesNoHarm()
{
    const TestFolder folder;
    const auto document = folder.write("gone/a.doc", "text");
    SystemFileDialogs dialogs;
    Answer first([&](QFileDialog &dialog) {
        dialog.setDirectory(folder.path("gone"));
        Answer::type(dialog, QStringLiteral("a.doc"));
        Answer::accept(dialog);
    });
    QCOMPARE(dialogs.askForDocuments(QStringLiteral("Open"), Filter), QStringList(document));
    QVERIFY(QDir(folder.path("gone")).removeRecursively());
    bool isThere = false;
    Answer second([&](QFileDialog &dialog) {
        isThere = dialog.directory().exists();
        dialog.reject();
    });
    QVERIFY(dialogs.askForDocuments(QStringLiteral("Open"), Filter).isEmpty());
    QVERIFY(isThere);
}

void TestFileDialogs::theProposedNameIsThere()
{
    SystemFileDialogs dialogs;
    QString proposed;
    Answer answer([&](QFileDialog &dialog) {
        proposed = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
        dialog.reject();
    });
    QVERIFY(target(dialogs, QStringLiteral("my report.pdf")).isEmpty());
    QCOMPARE(proposed, QStringLiteral("my report.pdf"));
}

void TestFileDialogs::theProposedPathGivesTheFolder()
{
    const TestFolder folder;
    SystemFileDialogs dialogs;
    Answer answer([&](QFileDialog &dialog) { Answer::accept(dialog); });
    QCOMPARE(target(dialogs, folder.path("report.pdf")), folder.path("report.pdf"));
    QCOMPARE(answer.questions(), 0);
}

void TestFileDialogs::aNameWithoutAnExtensionGetsOne()
{
    const TestFolder folder;
    SystemFileDialogs dialogs;
    Answer answer([&](QFileDialog &dialog) {
        Answer::type(dialog, QStringLiteral("all together"));
        Answer::accept(dialog);
    });
    QCOMPARE(target(dialogs, folder.path("report.pdf")), folder.path("all together.pdf"));
}

void TestFileDialogs::aNameWithAnExtensionIsLeftAlone()
{
    const TestFolder folder;
    SystemFileDialogs dialogs;
    Answer answer([&](QFileDialog &dialog) {
        Answer::type(dialog, QStringLiteral("report.PDF"));
        Answer::accept(dialog);
    });
    QCOMPARE(target(dialogs, folder.path("x.pdf")), folder.path("report.PDF"));
}

void TestFileDialogs::replacingAFileIsAskedFor()
{
    const TestFolder folder;
    folder.write("report.pdf", "old");
    SystemFileDialogs dialogs;
    Answer answer([&](QFileDialog &dialog) { Answer::accept(dialog); });
    QCOMPARE(target(dialogs, folder.path("report.pdf")), folder.path("report.pdf"));
    QCOMPARE(answer.questions(), 1);
}

void TestFileDialogs::replacingIsAskedForTheNameWithTheExtensionAdded()
{
    const TestFolder folder;
    folder.write("report.pdf", "old");
    SystemFileDialogs dialogs;
    Answer answer([&](QFileDialog &dialog) {
        Answer::type(dialog, QStringLiteral("report"));
        Answer::accept(dialog);
    });
    QCOMPARE(target(dialogs, folder.path("x.pdf")), folder.path("report.pdf"));
    QCOMPARE(answer.questions(), 1);
}

void TestFileDialogs::aFileThatMayNotBeReplacedIsNoTarget()
{
    const TestFolder folder;
    folder.write("report.pdf", "old");
    SystemFileDialogs dialogs;
    Answer answer([&](QFileDialog &dialog) {
        Answer::type(dialog, QStringLiteral("report"));
        Answer::accept(dialog);
    });
    answer.whenAsked(QMessageBox::No);
    QVERIFY(target(dialogs, folder.path("x.pdf")).isEmpty());
    QCOMPARE(answer.questions(), 1);
}

void TestFileDialogs::theWindowMayGoWhileTheUserIsAsked()
{
    auto *const window = new QWidget;
    SystemFileDialogs dialogs(window);
    Answer answer([&](QFileDialog &dialog) {
        QCOMPARE(dialog.parentWidget(), window);
        delete window;
    });
    QVERIFY(dialogs.askForDocuments(QStringLiteral("Open"), Filter).isEmpty());
}

QTEST_MAIN(TestFileDialogs)
#include "tst_file_dialogs.moc"
