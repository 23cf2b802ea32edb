#include "app/CommandText.h"

#include "support/TestFolder.h"
#include "ui/CommandItems.h"

#include <QTest>
#include <QUrl>

using namespace Quorlin;

class CommandTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyWithoutArguments();
    void joinsWithCommasInOrder();
    void makesAnExistingRelativePathAbsolute();
    void aNameWithAColonInFrontIsRelative();
    void makesAnExistingRelativeFolderAbsolute();
    void keepsWhatNamesNothing();
    void keepsAbsolutePaths();
    void keepsAnEmptyArgument();
    void keepsSpacesOfAPath();
    void namesAnExistingPathWithACommaByItsAddress_data();
    void namesAnExistingPathWithACommaByItsAddress();
    void keepsTheCommaOfWhatDoesNotExist();
    void turnsFileAddressesIntoPaths_data();
    void turnsFileAddressesIntoPaths();
    void keepsOtherAddresses_data();
    void keepsOtherAddresses();
    void takesAFileThatIsNamedLikeAnAddress();
    void worksWithoutAWorkingFolder();
    void whatHasRoomStaysOneText_data();
    void whatHasRoomStaysOneText();
    void aLongSelectionBecomesSeveralTexts();
    void eachTextBeginsWithTheVerb_data();
    void eachTextBeginsWithTheVerb();
    void aTextMayBeExactlyFull();
    void anItemWithoutRoomStaysAlone();
    void aPathWithACommaIsNotDivided();

private:
    TestFolder m_folder;

    [[nodiscard]] QString make(const QStringList &arguments) const
    {
        return CommandText::make(arguments, m_folder.path());
    }
};

void CommandTextTest::isEmptyWithoutArguments()
{
    QVERIFY(CommandText::make({}).isEmpty());
}

void CommandTextTest::joinsWithCommasInOrder()
{
    QCOMPARE(make({QStringLiteral("/b.xls"), QStringLiteral("/a.doc")}),
             QStringLiteral("/b.xls,/a.doc"));
}

void CommandTextTest::makesAnExistingRelativePathAbsolute()
{
    const auto path = m_folder.write("in/Bericht für Ärzte.doc", "x");
    QCOMPARE(make({QStringLiteral("in/Bericht für Ärzte.doc")}), path);
}

void CommandTextTest::aNameWithAColonInFrontIsRelative()
{
    const auto path = QDir::cleanPath(m_folder.write("./:a.doc", "x"));
    QCOMPARE(make({QStringLiteral(":a.doc")}), path);
}

void CommandTextTest::makesAnExistingRelativeFolderAbsolute()
{
    const auto path = m_folder.makeFolder("documents");
    QCOMPARE(make({QStringLiteral("documents")}), path);
}

void CommandTextTest::keepsWhatNamesNothing()
{
    QCOMPARE(make({QStringLiteral("missing.doc"), QStringLiteral("-x"), QStringLiteral("\"q\"")}),
             QStringLiteral("missing.doc,-x,\"q\""));
}

void CommandTextTest::keepsAbsolutePaths()
{
    const auto path = m_folder.write("a.doc", "x");
    const auto odd = m_folder.path() + QStringLiteral("/./a.doc");
    QCOMPARE(make({path, odd, QStringLiteral("/nowhere/b.doc")}),
             path + QLatin1Char(',') + odd + QStringLiteral(",/nowhere/b.doc"));
}

void CommandTextTest::keepsAnEmptyArgument()
{
    QCOMPARE(make({QStringLiteral("/a.doc"), QString()}), QStringLiteral("/a.doc,"));
}

void CommandTextTest::keepsSpacesOfAPath()
{
    const auto path = m_folder.write("a b.doc", "x");
    QCOMPARE(make({QStringLiteral("a b.doc")}), path);
}

void CommandTextTest::namesAnExistingPathWithACommaByItsAddress_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("comma") << QStringLiteral("Smith, John.doc");
    QTest::newRow("only commas") << QStringLiteral(",,,");
    QTest::newRow("what means something in an address")
        << QStringLiteral("100%, 5%2C #1?a=b&c;d:@é\\ 木.doc");
    QTest::newRow("line feed") << QStringLiteral("a,\nb.doc");
}

/// The list has no quoting: the comma would make two items of it at the other end.
void CommandTextTest::namesAnExistingPathWithACommaByItsAddress()
{
    QFETCH(const QString, name);
    const auto path = m_folder.write(name.toUtf8().constData(), "x");
    const auto text = make({name, path});
    QVERIFY2(text.startsWith(QLatin1String("file:///")), qPrintable(text));
    QCOMPARE(text.count(QLatin1Char(',')), 1);
    QCOMPARE(CommandItems::split(text), QStringList({path, path}));
}

void CommandTextTest::keepsTheCommaOfWhatDoesNotExist()
{
    QCOMPARE(make({QStringLiteral("/d/a,b.doc")}), QStringLiteral("/d/a,b.doc"));
}

void CommandTextTest::turnsFileAddressesIntoPaths_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("path");
    QTest::newRow("three slashes") << "file:///d/a.doc"
                                   << "/d/a.doc";
    QTest::newRow("one slash") << "file:/d/a.doc"
                               << "/d/a.doc";
    QTest::newRow("this machine") << "file://localhost/d/a.doc"
                                  << "/d/a.doc";
    QTest::newRow("capitals") << "FILE:///d/a.doc"
                              << "/d/a.doc";
    QTest::newRow("encoded") << "file:///d/a%20b%2Cc%C3%A9.doc" << QStringLiteral("/d/a b,cé.doc");
    QTest::newRow("sign of a fragment") << "file:///d/a%23b.doc"
                                        << "/d/a#b.doc";
    QTest::newRow("percent that encodes nothing") << "file:///d/100%.doc"
                                                  << "/d/100%.doc";
}

void CommandTextTest::turnsFileAddressesIntoPaths()
{
    QFETCH(const QString, address);
    QFETCH(const QString, path);
    QCOMPARE(make({address}), path);
}

void CommandTextTest::keepsOtherAddresses_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("another machine") << "file://server/d/a.doc";
    QTest::newRow("another scheme") << "ftp://server/a.doc";
    QTest::newRow("no path") << "file:";
    QTest::newRow("zero byte") << "file:///d/a%00b.doc";
}

void CommandTextTest::keepsOtherAddresses()
{
    QFETCH(const QString, address);
    QCOMPARE(make({address}), address);
}

void CommandTextTest::takesAFileThatIsNamedLikeAnAddress()
{
    const auto path = m_folder.write("file:a.doc", "x");
    QCOMPARE(make({QStringLiteral("file:a.doc")}), path);
}

void CommandTextTest::worksWithoutAWorkingFolder()
{
    QCOMPARE(CommandText::make({QStringLiteral("a.doc")}, {}), QStringLiteral("a.doc"));
}

void CommandTextTest::whatHasRoomStaysOneText_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("one") << QStringList{QStringLiteral("/a.doc")};
    QTest::newRow("two") << QStringList{QStringLiteral("/a.doc"), QStringLiteral("/b.doc")};
    QTest::newRow("an empty one") << QStringList{QStringLiteral("/a.doc"), QString()};
    QTest::newRow("only empty ones") << QStringList{QString(), QString()};
    QTest::newRow("a verb") << QStringList{QStringLiteral("/n")};
    QTest::newRow("a verb and more") << QStringList{QStringLiteral("/p"), QStringLiteral("/a.doc")};
}

void CommandTextTest::whatHasRoomStaysOneText()
{
    QFETCH(const QStringList, arguments);
    QCOMPARE(CommandText::parts(CommandText::items(arguments), 2048),
             QStringList{CommandText::make(arguments)});
    QVERIFY(CommandText::parts({}, 2048).isEmpty());
}

void CommandTextTest::aLongSelectionBecomesSeveralTexts()
{
    QStringList items;
    for (int number = 0; number < 1000; ++number)
        items.append(QStringLiteral("/a folder/Bericht für Ärzte %1.odt").arg(number));
    const auto texts = CommandText::parts(items, 2048);
    QVERIFY(texts.size() > 10);
    for (const auto &text : texts)
        QVERIFY(text.size() <= 2048 && (text.size() > 2048 - 100 || text == texts.last()));
    QCOMPARE(texts.join(QLatin1Char(',')), items.join(QLatin1Char(',')));
}

void CommandTextTest::eachTextBeginsWithTheVerb_data()
{
    QTest::addColumn<QString>("verb");
    for (const auto *const verb : {"/p", "/a", "/n"})
        QTest::newRow(verb) << QString::fromLatin1(verb);
}

void CommandTextTest::eachTextBeginsWithTheVerb()
{
    QFETCH(const QString, verb);
    const auto items = QStringList{verb, QStringLiteral("/one.doc"), QStringLiteral("/two.doc"),
                                   QStringLiteral("/three.doc")};
    QCOMPARE(CommandText::parts(items, 21),
             QStringList({verb + QStringLiteral(",/one.doc,/two.doc"),
                          verb + QStringLiteral(",/three.doc")}));
}

void CommandTextTest::aTextMayBeExactlyFull()
{
    const QStringList items{QStringLiteral("/1.ps"), QStringLiteral("/2.ps")};
    QCOMPARE(CommandText::parts(items, 11).size(), 1);
    QCOMPARE(CommandText::parts(items, 10), items);
}

/// Whoever sends it cuts it.
void CommandTextTest::anItemWithoutRoomStaysAlone()
{
    const QString endless(3000, QLatin1Char('x'));
    QCOMPARE(CommandText::parts({QStringLiteral("/a"), QStringLiteral("/a.doc"), endless,
                                 QStringLiteral("/b.doc")},
                                2048),
             QStringList({QStringLiteral("/a,/a.doc"), QStringLiteral("/a,") + endless,
                          QStringLiteral("/a,/b.doc")}));
}

void CommandTextTest::aPathWithACommaIsNotDivided()
{
    const QStringList items{QStringLiteral("/a.doc"), QStringLiteral("/one,two.doc")};
    QCOMPARE(CommandText::parts(items, 14), items);
}

QTEST_GUILESS_MAIN(CommandTextTest)
#include "tst_command_text.moc"
