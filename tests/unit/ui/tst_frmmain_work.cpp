#include "MainScene.h"
#include "i18n/AppText.h"
#include "skin/controls/KelLabel.h"
#include "skin/controls/KelProgressBar.h"
#include "ui/AppMenu.h"
#include "ui/FileList.h"
#include "ui/ListMenu.h"
#include "ui/PictureBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

using namespace Quorlin;

/// The main window while it converts, and its other controls.
class TestFrmMainWork : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void convertDoesNothingWithoutDocuments();
    void convertDoesNothingWhileItConverts();
    void deliversEachDocument();
    void oneDocumentIsNotMerged();
    void mergesIntoTheChosenFile();
    void showsResultsWhenAsked();
    void everyControlIsDisabledWhileItWorks();
    void everyControlIsEnabledAfterIt();
    void theMailRuleHoldsAfterAJob();
    void theFocusComesBackAfterAJob();
    void theFocusComesBackOnce();
    void closingIsRefusedWhileItWorks();
    void theSystemEndsItWhileItWorks();
    void rightClickShowsNoMenuWhileItWorks();
    void rightClickShowsTheMenu();
    void theMenuIsReachedByTheKeyboard();
    void dropsAndMovesAreIgnoredWhileItWorks();
    void captionsAreIgnoredWhileItWorks();
    void documentsFromOtherStartsWaitForTheEndOfTheJob();
    void convertWaitsForDocumentsThatStillArrive();
    void aFailedJobIsToldAndTheNextOneWorks();
    void whyAJobFailedIsToldInTheLanguageInUse_data();
    void whyAJobFailedIsToldInTheLanguageInUse();
    void aComponentThatDiesIsToldAndTheNextJobWorks();
    void aDocumentThatVanishedIsTold();
    void captionsToggleTheirOptions();
    void accessKeysWork();
    void helpOpensTheProductsPage();
    void theCloseButtonEndsTheProgram();
    void theMinimiseButtonMinimises();
    void anotherLanguageChangesAllTexts();
    void anotherSkinKeepsTheStateOfTheWindow();
    void theAboutBoxIsModal();
    void draggingTheFreeSurfaceMovesTheWindow();

private:
    [[nodiscard]] frmMain &window() { return m_scene->window(); }
    [[nodiscard]] bool exists(const char *name) const
    {
        return QFile::exists(m_scene->folder().path(name));
    }
    void startLongJob();
    [[nodiscard]] QStringList messages() const;
    [[nodiscard]] QList<QWidget *> controlsOfTheJob();

    std::unique_ptr<MainScene> m_scene;
};

void TestFrmMainWork::init()
{
    m_scene = std::make_unique<MainScene>();
    m_scene->open();
}

void TestFrmMainWork::cleanup()
{
    m_scene.reset();
    qunsetenv("QUORLIN_FAKE");
}

QStringList TestFrmMainWork::messages() const
{
    QStringList texts;
    for (const auto &message : m_scene->messages.all())
        texts.append(message.text);
    return texts;
}

/// A job that is at work until the window goes.
void TestFrmMainWork::startLongJob()
{
    m_scene->fill({"dawdle.txt", "b.txt"});
    Q_EMIT window().LblConvert->Click();
    QVERIFY(window().AtWork());
}

QList<QWidget *> TestFrmMainWork::controlsOfTheJob()
{
    auto &form = window();
    return {form.lblTitle,    form.lblClose,    form.LblMin,        form.LblHelp,
            form.LblConvert,  form.LblCompress, form.LblLibConvert, form.LblFirst,
            form.LblPrevious, form.LblNext,     form.LblLast,       form.LblMail,
            form.LblShow,     form.LblLink,     form.OptMail,       form.OptShow,
            form.OptLink,     form.LstFile,     form.cmbCompression};
}

void TestFrmMainWork::convertDoesNothingWithoutDocuments()
{
    Q_EMIT window().LblConvert->Click();
    QVERIFY(!window().AtWork());
    QVERIFY(messages().isEmpty());
}

void TestFrmMainWork::convertDoesNothingWhileItConverts()
{
    startLongJob();
    window().BarProgress->Percent(33);
    Q_EMIT window().LblConvert->Click();
    QVERIFY(window().AtWork());
    QCOMPARE(window().BarProgress->Percent(), qint16(33));
    QVERIFY(messages().isEmpty());
}

void TestFrmMainWork::deliversEachDocument()
{
    m_scene->fill({"a.txt", "b.txt"});
    QVERIFY(m_scene->convert());
    QTRY_VERIFY(exists("a.pdf") && exists("b.pdf"));
    QVERIFY(messages().isEmpty());
    QVERIFY(m_scene->opened.isEmpty());
    QCOMPARE(window().DocFullNameList().size(), 2);
}

void TestFrmMainWork::oneDocumentIsNotMerged()
{
    window().OptLink->setChecked(true);
    m_scene->fill({"a.txt"});
    QVERIFY(m_scene->convert());
    QVERIFY(exists("a.pdf"));
    QVERIFY(m_scene->dialogs.questions.isEmpty());
}

void TestFrmMainWork::mergesIntoTheChosenFile()
{
    window().OptLink->setChecked(true);
    m_scene->dialogs.target = m_scene->folder().path("all.pdf");
    m_scene->fill({"a.txt", "b.txt"});
    QVERIFY(m_scene->convert());
    QVERIFY(exists("all.pdf"));
    QVERIFY(!exists("a.pdf"));
    QCOMPARE(m_scene->dialogs.questions.size(), 1);
    QVERIFY(m_scene->dialogs.questions.first().endsWith(QLatin1String("/a.pdf")));
}

void TestFrmMainWork::showsResultsWhenAsked()
{
    window().OptShow->setChecked(true);
    m_scene->fill({"a.txt"});
    QVERIFY(m_scene->convert());
    QCOMPARE(m_scene->opened, QStringList{m_scene->folder().path("a.pdf")});
}

void TestFrmMainWork::everyControlIsDisabledWhileItWorks()
{
    startLongJob();
    for (const auto *const control : controlsOfTheJob())
        QVERIFY2(!control->isEnabled(), qPrintable(control->objectName()));
    QVERIFY(!window().BarProgress->Enabled());
    QVERIFY(window().PctInfo->isVisible());
    QVERIFY(window().BarProgress->isVisible());
    QCOMPARE(window().LblInfo->Caption(), AppText::GetText(TextKey::InfoPrint));
}

void TestFrmMainWork::everyControlIsEnabledAfterIt()
{
    m_scene->fill({"a.txt"});
    QVERIFY(m_scene->convert());
    for (const auto *const control : controlsOfTheJob())
        QVERIFY2(control->isEnabled(), qPrintable(control->objectName()));
    QVERIFY(!window().PctInfo->isVisible());
    QVERIFY(!window().BarProgress->isVisible());
    QCOMPARE(window().BarProgress->Value(), 0);
}

void TestFrmMainWork::theMailRuleHoldsAfterAJob()
{
    m_scene->fill({"a.txt", "b.txt"});
    QVERIFY(m_scene->convert());
    QVERIFY(!window().OptMail->isEnabled());
    QVERIFY(!window().LblMail->isEnabled());
}

void TestFrmMainWork::theFocusComesBackAfterAJob()
{
    m_scene->fill({"a.txt"});
    window().cmbCompression->setFocus();
    QVERIFY(m_scene->convert());
    QVERIFY(window().cmbCompression->hasFocus());
}

/// The window is idle from the first result on; who has moved on must not be called back.
void TestFrmMainWork::theFocusComesBackOnce()
{
    m_scene->fill({"a.txt", "b.txt", "c.txt"});
    window().OptShow->setChecked(true);
    window().cmbCompression->setFocus();
    QVERIFY(m_scene->convert());
    window().OptLink->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(m_scene->opened.size() == 3, 20000);
    QTest::qWait(50);
    QVERIFY(window().OptLink->hasFocus());
}

void TestFrmMainWork::closingIsRefusedWhileItWorks()
{
    startLongJob();
    const QSignalSpy unloaded(&window(), &frmMain::unloaded);
    QVERIFY(!window().close());
    QVERIFY(window().isVisible());
    QCOMPARE(unloaded.size(), 0);
}

void TestFrmMainWork::theSystemEndsItWhileItWorks()
{
    startLongJob();
    const QSignalSpy unloaded(&window(), &frmMain::unloaded);
    window().OptLink->setChecked(true);
    window().endBySystem();
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(!window().isVisible());
    QCOMPARE(m_scene->remembered("MergeOption"), QStringLiteral("true"));
}

void TestFrmMainWork::rightClickShowsNoMenuWhileItWorks()
{
    startLongJob();
    QTest::mouseClick(window().windowHandle(), Qt::RightButton, {}, {6, 60});
    Q_EMIT window().LstFile->menuAsked({10, 10});
    QVERIFY(!window().findChild<AppMenu *>()->isVisible());
    QVERIFY(!window().findChild<ListMenu *>()->isVisible());
}

void TestFrmMainWork::rightClickShowsTheMenu()
{
    QTest::mouseClick(window().windowHandle(), Qt::RightButton, {}, {6, 60});
    auto &menu = *window().findChild<AppMenu *>();
    QTRY_VERIFY(menu.isVisible());
    menu.close();
    const QPoint place(6, 60);
    QMouseEvent again(QEvent::MouseButtonDblClick, place, window().mapToGlobal(place),
                      Qt::RightButton, Qt::RightButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window(), &again);
    QVERIFY(menu.isVisible());
    menu.close();
}

void TestFrmMainWork::theMenuIsReachedByTheKeyboard()
{
    auto &menu = *window().findChild<AppMenu *>();
    for (QWidget *const control :
         {static_cast<QWidget *>(window().cmbCompression), static_cast<QWidget *>(window().OptShow),
          static_cast<QWidget *>(window().LblConvert)}) {
        control->setFocus();
        QTest::keyClick(control, Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY2(menu.isVisible(), qPrintable(control->objectName()));
        menu.close();
    }
}

void TestFrmMainWork::dropsAndMovesAreIgnoredWhileItWorks()
{
    startLongJob();
    const auto before = window().DocFullNameList();
    window().LstFile->setCurrentRow(1);
    Q_EMIT window().LblFirst->Click();
    window().findChild<ListMenu *>()->ss_lst_clear->trigger();
    Q_EMIT window().LstFile->deleteReleased();
    Q_EMIT window().LstFile->filesDropped({m_scene->write("c.txt")});
    QVERIFY(!window().isTakingIn());
    QCOMPARE(window().DocFullNameList(), before);
}

void TestFrmMainWork::captionsAreIgnoredWhileItWorks()
{
    startLongJob();
    for (auto *const caption : {window().LblShow, window().LblLink, window().LblMail})
        Q_EMIT caption->Click();
    QVERIFY(!window().OptShow->isChecked());
    QVERIFY(!window().OptLink->isChecked());
    QVERIFY(!window().OptMail->isChecked());
}

/// The running job decides at its end by the list whether it merges.
void TestFrmMainWork::documentsFromOtherStartsWaitForTheEndOfTheJob()
{
    window().OptLink->setChecked(true);
    m_scene->fill({"a.txt"});
    Q_EMIT window().LblConvert->Click();
    window().ReceiveMessage(m_scene->write("b.txt"));
    QVERIFY(window().AtWork());
    QTRY_VERIFY_WITH_TIMEOUT(!window().AtWork(), 20000);
    QVERIFY(exists("a.pdf"));
    QVERIFY(m_scene->dialogs.questions.isEmpty());
    QVERIFY(m_scene->hasDocuments(2));
}

void TestFrmMainWork::convertWaitsForDocumentsThatStillArrive()
{
    window().AddCommandLineFiles(m_scene->write("a.txt"));
    QVERIFY(window().DocFullNameList().isEmpty());
    Q_EMIT window().LblConvert->Click();
    QTRY_VERIFY_WITH_TIMEOUT(exists("a.pdf"), 20000);
}

void TestFrmMainWork::aFailedJobIsToldAndTheNextOneWorks()
{
    m_scene->fill({"fail.txt", "b.txt"});
    QVERIFY(m_scene->convert());
    QCOMPARE(messages().size(), 2);
    QVERIFY(messages().first().contains(QLatin1String("fail.txt")));
    QCOMPARE(messages().last(), AppText::GetText(TextKey::ErrorPDFLibPrint));
    window().LstFile->setCurrentRow(0);
    window().findChild<ListMenu *>()->ss_lst_remove->trigger();
    QVERIFY(m_scene->convert());
    QVERIFY(exists("b.pdf"));
}

void TestFrmMainWork::whyAJobFailedIsToldInTheLanguageInUse_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("english") << "english"
                             << "The document is protected by a password.";
    QTest::newRow("français") << "français"
                              << "Le document est protégé par un mot de passe.";
    QTest::newRow("deutsch") << "deutsch"
                             << "Das Dokument ist durch ein Kennwort geschützt.";
}

void TestFrmMainWork::whyAJobFailedIsToldInTheLanguageInUse()
{
    QFETCH(const QString, language);
    QFETCH(const QString, sentence);
    window().Language(language);
    m_scene->fill({"protected.txt", "b.txt"});
    QVERIFY(m_scene->convert());
    QCOMPARE(m_scene->messages.all().size(), 2);
    const auto first = m_scene->messages.all().first();
    QCOMPARE(first.text, AppText::GetText(TextKey::ErrorPrintFilename1) + QLatin1Char(' ') +
                             m_scene->folder().path("protected.txt") +
                             AppText::GetText(TextKey::ErrorPrintFilename2));
    QVERIFY2(first.detail.startsWith(sentence), qPrintable(first.detail));
    const auto last = m_scene->messages.all().last();
    QCOMPARE(last.text, AppText::GetText(TextKey::ErrorPDFLibPrint));
    QVERIFY2(last.detail.startsWith(QStringLiteral("protected.txt: ") + sentence),
             qPrintable(last.detail));
}

void TestFrmMainWork::aComponentThatDiesIsToldAndTheNextJobWorks()
{
    m_scene->fill({"die.txt"});
    QVERIFY(m_scene->convert());
    QVERIFY(messages().contains(AppText::GetText(TextKey::ErrorPDFLibPrint)));
    window().findChild<ListMenu *>()->ss_lst_clear->trigger();
    m_scene->fill({"b.txt"});
    QVERIFY(m_scene->convert());
    QVERIFY(exists("b.pdf"));
}

void TestFrmMainWork::aDocumentThatVanishedIsTold()
{
    m_scene->fill({"missing.txt"});
    QVERIFY(m_scene->convert());
    QVERIFY(messages().first().contains(QLatin1String("missing.txt")));
    QVERIFY(!exists("missing.pdf"));
}

void TestFrmMainWork::captionsToggleTheirOptions()
{
    const QList<std::pair<KelLabel *, QCheckBox *>> pairs{{window().LblShow, window().OptShow},
                                                          {window().LblLink, window().OptLink},
                                                          {window().LblMail, window().OptMail}};
    for (const auto &[caption, option] : pairs) {
        QTest::mouseClick(caption, Qt::LeftButton);
        QVERIFY2(option->isChecked(), qPrintable(option->objectName()));
        QTest::mouseClick(caption, Qt::LeftButton);
        QVERIFY2(!option->isChecked(), qPrintable(option->objectName()));
    }
}

void TestFrmMainWork::accessKeysWork()
{
    m_scene->fill({"a.txt"});
    const auto press = [this](const KelLabel *label) {
        QTest::keyClick(&window(), Qt::Key(label->accessKey().unicode()), Qt::AltModifier);
    };
    QSet<QChar> keys;
    for (const auto *const label : {window().LblShow, window().LblLink, window().LblMail,
                                    window().LblCompress, window().LblLibConvert})
        keys.insert(label->accessKey());
    QCOMPARE(keys.size(), 5);
    QVERIFY(!keys.contains(QChar()));
    press(window().LblShow);
    QVERIFY(window().OptShow->isChecked());
    press(window().LblLink);
    QVERIFY(window().OptLink->isChecked());
    press(window().LblCompress);
    QVERIFY(window().cmbCompression->hasFocus());
    press(window().LblLibConvert);
    QVERIFY(window().AtWork());
}

void TestFrmMainWork::helpOpensTheProductsPage()
{
    window().Language(QStringLiteral("français"));
    QTest::mouseClick(window().LblHelp, Qt::LeftButton);
    QCOMPARE(m_scene->pages.size(), 1);
    QVERIFY(m_scene->pages.first().endsWith(QLatin1String("index-fr.htm")));
    QTest::keyClick(&window(), Qt::Key_F1);
    QCOMPARE(m_scene->pages.size(), 2);
}

void TestFrmMainWork::theCloseButtonEndsTheProgram()
{
    const QSignalSpy unloaded(&window(), &frmMain::unloaded);
    QTest::mouseClick(window().lblClose, Qt::LeftButton);
    QCOMPARE(unloaded.size(), 1);
    QVERIFY(!window().isVisible());
}

void TestFrmMainWork::theMinimiseButtonMinimises()
{
    QVERIFY(window().LblMin->isVisible());
    QTest::mouseClick(window().LblMin, Qt::LeftButton);
    QVERIFY(window().isMinimized());
}

void TestFrmMainWork::anotherLanguageChangesAllTexts()
{
    window().cmbCompression->setCurrentIndex(2);
    const auto texts = [this] {
        QStringList all{window().windowTitle(), window().cmbCompression->itemText(1)};
        for (const auto *const label : {window().LblShow, window().LblLink, window().LblMail,
                                        window().LblCompress, window().LblLibConvert})
            all.append(label->shownText());
        for (auto *const menu : window().findChildren<NamedMenu *>()) {
            for (const auto *const entry : menu->actions()) {
                if (!entry->isSeparator() && !entry->data().isValid())
                    all.append(entry->text());
            }
        }
        return all;
    };
    const auto english = texts();
    Q_EMIT window().findChild<AppMenu *>()->languageChosen(QStringLiteral("deutsch"));
    QCOMPARE(window().Language(), QStringLiteral("deutsch"));
    const auto german = texts();
    QCOMPARE(german.size(), english.size());
    QVERIFY(german.size() > 15);
    QVERIFY(german.mid(1) != english.mid(1));
    QCOMPARE(window().cmbCompression->currentIndex(), 2);
    window().setProperty("Language", QStringLiteral("english"));
    QCOMPARE(texts(), english);
    QVERIFY(!window().PctInfo->isVisible());
}

void TestFrmMainWork::anotherSkinKeepsTheStateOfTheWindow()
{
    m_scene->fill({"a.txt", "b.txt"});
    window().OptShow->setChecked(true);
    for (const auto *const skin : {"Nightfall", "Clarity", "Gone", "Varnex"}) {
        Q_EMIT window().findChild<AppMenu *>()->skinChosen(QLatin1String(skin));
        QVERIFY2(!window().PctInfo->isVisible(), skin);
        QVERIFY2(!window().BarProgress->isVisible(), skin);
        QVERIFY2(window().LblMin->isVisible(), skin);
        QVERIFY(!window().AtWork());
        QVERIFY(!window().OptMail->isEnabled());
        QVERIFY(window().OptShow->isChecked());
    }
    QCOMPARE(messages().size(), 1);
    QVERIFY(messages().first().contains(QLatin1String("Gone")));
}

void TestFrmMainWork::theAboutBoxIsModal()
{
    Q_EMIT window().findChild<AppMenu *>()->aboutChosen();
    auto *const about = window().findChild<QWidget *>(QStringLiteral("frmAbout"));
    QVERIFY(about && about->isVisible());
    QVERIFY(about->isModal());
    about->close();
    QTRY_VERIFY(!window().findChild<QWidget *>(QStringLiteral("frmAbout")));
}

void TestFrmMainWork::draggingTheFreeSurfaceMovesTheWindow()
{
    const auto before = window().pos();
    const QPoint grip(6, 60);
    QTest::mousePress(&window(), Qt::LeftButton, {}, grip);
    QMouseEvent moved(QEvent::MouseMove, grip + QPoint(25, 15),
                      window().mapToGlobal(grip + QPoint(25, 15)), Qt::NoButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&window(), &moved);
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, grip);
    QCOMPARE(window().pos(), before + QPoint(25, 15));
}

QTEST_MAIN(TestFrmMainWork)
#include "tst_frmmain_work.moc"
