#include "settings/IniFile.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QTest>

using namespace Quorlin;

class TestIniFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dropsALastLineWithoutALineEnd();
    void readsEveryKindOfLineEnd_data();
    void readsEveryKindOfLineEnd();
    void trimsSpacesAroundNamesAndValues();
    void splitsAtTheFirstEqualsSignOnly();
    void takesALineWithoutAnEqualsSignAsItsOwnNameAndValue();
    void takesALineThatBeginsWithAnEqualsSignAsItsOwnName();
    void putsKeysBeforeAnyGroupIntoNone();
    void tellsUpperFromLowerCase();
    void searchesTheFirstGroupOfANameOnly();
    void keepsTabsAndTrimsSpacesAndBackspaces();
    void keepsTheLastGroupOfAFileLoadedBefore();
    void leavesAValueThatIsNotGiven();
    void setsAndAddsVariables();
    void makesAMissingGroup();
    void givesNoVariablesOfAnUnknownGroup();
    void handsOutTheVeryVariables();
    void takesAGroupsNameAsItStands_data();
    void takesAGroupsNameAsItStands();
    void knowsNoComments();
    void keepsEqualNamesSideBySide();
    void givesAnEmptyTextForWhatIsMissing();
    void writesGroupsInOrderWithBothLineEndCharacters();
    void readsBackWhatItWrote();
    void writesAGroupWithoutANameAndFindsItAgain();
    void replacesALongerFile();
    void readsAndWritesWindows1252();
    void writesAQuestionMarkForACharacterThatItLacks();
    void bearsNulBytes();
    void bearsALoneCarriageReturn();
    void bearsAMegabyteOnOneLine();
    void readsAFileThatIsLargerThanOnePiece();
    void failsOnAMissingFile();
    void failsOnAFolder();
    void failsOnAPipeWithoutWaiting();
    void failsOnAFileThatMayNotBeRead();
    void failsOnAnAbsurdlyLargeFile();
    void failsToWriteIntoAMissingFolder();
    void failsToWriteAProtectedFileAndLeavesIt();
    void failsToWriteOntoAFullDisk();
    void readsAnEmptyFileAsNothing();

private:
    IniFile loaded(const QByteArray &bytes) const
    {
        IniFile ini;
        if (ini.Load(m_folder.write("test.ini", bytes)) != 0)
            QTest::qFail("the file was not read", __FILE__, __LINE__);
        return ini;
    }

    QByteArray saved(const IniFile &ini) const
    {
        const auto path = m_folder.path("saved.ini");
        return ini.Save(path) == 0 ? contentOf(path) : QByteArray("not written");
    }

    /// Others may look into the folder, so that only the file itself says no.
    void openFolder() const
    {
        QVERIFY(QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7755)));
    }

    TestFolder m_folder;
};

namespace {

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// All variables as "name=value", to compare in one go.
QStringList all(const IniFile &ini, const QString &group = {})
{
    QStringList lines;
    for (const auto &var : ini.GetVars(group))
        lines.append(var->Name + QLatin1Char('=') + var->Value);
    return lines;
}

} // namespace

void TestIniFile::dropsALastLineWithoutALineEnd()
{
    const auto ini = loaded("[A]\r\na=1\r\nb=2");
    QCOMPARE(all(ini), QStringList{text("a=1")});
    QVERIFY(all(loaded("[A]")).isEmpty());
    QCOMPARE(saved(loaded("[A]")), QByteArray());
}

void TestIniFile::readsEveryKindOfLineEnd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("CR LF") << QByteArray("[A]\r\na=1\r\nb=2\r\n");
    QTest::newRow("LF") << QByteArray("[A]\na=1\nb=2\n");
    QTest::newRow("CR") << QByteArray("[A]\ra=1\rb=2\r");
    QTest::newRow("LF CR") << QByteArray("[A]\n\ra=1\n\rb=2\n\r");
    QTest::newRow("mixed") << QByteArray("[A]\na=1\r\nb=2\r");
    QTest::newRow("blank lines, CR LF") << QByteArray("\r\n[A]\r\n\r\na=1\r\n\r\n\r\nb=2\r\n\r\n");
    QTest::newRow("blank lines, LF") << QByteArray("\n\n[A]\n\na=1\n\nb=2\n\n");
    QTest::newRow("CR LF CR") << QByteArray("[A]\r\n\ra=1\r\n\rb=2\r\n\r");
}

void TestIniFile::readsEveryKindOfLineEnd()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(saved(loaded(bytes)), QByteArray("[A]\r\na = 1\r\nb = 2\r\n"));
}

void TestIniFile::trimsSpacesAroundNamesAndValues()
{
    const QStringList wanted{text("key=value")};
    QCOMPARE(all(loaded("key=value\n")), wanted);
    QCOMPARE(all(loaded("key = value\n")), wanted);
    QCOMPARE(all(loaded("   key   =   value   \n")), wanted);
    QCOMPARE(all(loaded("key=a b\n")), QStringList{text("key=a b")});
    QCOMPARE(all(loaded("key=    \n")), QStringList{text("key=")});
}

void TestIniFile::splitsAtTheFirstEqualsSignOnly()
{
    QCOMPARE(loaded("a=b=c\n").GetVar(text("a")), text("b=c"));
}

void TestIniFile::takesALineWithoutAnEqualsSignAsItsOwnNameAndValue()
{
    const auto vars = loaded("novalue\n").GetVars();
    QCOMPARE(vars.size(), 1);
    QCOMPARE(vars.first()->Name, text("novalue"));
    QCOMPARE(vars.first()->Value, text("novalue"));
}

void TestIniFile::takesALineThatBeginsWithAnEqualsSignAsItsOwnName()
{
    const auto vars = loaded("=x\n=\n").GetVars();
    QCOMPARE(vars.size(), 2);
    QCOMPARE(vars.first()->Name, text("=x"));
    QCOMPARE(vars.first()->Value, text("x"));
    QCOMPARE(vars.last()->Name, text("="));
    QCOMPARE(vars.last()->Value, QString());
}

void TestIniFile::putsKeysBeforeAnyGroupIntoNone()
{
    const auto ini = loaded("key=value\n[A]\n");
    QCOMPARE(ini.GetVar(text("key")), text("value"));
    QCOMPARE(ini.GetVar(text("key"), text("None")), text("value"));
    QCOMPARE(saved(ini), QByteArray("[None]\r\nkey = value\r\n[A]\r\n"));
}

void TestIniFile::tellsUpperFromLowerCase()
{
    const auto ini = loaded("[APP]\nSkin=upper\n[App]\nskin=lower\n");
    QCOMPARE(ini.GetVar(text("Skin"), text("APP")), text("upper"));
    QCOMPARE(ini.GetVar(text("skin"), text("APP")), QString());
    QCOMPARE(ini.GetVar(text("skin"), text("App")), text("lower"));
    QCOMPARE(ini.GetVar(text("skin")), text("lower"));
    QCOMPARE(ini.GetVar(text("skin"), text("app")), QString());
}

void TestIniFile::searchesTheFirstGroupOfANameOnly()
{
    const auto ini = loaded("[A]\na=1\n[A]\na=2\nb=3\n");
    QCOMPARE(ini.GetVar(text("a"), text("A")), text("1"));
    QCOMPARE(ini.GetVar(text("b"), text("A")), QString());
    QCOMPARE(ini.GetVar(text("a")), text("1"));
    QCOMPARE(ini.GetVar(text("b")), text("3"));
    QCOMPARE(all(ini, text("A")), QStringList{text("a=1")});
}

void TestIniFile::keepsTabsAndTrimsSpacesAndBackspaces()
{
    QCOMPARE(loaded("key=\tvalue\t\n").GetVar(text("key")), text("\tvalue\t"));
    QCOMPARE(loaded("key= \b value\b \n").GetVar(text("key")), text("value"));
    QCOMPARE(loaded("\b key \b=x\n").GetVar(text("key")), text("x"));
}

void TestIniFile::keepsTheLastGroupOfAFileLoadedBefore()
{
    auto ini = loaded("[A]\na=1\n[B]\nb=2\n");
    QCOMPARE(ini.Load(m_folder.write("second.ini", "early=0\n[C]\nc=3\n")), 0);
    // Keys before any group line join the group that stayed.
    QCOMPARE(saved(ini), QByteArray("[B]\r\nb = 2\r\nearly = 0\r\n[C]\r\nc = 3\r\n"));
}

void TestIniFile::leavesAValueThatIsNotGiven()
{
    auto ini = loaded("[A]\na=1\n");
    ini.SetVar(text("a"), text("A"));
    QCOMPARE(ini.GetVar(text("a"), text("A")), text("1"));
    ini.SetVar(text("b"), text("A"));
    QCOMPARE(all(ini), (QStringList{text("a=1"), text("b=")}));
}

void TestIniFile::setsAndAddsVariables()
{
    auto ini = loaded("[A]\na=1\n");
    ini.SetVar(text("a"), text("A"), text("2"));
    ini.SetVar(text("n"), text("A"), 42);
    ini.SetVar(text("x"), text("New"), text("y"));
    ini.SetVar(text("a"), text("A"), text(""));
    QCOMPARE(saved(ini), QByteArray("[A]\r\na = \r\nn = 42\r\n[New]\r\nx = y\r\n"));
}

void TestIniFile::makesAMissingGroup()
{
    auto ini = loaded("[A]\na=1\n");
    ini.SetGroup(text("A"));
    ini.SetGroup(text("B"));
    ini.SetGroup(text("B"));
    QCOMPARE(saved(ini), QByteArray("[A]\r\na = 1\r\n[B]\r\n"));
}

void TestIniFile::givesNoVariablesOfAnUnknownGroup()
{
    QVERIFY(loaded("[A]\na=1\n").GetVars(text("B")).isEmpty());
    QVERIFY(IniFile().GetVars().isEmpty());
}

void TestIniFile::handsOutTheVeryVariables()
{
    const auto ini = loaded("[A]\na=1\n");
    ini.GetVars(text("A")).first()->Value = text("changed");
    QCOMPARE(ini.GetVar(text("a")), text("changed"));
}

void TestIniFile::takesAGroupsNameAsItStands_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("name");
    QTest::newRow("ordinary") << QByteArray("[APP]") << text("APP");
    QTest::newRow("blanks stay") << QByteArray("[ APP ]") << text(" APP ");
    QTest::newRow("whatever the last character is") << QByteArray("[APPx") << text("APP");
    QTest::newRow("a blank after it") << QByteArray("[APP] ") << text("APP]");
    QTest::newRow("nothing within") << QByteArray("[]") << QString();
    QTest::newRow("one character") << QByteArray("[") << QString();
    QTest::newRow("an equals sign") << QByteArray("[a=b]") << text("a=b");
}

void TestIniFile::takesAGroupsNameAsItStands()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, name);
    const auto ini = loaded(line + "\na=1\n");
    QCOMPARE(saved(ini), "[" + name.toLatin1() + "]\r\na = 1\r\n");
}

void TestIniFile::knowsNoComments()
{
    const auto ini = loaded("[A]\n;a=1\n# b\n  [B]\nq=\"x\"\n");
    QCOMPARE(all(ini, text("A")),
             (QStringList{text(";a=1"), text("# b=# b"), text("[B]=[B]"), text("q=\"x\"")}));
}

void TestIniFile::keepsEqualNamesSideBySide()
{
    auto ini = loaded("[A]\na=1\na=2\n");
    QCOMPARE(ini.GetVar(text("a"), text("A")), text("1"));
    ini.SetVar(text("a"), text("A"), text("3"));
    QCOMPARE(all(ini), (QStringList{text("a=3"), text("a=2")}));
}

void TestIniFile::givesAnEmptyTextForWhatIsMissing()
{
    const auto ini = loaded("[A]\nempty=\n");
    QCOMPARE(ini.GetVar(text("empty"), text("A")), QString());
    QCOMPARE(ini.GetVar(text("missing"), text("A")), QString());
    QCOMPARE(ini.GetVar(text("empty"), text("B")), QString());
    QCOMPARE(IniFile().GetVar(text("a")), QString());
}

void TestIniFile::writesGroupsInOrderWithBothLineEndCharacters()
{
    QCOMPARE(saved(loaded("[B]\n[A]\nz=1\na=2\n[B]\nb=3\n")),
             QByteArray("[B]\r\n[A]\r\nz = 1\r\na = 2\r\n[B]\r\nb = 3\r\n"));
}

void TestIniFile::readsBackWhatItWrote()
{
    IniFile ini;
    ini.SetVar(text("Name"), text("Printer"), text("Grüße \"x\" ; = #"));
    ini.SetVar(text("tab"), text("Printer"), text("\tx\t"));
    ini.SetGroup(text("Empty"));
    ini.SetVar(text("a b"), text("Other"), text(""));
    const auto bytes = saved(ini);
    QCOMPARE(saved(loaded(bytes)), bytes);
    QCOMPARE(loaded(bytes).GetVar(text("Name"), text("Printer")), text("Grüße \"x\" ; = #"));
}

void TestIniFile::writesAGroupWithoutANameAndFindsItAgain()
{
    IniFile ini;
    ini.SetVar(text("a"), {}, text("1"));
    QCOMPARE(saved(ini), QByteArray("[]\r\na = 1\r\n"));
    auto again = loaded(saved(ini));
    again.SetVar(text("a"), {}, text("2"));
    QCOMPARE(saved(again), QByteArray("[]\r\na = 2\r\n"));
}

void TestIniFile::replacesALongerFile()
{
    const auto path = m_folder.write("long.ini", QByteArray(5000, 'x'));
    IniFile ini;
    ini.SetGroup(text("A"));
    QCOMPARE(ini.Save(path), 0);
    QCOMPARE(contentOf(path), QByteArray("[A]\r\n"));
}

void TestIniFile::readsAndWritesWindows1252()
{
    const QByteArray bytes("[\xC4]\r\n\x80uro = \x84\xFC\x93 \x85 \x81\x99\xA0x\r\n");
    const auto ini = loaded(bytes);
    QCOMPARE(ini.GetVar(text("€uro"), text("Ä")), text("„ü“ … \xC2\x81™\xC2\xA0x"));
    QCOMPARE(saved(ini), bytes);

    QByteArray every;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '\r' && byte != '\n')
            every.append(static_cast<char>(byte));
    }
    const auto line = "x = |" + every + "|\r\n";
    QCOMPARE(saved(loaded(line)), "[None]\r\n" + line);
}

void TestIniFile::writesAQuestionMarkForACharacterThatItLacks()
{
    IniFile ini;
    ini.SetVar(text("a"), text("A"), text("Ω😀š\xC2\x9F"));
    QCOMPARE(saved(ini), QByteArray("[A]\r\na = ??\x9A?\r\n"));
}

void TestIniFile::bearsNulBytes()
{
    const auto ini = loaded(QByteArray("[A]\na\0b=c\0d\n", 12));
    const auto vars = ini.GetVars();
    QCOMPARE(vars.size(), 1);
    QCOMPARE(vars.first()->Name, QString::fromLatin1("a\0b", 3));
    QCOMPARE(vars.first()->Value, QString::fromLatin1("c\0d", 3));
}

void TestIniFile::bearsALoneCarriageReturn()
{
    QCOMPARE(all(loaded("\ra=1\rb=2\r\r\rc=3\n")),
             (QStringList{text("a=1"), text("b=2"), text("c=3")}));
}

void TestIniFile::bearsAMegabyteOnOneLine()
{
    const QByteArray longText(1024 * 1024, 'v');
    const auto ini = loaded("[A]\nbefore=1\nlong=" + longText + "\nafter=2\n");
    QCOMPARE(ini.GetVar(text("long"), text("A")), QString::fromLatin1(longText));
    QCOMPARE(ini.GetVar(text("before")), text("1"));
    QCOMPARE(ini.GetVar(text("after")), text("2"));
}

void TestIniFile::readsAFileThatIsLargerThanOnePiece()
{
    QByteArray bytes("[A]\n");
    for (int number = 0; number < 20000; ++number)
        bytes += "key" + QByteArray::number(number) + "=" + QByteArray::number(number) + "\r\n";
    const auto vars = loaded(bytes).GetVars(text("A"));
    QCOMPARE(vars.size(), 20000);
    for (int number = 0; number < 20000; ++number) {
        QCOMPARE(vars.at(number)->Name, text("key") + QString::number(number));
        QCOMPARE(vars.at(number)->Value, QString::number(number));
    }
}

void TestIniFile::failsOnAMissingFile()
{
    auto ini = loaded("[A]\na=1\n[B]\nb=2\n");
    QCOMPARE(ini.Load(m_folder.path("missing.ini")), 1);
    QCOMPARE(saved(ini), QByteArray("[B]\r\nb = 2\r\n"));
    QCOMPARE(ini.Load(QString()), 1);
}

void TestIniFile::failsOnAFolder()
{
    IniFile ini;
    QCOMPARE(ini.Load(m_folder.makeFolder("folder.ini")), 1);
    QCOMPARE(ini.Save(m_folder.path("folder.ini")), 1);
}

void TestIniFile::failsOnAPipeWithoutWaiting()
{
    const auto pipe = m_folder.path("pipe.ini");
    QVERIFY(SystemActions::makeFifo(pipe));
    IniFile ini;
    QCOMPARE(ini.Load(pipe), 1);
    QCOMPARE(ini.Load(SystemActions::nullDevice()), 1);
    QCOMPARE(ini.Save(pipe), 1);
}

void TestIniFile::failsOnAFileThatMayNotBeRead()
{
    const auto path = m_folder.write("secret.ini", "a=1\n");
    QVERIFY(QFile::setPermissions(path, QFile::WriteOwner));
    openFolder();
    const OrdinaryUser user;
    IniFile ini;
    QCOMPARE(ini.Load(path), 1);
    QVERIFY(ini.GetVars().isEmpty());
}

void TestIniFile::failsOnAnAbsurdlyLargeFile()
{
    const auto path = m_folder.write("large.ini", "a=1\n");
    QVERIFY(QFile::resize(path, IniFile::MostBytes + 1));
    IniFile ini;
    QCOMPARE(ini.Load(path), 1);
}

void TestIniFile::failsToWriteIntoAMissingFolder()
{
    QCOMPARE(loaded("a=1\n").Save(m_folder.path("missing/x.ini")), 1);
}

void TestIniFile::failsToWriteAProtectedFileAndLeavesIt()
{
    const auto path = m_folder.write("protected.ini", "[Old]\r\n");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup));
    const auto ini = loaded("a=1\n");
    openFolder();
    const OrdinaryUser user;
    QCOMPARE(ini.Save(path), 1);
    QCOMPARE(contentOf(path), QByteArray("[Old]\r\n"));
}

void TestIniFile::failsToWriteOntoAFullDisk()
{
    const SmallDisk disk(m_folder.makeFolder("disk"), 64);
    if (!disk.isMounted())
        QSKIP("this process may not mount a small disk");
    IniFile ini;
    ini.SetVar(text("a"), text("A"), QString(200 * 1024, QLatin1Char('x')));
    QCOMPARE(ini.Save(m_folder.path("disk/full.ini")), 1);
}

void TestIniFile::readsAnEmptyFileAsNothing()
{
    QCOMPARE(saved(loaded("")), QByteArray());
    QCOMPARE(saved(loaded("\r\n\r\n")), QByteArray());
}

QTEST_GUILESS_MAIN(TestIniFile)
#include "tst_inifile.moc"
