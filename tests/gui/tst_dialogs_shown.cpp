#include "RowPicture.h"
#include "convert/FailureNote.h"
#include "i18n/AppText.h"
#include "i18n/AppTextSource.h"
#include "quorlin-skin/SkinShow.h"
#include "skin/AppSkin.h"
#include "skin/controls/ColorValue.h"
#include "ui/AppMenu.h"
#include "ui/ApplicationLook.h"
#include "ui/ListMenu.h"
#include "ui/MessageBox.h"
#include "ui/MessageText.h"
#include "ui/ReasonWords.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Quorlin;

/// Menus and message boxes in the shipped skins and languages: what a user would see.
class TestDialogsShown : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyMenuTextCanBeRead_data() { addRows(); }
    void everyMenuTextCanBeRead();
    void nothingInAMenuIsCut_data() { addRows(); }
    void nothingInAMenuIsCut();
    void theLinesBetweenGroupsCanBeSeen_data() { addRows(); }
    void theLinesBetweenGroupsCanBeSeen();
    void aMenusEdgeCanBeSeen_data() { addRows(); }
    void aMenusEdgeCanBeSeen();
    void theMarkedEntryLooksMarked_data() { addRows(); }
    void theMarkedEntryLooksMarked();
    void keysBesideAnEntryAreOnlyShown();
    void aShortMessageIsShownWhole_data() { addRows(); }
    void aShortMessageIsShownWhole();
    void aPathOfAnyLengthStaysOnTheScreen_data();
    void aPathOfAnyLengthStaysOnTheScreen();
    void aMessageLooksLikeTheWindow_data() { addRows(); }
    void aMessageLooksLikeTheWindow();
    void everyReasonIsShownBelowTheMessage_data() { addRows(); }
    void everyReasonIsShownBelowTheMessage();
    void aListOfFailuresIsShownWhole_data() { addRows(); }
    void aListOfFailuresIsShownWhole();
    void aLongReasonLeavesRoomForTheMessage();
    void assistiveToolsReadTheReason();
    void aMessageIsCopiedWithItsReason();
    void aMessageIsNoMarkUp();
    void aMessageCanBeCopied();
    void assistiveToolsReadTheMessage();

private:
    static void addRows();
    void wear(const QString &skin, const QString &language);
    void wear();
    [[nodiscard]] QString couldNotPrint(const QString &path) const;
    void checkDetail(MessageBox &box, const QString &text, const QString &detail) const;
    [[nodiscard]] QList<QMenu *> menus() const;

    AppTextSource m_texts;
    std::unique_ptr<SkinShow> m_show;
    std::unique_ptr<AppMenu> m_application;
    std::unique_ptr<ListMenu> m_list;
};

namespace {

double leastContrast()
{
    return AppSkin::GetSkinName() == QLatin1String("Clarity") ? 7.0 : 4.5;
}

/// Shows a menu for its picture.
QImage pictureOf(QMenu &menu)
{
    menu.popup(QPoint(10, 10));
    QCoreApplication::processEvents();
    auto picture = menu.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    menu.hide();
    return picture;
}

QRect points(const QImage &picture, const QRect &part)
{
    const auto ratio = picture.devicePixelRatio();
    return QRectF(part.x() * ratio, part.y() * ratio, part.width() * ratio, part.height() * ratio)
        .toAlignedRect()
        .intersected(picture.rect());
}

/// The most that any point of a part stands out from a colour.
double mostContrast(const QImage &picture, const QRect &part, const QColor &ground)
{
    const auto area = points(picture, part);
    auto most = 1.0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            most = std::max(most, ColorValue::contrast(picture.pixelColor(x, y), ground));
    return most;
}

QString withoutMarks(QString text)
{
    return text.replace(QLatin1String("&&"), QLatin1String("&"));
}

/// The toolkit gives its texts with ordinary blanks.
QString withoutNoBreak(QString text)
{
    return text.replace(QChar::Nbsp, QLatin1Char(' '));
}

QPushButton &buttonOf(const MessageBox &box)
{
    return *box.findChild<QPushButton *>();
}

/// Where the button stands in its box.
QRect placeOfButton(const MessageBox &box)
{
    const auto &button = buttonOf(box);
    return {button.mapTo(&box, QPoint()), button.size()};
}

MessageText &textOf(const MessageBox &box)
{
    return *box.findChild<MessageText *>();
}

} // namespace

void TestDialogsShown::initTestCase()
{
    QVERIFY(QDir().mkpath(QStringLiteral(QUORLIN_PICTURES)));
}

void TestDialogsShown::addRows()
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<QString>("language");
    for (const auto *const skin : {"Varnex", "Nightfall", "Clarity", "None"})
        for (const auto *const language : {"english", "français", "deutsch"})
            QTest::addRow("%s, %s", skin, language)
                << QString::fromUtf8(skin) << QString::fromUtf8(language);
}

void TestDialogsShown::wear(const QString &skin, const QString &language)
{
    m_list.reset();
    m_application.reset();
    m_show.reset();
    SkinShowOptions options;
    options.skin = skin;
    options.language = language;
    options.applicationFolder = QStringLiteral(QUORLIN_SOURCE_DIR "/data");
    m_show = std::make_unique<SkinShow>(options);
    ApplicationLook::wear(AppSkin::GetLook());
    m_application = std::make_unique<AppMenu>(nullptr);
    m_application->setTexts(m_texts);
    m_application->setLanguages(AppText::GetLanguageList());
    m_application->setSkins(AppSkin::GetSkinList());
    m_application->markLanguage(language);
    m_application->markSkin(skin);
    m_list = std::make_unique<ListMenu>(nullptr);
    m_list->setTexts(m_texts);
    m_list->setState(false, true);
}

void TestDialogsShown::wear()
{
    QFETCH(QString, skin);
    QFETCH(QString, language);
    wear(skin, language);
}

QList<QMenu *> TestDialogsShown::menus() const
{
    return QList<QMenu *>{m_application.get(), m_list.get()} +
           m_application->findChildren<QMenu *>() + m_list->findChildren<QMenu *>();
}

void TestDialogsShown::everyMenuTextCanBeRead()
{
    wear();
    QCOMPARE(menus().size(), 5);
    const auto ground = AppSkin::GetLook().colour(LookColour::Menu);
    for (auto *const menu : menus()) {
        const auto picture = pictureOf(*menu);
        for (auto *const entry : menu->actions()) {
            if (entry->isSeparator() || !entry->isVisible())
                continue;
            const auto place = menu->actionGeometry(entry);
            const auto found = mostContrast(picture, place.adjusted(10, 3, -10, -3), ground);
            QVERIFY2(found >= leastContrast(), qPrintable(entry->text()));
        }
    }
}

/// At both ends of an entry there is room, and name and keys stand apart.
void TestDialogsShown::nothingInAMenuIsCut()
{
    wear();
    const auto ground = AppSkin::GetLook().colour(LookColour::Menu);
    for (auto *const menu : menus()) {
        const auto picture = pictureOf(*menu);
        for (auto *const entry : menu->actions()) {
            if (entry->isSeparator() || !entry->isVisible())
                continue;
            const auto place = menu->actionGeometry(entry);
            const auto &metrics = menu->fontMetrics();
            const auto keys = entry->shortcut().toString(QKeySequence::NativeText);
            const auto needed = metrics.horizontalAdvance(withoutMarks(entry->text())) +
                                metrics.horizontalAdvance(keys) + 20;
            QVERIFY2(place.width() >= needed, qPrintable(entry->text()));
            QVERIFY2(place.height() >= metrics.height() + 10, qPrintable(entry->text()));
            for (const auto x : {place.left() + 1, place.right() - 6})
                QVERIFY2(mostContrast(picture, QRect(x, place.top() + 2, 5, place.height() - 4),
                                      ground) < 1.1,
                         qPrintable(entry->text()));
        }
    }
}

void TestDialogsShown::theLinesBetweenGroupsCanBeSeen()
{
    wear();
    const auto ground = AppSkin::GetLook().colour(LookColour::Menu);
    auto lines = 0;
    for (auto *const menu : menus()) {
        const auto picture = pictureOf(*menu);
        for (auto *const entry : menu->actions()) {
            const auto place = menu->actionGeometry(entry);
            if (!entry->isSeparator() || place.isEmpty())
                continue;
            ++lines;
            QVERIFY(mostContrast(picture, place.adjusted(10, 1, -10, -1), ground) >= 1.5);
        }
    }
    QVERIFY(lines >= 4);
}

void TestDialogsShown::aMenusEdgeCanBeSeen()
{
    wear();
    const auto ground = AppSkin::GetLook().colour(LookColour::Menu);
    for (auto *const menu : menus()) {
        const auto picture = pictureOf(*menu);
        const QRect left(0, menu->height() / 2, 2, 1);
        const QRect top(menu->width() / 2, 0, 1, 2);
        QVERIFY(mostContrast(picture, left, ground) >= 1.5);
        QVERIFY(mostContrast(picture, top, ground) >= 1.5);
    }
}

void TestDialogsShown::theMarkedEntryLooksMarked()
{
    wear();
    QFETCH(QString, language);
    auto *const menu = m_application->findChild<QMenu *>(QStringLiteral("menu_app_language"));
    QVERIFY(menu);
    const auto picture = pictureOf(*menu);
    const auto ground = AppSkin::GetLook().colour(LookColour::Menu);
    QCOMPARE(menu->actions().size(), 3);
    for (auto *const entry : menu->actions()) {
        const auto place = menu->actionGeometry(entry);
        const QRect column(place.left() + 1, place.top() + 1, 20, place.height() - 2);
        const auto isMarked = mostContrast(picture, column, ground) >= 3;
        QCOMPARE(isMarked, entry->data().toString() == language);
    }
}

void TestDialogsShown::keysBesideAnEntryAreOnlyShown()
{
    wear(QStringLiteral("Varnex"), QStringLiteral("english"));
    QWidget window;
    ListMenu menu(&window);
    QSignalSpy removed(menu.ss_lst_remove, &QAction::triggered);
    QSignalSpy first(menu.ss_lst_first, &QAction::triggered);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCOMPARE(menu.ss_lst_remove->shortcut(), QKeySequence(Qt::Key_Delete));
    QTest::keyClick(&window, Qt::Key_Delete);
    QTest::keyClick(&window, Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(removed.size(), 0);
    QCOMPARE(first.size(), 0);
}

void TestDialogsShown::aShortMessageIsShownWhole()
{
    wear();
    for (const auto key : {TextKey::ErrorPDFLibNotFound, TextKey::ErrorLanguageNotFound1}) {
        MessageBox box(AppText::GetText(key), MessageStyle::Critical, QStringLiteral("Quorlin"));
        box.show();
        QCOMPARE(box.windowTitle(), QStringLiteral("Quorlin"));
        QCOMPARE(textOf(box).toPlainText(), AppText::GetText(key));
        QCOMPARE(textOf(box).verticalScrollBar()->maximum(), 0);
        QCOMPARE(textOf(box).horizontalScrollBar()->maximum(), 0);
        QVERIFY(box.rect().contains(placeOfButton(box)));
        keepRowPicture(box, QStringLiteral("message"));
    }
}

void TestDialogsShown::aPathOfAnyLengthStaysOnTheScreen_data()
{
    QTest::addColumn<QString>("text");
    const auto name = QString(4000, QLatin1Char('m'));
    QTest::newRow("one word") << name;
    QTest::newRow("folders") << QStringLiteral("/some folder").repeated(320);
    QTest::newRow("between words")
        << QStringLiteral("The file ") + name + QStringLiteral(" is not valid PostScript.");
    QTest::newRow("lines") << QStringLiteral("line\n").repeated(500);
}

void TestDialogsShown::aPathOfAnyLengthStaysOnTheScreen()
{
    QFETCH(QString, text);
    for (const auto *const skin : {"Varnex", "Clarity"}) {
        wear(QLatin1String(skin), QStringLiteral("english"));
        MessageBox box(text, MessageStyle::Information, QStringLiteral("Information"));
        box.show();
        QCoreApplication::processEvents();
        const auto room = box.screen()->availableSize();
        QVERIFY(box.width() <= room.width() && box.height() <= room.height());
        QVERIFY(box.rect().contains(placeOfButton(box)));
        QCOMPARE(textOf(box).toPlainText(), text);
        QCOMPARE(textOf(box).horizontalScrollBar()->maximum(), 0);
        // What does not fit can be reached with the keyboard.
        QVERIFY(textOf(box).verticalScrollBar()->maximum() > 0);
        QVERIFY(textOf(box).focusPolicy() & Qt::TabFocus);
        QCOMPARE(box.focusWidget(), &buttonOf(box));
    }
}

void TestDialogsShown::aMessageLooksLikeTheWindow()
{
    wear();
    const auto look = AppSkin::GetLook();
    MessageBox box(QStringLiteral("Wm"), MessageStyle::Information, QString());
    box.show();
    QCoreApplication::processEvents();
    const auto picture = box.grab().toImage();
    const auto ground = look.colour(LookColour::Menu);
    QCOMPARE(picture.pixelColor(3, 3), ground);
    const auto &text = textOf(box);
    QVERIFY(mostContrast(picture, text.geometry(), ground) >= leastContrast());
    const auto &button = buttonOf(box);
    QVERIFY(button.icon().isNull() && button.isDefault());
    // Left of the button's text, within the ring of its focus.
    const auto inside = points(picture, placeOfButton(box)).topLeft() +
                        QPoint(10, button.height() / 2) * picture.devicePixelRatio();
    QCOMPARE(picture.pixelColor(inside), look.colour(LookColour::Accent));
    QVERIFY(ColorValue::contrast(look.colour(LookColour::AccentText),
                                 look.colour(LookColour::Accent)) >= leastContrast());
}

QString TestDialogsShown::couldNotPrint(const QString &path) const
{
    return AppText::GetText(TextKey::ErrorPrintFilename1) + QLatin1Char(' ') + path +
           AppText::GetText(TextKey::ErrorPrintFilename2);
}

/// The message stands as it is, and below it, whole and legible, the detail.
void TestDialogsShown::checkDetail(MessageBox &box, const QString &text,
                                   const QString &detail) const
{
    box.show();
    QCoreApplication::processEvents();
    const auto texts = box.findChildren<MessageText *>();
    QCOMPARE(texts.size(), 2);
    QCOMPARE(texts.first()->toPlainText(), text);
    QCOMPARE(texts.last()->toPlainText(), withoutNoBreak(detail));
    const auto room = box.screen()->availableSize();
    const auto ground = AppSkin::GetLook().colour(LookColour::Menu);
    const auto picture = box.grab().toImage();
    for (auto *const shown : texts) {
        // Only a tiny screen has no room for all of it; the keyboard reaches the rest.
        QVERIFY(shown->verticalScrollBar()->maximum() == 0 ||
                (room.height() < 600 && shown->focusPolicy() & Qt::TabFocus));
        QCOMPARE(shown->horizontalScrollBar()->maximum(), 0);
        QVERIFY(box.rect().contains(shown->geometry()));
        QVERIFY(mostContrast(picture, shown->geometry(), ground) >= leastContrast());
    }
    // As wide as it needs to be, up to what is comfortable to read.
    const auto &metrics = texts.last()->fontMetrics();
    auto widest = 0;
    for (const auto &line : detail.split(QLatin1Char('\n')))
        widest = std::max(widest, metrics.horizontalAdvance(line));
    QVERIFY(texts.last()->width() >=
            std::min({widest, 60 * metrics.averageCharWidth(), room.width() - 180}));
    // And no higher.
    for (auto *const shown : texts)
        QVERIFY(shown->height() <= int(shown->document()->size().height()) + 1);
    QVERIFY(texts.first()->geometry().bottom() < texts.last()->geometry().top());
    QVERIFY(texts.last()->geometry().bottom() < placeOfButton(box).top());
    QCOMPARE(texts.first()->x(), texts.last()->x());
    QVERIFY(box.width() <= room.width() && box.height() <= room.height());
    QVERIFY(box.rect().contains(placeOfButton(box)));
}

void TestDialogsShown::everyReasonIsShownBelowTheMessage()
{
    wear();
    QFETCH(QString, language);
    const ReasonWords words([&language] { return language; });
    const auto text = couldNotPrint(QStringLiteral("/documents/of/somebody/Annual report.docx"));
    const auto title = AppText::GetText(TextKey::ErrorWindowTitle);
    for (const auto reason : allReasons()) {
        if (reason == Reason::None)
            continue;
        const auto known = reason == Reason::ProgramMissing
                               ? QStringLiteral("LibreOffice (soffice) is not installed")
                               : QString();
        const auto detail = FailureNote::ofOne({text, reason, known}, words);
        MessageBox box(text, MessageStyle::Critical, title, nullptr, detail);
        checkDetail(box, text, detail);
        keepRowPicture(box, QStringLiteral("reason ") + reasonKey(reason));
    }
}

void TestDialogsShown::aListOfFailuresIsShownWhole()
{
    wear();
    QFETCH(QString, language);
    const ReasonWords words([&language] { return language; });
    QList<FailedDocument> documents;
    for (const auto reason : allReasons().mid(8, 7))
        documents.append(
            {QStringLiteral("/d/A document whose name is rather long, as they are.odt"),
             reason,
             {}});
    const auto text = AppText::GetText(TextKey::ErrorPDFLibPrint);
    const auto detail = FailureNote::ofAll(documents, words);
    QCOMPARE(detail.count(QLatin1Char('\n')), 5);
    MessageBox box(text, MessageStyle::Critical, QString(), nullptr, detail);
    checkDetail(box, text, detail);
    keepRowPicture(box, QStringLiteral("reasons of several"));
}

void TestDialogsShown::aLongReasonLeavesRoomForTheMessage()
{
    wear(QStringLiteral("Clarity"), QStringLiteral("english"));
    const auto text = QStringLiteral("/some folder").repeated(320);
    MessageBox box(text, MessageStyle::Critical, QString(), nullptr, text);
    box.show();
    QCoreApplication::processEvents();
    const auto room = box.screen()->availableSize();
    QVERIFY(box.width() <= room.width() && box.height() <= room.height());
    QVERIFY(box.rect().contains(placeOfButton(box)));
    for (auto *const shown : box.findChildren<MessageText *>()) {
        QVERIFY(shown->height() >= 4 * shown->fontMetrics().height());
        QVERIFY(shown->verticalScrollBar()->maximum() > 0);
        QVERIFY(shown->focusPolicy() & Qt::TabFocus);
    }
    QCOMPARE(box.focusWidget(), &buttonOf(box));
}

void TestDialogsShown::assistiveToolsReadTheReason()
{
    MessageBox box(QStringLiteral("what"), MessageStyle::Critical, QString(), nullptr,
                   QStringLiteral("why"));
    box.show();
    auto *const spoken = QAccessible::queryAccessibleInterface(&box);
    QVERIFY(spoken);
    QStringList heard;
    for (int at = 0; at < spoken->childCount(); ++at)
        if (const auto *const child = spoken->child(at); child->role() == QAccessible::StaticText)
            heard.append(child->text(QAccessible::Name));
    heard.removeAll(QString()); // the icon
    QCOMPARE(heard, QStringList({QStringLiteral("what"), QStringLiteral("why")}));
}

void TestDialogsShown::aMessageIsCopiedWithItsReason()
{
    MessageBox box(QStringLiteral("what"), MessageStyle::Plain, QString(), nullptr,
                   QStringLiteral("why"));
    box.show();
    QTest::keySequence(&buttonOf(box), QKeySequence::Copy);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("what\n\nwhy"));
}

void TestDialogsShown::aMessageIsNoMarkUp()
{
    const auto text = QStringLiteral("<b>/tmp/a&b</b>\nsecond line");
    MessageBox box(text, MessageStyle::Plain, QString());
    box.show();
    QCOMPARE(textOf(box).toPlainText(), text);
}

void TestDialogsShown::aMessageCanBeCopied()
{
    MessageBox box(QStringLiteral("copy me"), MessageStyle::Plain, QString());
    box.show();
    QTest::keySequence(&buttonOf(box), QKeySequence::Copy);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("copy me"));
    QVERIFY(textOf(box).textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    QVERIFY(textOf(box).isReadOnly());
}

void TestDialogsShown::assistiveToolsReadTheMessage()
{
    MessageBox box(QStringLiteral("hear me"), MessageStyle::Plain, QString());
    box.show();
    auto *const spoken = QAccessible::queryAccessibleInterface(&textOf(box));
    QVERIFY(spoken);
    QCOMPARE(spoken->role(), QAccessible::StaticText);
    QCOMPARE(spoken->text(QAccessible::Name), QStringLiteral("hear me"));
}

QTEST_MAIN(TestDialogsShown)
#include "tst_dialogs_shown.moc"
