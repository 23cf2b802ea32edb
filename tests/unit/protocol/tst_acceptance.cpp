#include "component/protocol/Acceptance.h"

#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTest>

using namespace Quorlin;

namespace {

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

bool containsAll(const QStringList &list, const QStringList &wanted)
{
    return QSet<QString>(list.begin(), list.end())
        .contains(QSet<QString>(wanted.begin(), wanted.end()));
}

} // namespace

class TestAcceptance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFiveListsHoldTheirFamilies();
    void theFirstListHoldsAllOthersAndPicturesAndPostScript();
    void noExtensionStandsInTwoFamilies();
    void extensionsAreInLowerCaseWithoutAPoint();
    void theExtensionTellsTheWayIn_data();
    void theExtensionTellsTheWayIn();
    void takesADocumentWhateverItsName_data();
    void takesADocumentWhateverItsName();
    void aLinkCountsAsTheFileItLeadsTo();
    void refusesAFolder();
    void refusesADevice();
    void refusesAPipeWithoutWaitingForIt();
    void refusesAnEmptyFile();
    void refusesTheLockFileOfAnOfficeProgram();
    void refusesAFileThatIsNotThere();
    void refusesALinkThatLeadsNowhere();
    void refusesAFileThatMayNotBeRead();
    void refusesAnUnknownKindOfFile_data();
    void refusesAnUnknownKindOfFile();
    void refusesPostScriptThatIsNone_data();
    void refusesPostScriptThatIsNone();
    void takesPostScriptByItsMark_data();
    void takesPostScriptByItsMark();
};

void TestAcceptance::theFiveListsHoldTheirFamilies()
{
    QVERIFY(containsAll(Acceptance::extensions(Family::Word),
                        words("doc docx docm dot dotx rtf odt ott fodt txt html htm wpd")));
    QVERIFY(containsAll(Acceptance::extensions(Family::Excel),
                        words("xls xlsx xlsm xlsb xlt xltx ods ots fods csv")));
    QVERIFY(containsAll(Acceptance::extensions(Family::PowerPoint),
                        words("ppt pptx pptm pps ppsx pot potx odp otp fodp")));
    QCOMPARE(Acceptance::extensions(Family::Pdf), words("pdf"));
}

void TestAcceptance::theFirstListHoldsAllOthersAndPicturesAndPostScript()
{
    const auto &all = Acceptance::extensions(Family::All);
    for (const auto family : {Family::Word, Family::Excel, Family::PowerPoint, Family::Pdf})
        QVERIFY(containsAll(all, Acceptance::extensions(family)));
    QVERIFY(containsAll(all, words("png jpg gif bmp tif svg wmf emf odg ps eps prn")));
}

void TestAcceptance::noExtensionStandsInTwoFamilies()
{
    const auto &all = Acceptance::extensions(Family::All);
    QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), all.size());
}

void TestAcceptance::extensionsAreInLowerCaseWithoutAPoint()
{
    for (const auto &extension : Acceptance::extensions(Family::All))
        for (const auto character : extension)
            QVERIFY(character.isLetterOrNumber() && !character.isUpper());
}

void TestAcceptance::theExtensionTellsTheWayIn_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Entrance>("entrance");
    const auto row = [](const char *name, Entrance entrance) {
        QTest::newRow(name) << QString::fromUtf8(name) << entrance;
    };
    row("report.docx", Entrance::Office);
    row("REPORT.DOCX", Entrance::Office);
    row("report.XlSx", Entrance::Office);
    row("photo.JPG", Entrance::Office);
    row("report.pdf", Entrance::Pdf);
    row("report.PDF", Entrance::Pdf);
    row("job.ps", Entrance::PostScript);
    row("job.EPS", Entrance::PostScript);
    row("job.prn", Entrance::PostScript);
    row("report.v2.docx", Entrance::Office);
    row("report.docx.zip", Entrance::None);
    row("report.docx~", Entrance::None);
    row("report.ps~", Entrance::None);
    row("report", Entrance::None);
    row("report.", Entrance::None);
    row("docx", Entrance::None);
    row("", Entrance::None);
    row("folder.docx/report", Entrance::None);
}

void TestAcceptance::theExtensionTellsTheWayIn()
{
    QFETCH(const QString, name);
    QFETCH(const Entrance, entrance);
    QCOMPARE(Acceptance::entranceOf(name), entrance);
}

void TestAcceptance::takesADocumentWhateverItsName_data()
{
    QTest::addColumn<QByteArray>("name");
    const auto row = [](const char *what, const char *name) {
        QTest::newRow(what) << QByteArray(name);
    };
    row("plain", "report.docx");
    row("capitals", "REPORT.DOCX");
    row("spaces", "  my annual  report .docx");
    row("quotes", "the \"best\" 'report'.docx");
    row("commas", "a,b,,c.docx");
    row("line feed", "two\nlines.docx");
    row("letters beyond ASCII", "Übung ελληνικά 文書 \xf0\x9f\x93\x84.docx");
    row("back slash", "c:\\report.docx");
    row("wildcards", "*?[a-z].docx");
    row("per cent", "100%20 %s.docx");
    row("option", "--version.docx");
    row("only an extension", ".docx");
    row("long", QByteArray(QByteArray(240, 'x') + ".docx").constData());
}

void TestAcceptance::takesADocumentWhateverItsName()
{
    QFETCH(const QByteArray, name);
    const TestFolder folder;
    QCOMPARE(Acceptance::refusalOf(folder.write(name.constData(), "text")), Reason::None);
}

void TestAcceptance::aLinkCountsAsTheFileItLeadsTo()
{
    const TestFolder folder;
    const auto document = folder.write("report.docx", "text");
    QVERIFY(QFile::link(document, folder.path("link.docx")));
    QVERIFY(QFile::link(folder.path(), folder.path("folder.docx")));
    QCOMPARE(Acceptance::refusalOf(folder.path("link.docx")), Reason::None);
    QCOMPARE(Acceptance::refusalOf(folder.path("folder.docx")), Reason::NotRegular);
}

void TestAcceptance::refusesAFolder()
{
    const TestFolder folder;
    QCOMPARE(Acceptance::refusalOf(folder.makeFolder("folder.docx")), Reason::NotRegular);
    QCOMPARE(Acceptance::refusalOf(QStringLiteral("/")), Reason::NotRegular);
}

void TestAcceptance::refusesADevice()
{
    const TestFolder folder;
    QCOMPARE(Acceptance::refusalOf(SystemActions::nullDevice()), Reason::NotRegular);
    QVERIFY(QFile::link(SystemActions::nullDevice(), folder.path("device.ps")));
    QCOMPARE(Acceptance::refusalOf(folder.path("device.ps")), Reason::NotRegular);
}

void TestAcceptance::refusesAPipeWithoutWaitingForIt()
{
    const TestFolder folder;
    const auto pipe = folder.path("pipe.ps");
    QVERIFY(SystemActions::makeFifo(pipe));
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(Acceptance::refusalOf(pipe), Reason::NotRegular);
    QVERIFY(clock.elapsed() < 5000);
}

void TestAcceptance::refusesAnEmptyFile()
{
    const TestFolder folder;
    QCOMPARE(Acceptance::refusalOf(folder.write("report.docx", "")), Reason::Empty);
    QCOMPARE(Acceptance::refusalOf(folder.write("job.ps", "")), Reason::Empty);
}

void TestAcceptance::refusesTheLockFileOfAnOfficeProgram()
{
    const TestFolder folder;
    QCOMPARE(Acceptance::refusalOf(folder.write("~$report.docx", "user")), Reason::LockFile);
    QCOMPARE(Acceptance::refusalOf(folder.write("~report.docx", "text")), Reason::None);
    QCOMPARE(Acceptance::refusalOf(folder.write("report~$.docx", "text")), Reason::None);
    QCOMPARE(Acceptance::refusalOf(folder.write("~$folder/report.docx", "text")), Reason::None);
}

void TestAcceptance::refusesAFileThatIsNotThere()
{
    const TestFolder folder;
    QCOMPARE(Acceptance::refusalOf(folder.path("report.docx")), Reason::NotFound);
    QCOMPARE(Acceptance::refusalOf(folder.path("no folder/report.docx")), Reason::NotFound);
    QCOMPARE(Acceptance::refusalOf(QString()), Reason::NotFound);
}

void TestAcceptance::refusesALinkThatLeadsNowhere()
{
    const TestFolder folder;
    QVERIFY(QFile::link(folder.path("nowhere.docx"), folder.path("link.docx")));
    QVERIFY(QFile::link(folder.path("loop.docx"), folder.path("loop.docx")));
    QCOMPARE(Acceptance::refusalOf(folder.path("link.docx")), Reason::NotFound);
    QCOMPARE(Acceptance::refusalOf(folder.path("loop.docx")), Reason::NotFound);
}

void TestAcceptance::refusesAFileThatMayNotBeRead()
{
    const OrdinaryUser user;
    const TestFolder folder;
    const auto document = folder.write("report.docx", "text");
    QVERIFY(QFile::setPermissions(document, QFile::WriteOwner));
    QCOMPARE(Acceptance::refusalOf(document), Reason::NotReadable);
}

void TestAcceptance::refusesAnUnknownKindOfFile_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name :
         {"program.exe", "archive.zip", "no extension", "report.docx~", "a.pdfx"})
        QTest::newRow(name) << QByteArray(name);
}

void TestAcceptance::refusesAnUnknownKindOfFile()
{
    QFETCH(const QByteArray, name);
    const TestFolder folder;
    QCOMPARE(Acceptance::refusalOf(folder.write(name.constData(), "text")), Reason::UnknownFormat);
}

void TestAcceptance::refusesPostScriptThatIsNone_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("a PDF") << QByteArray("job.ps") << QByteArray("%PDF-1.4\n");
    QTest::newRow("printer language") << QByteArray("job.prn")
                                      << QByteArray("\x1b"
                                                    "E\x1b&l0O");
    QTest::newRow("blank before the mark") << QByteArray("job.eps") << QByteArray(" %!PS\n");
    QTest::newRow("half of the mark") << QByteArray("job.ps") << QByteArray("%");
    QTest::newRow("half of the binary mark") << QByteArray("job.eps") << QByteArray("\xC5\xD0\xD3");
}

void TestAcceptance::refusesPostScriptThatIsNone()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QByteArray, content);
    const TestFolder folder;
    const auto refusal = Acceptance::refusalOf(folder.write(name.constData(), content));
    QCOMPARE(refusal, Reason::NotPostScript);
    QCOMPARE(static_cast<int>(refusal), 42);
}

void TestAcceptance::takesPostScriptByItsMark_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("mark alone") << QByteArray("job.ps") << QByteArray("%!");
    QTest::newRow("capitals") << QByteArray("JOB.PRN") << QByteArray("%!PS-Adobe-3.0\n");
    QTest::newRow("binary EPS") << QByteArray("picture.eps")
                                << QByteArray("\xC5\xD0\xD3\xC6\x1e\0\0\0", 8);
}

void TestAcceptance::takesPostScriptByItsMark()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QByteArray, content);
    const TestFolder folder;
    QCOMPARE(Acceptance::refusalOf(folder.write(name.constData(), content)), Reason::None);
}

QTEST_GUILESS_MAIN(TestAcceptance)
#include "tst_acceptance.moc"
