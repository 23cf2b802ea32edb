#include "convert/mdlOpenFile.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Quorlin;

/// The desktop's opener is a program of the search path; a stand-in writes down its call.
class TestOpenFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void opensAFileWithTheDesktopsProgram();
    void startsItInTheRootFolder();
    void handsOnARelativePathAsAnAbsoluteOne();
    void keepsNamesThatLookLikeSomethingElse_data();
    void keepsNamesThatLookLikeSomethingElse();
    void doesNotOpenWhatIsNotThere();
    void failsSilentlyOnADesktopWithoutAnOpener();
    void doesNotWaitForTheProgram();
    void opensAPageByItsAddress();
    void tellsOfADesktopWithoutAnOpenerForPages();

private:
    void putOpener(const QByteArray &script) const;
    [[nodiscard]] QByteArray call() const { return contentOf(m_folder->path("call")); }

    std::unique_ptr<TestFolder> m_folder;
    QByteArray m_searchPath;
};

void TestOpenFile::init()
{
    m_folder = std::make_unique<TestFolder>();
    m_searchPath = qgetenv("PATH");
    putOpener("printf '%s|%s|%s' \"$#\" \"$PWD\" \"$1\" > call.new && mv call.new call");
}

void TestOpenFile::cleanup()
{
    qputenv("PATH", m_searchPath);
}

void TestOpenFile::putOpener(const QByteArray &script) const
{
    const auto folder = m_folder->makeFolder("bin");
    const auto into = QFile::encodeName(m_folder->path());
    QByteArray body(script);
    body.replace("call.new", "'" + into + "/call.new'").replace(" call", " '" + into + "/call'");
    const auto path = m_folder->write("bin/xdg-open", "#!/bin/sh\n" + body + "\n");
    QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x7700)));
    qputenv("PATH", QFile::encodeName(folder) + ':' + m_searchPath);
}

void TestOpenFile::opensAFileWithTheDesktopsProgram()
{
    const auto file = m_folder->write("a b.pdf", "x");
    QVERIFY(mdlOpenFile::ShellOpenFile(file) > 32);
    QTRY_COMPARE(call(), "1|/|" + QFile::encodeName(file));
}

void TestOpenFile::startsItInTheRootFolder()
{
    QVERIFY(QDir::setCurrent(m_folder->path()));
    QVERIFY(mdlOpenFile::ShellOpenFile(m_folder->write("a.pdf", "x")) > 32);
    QTRY_VERIFY(call().startsWith("1|/|"));
}

void TestOpenFile::handsOnARelativePathAsAnAbsoluteOne()
{
    const auto file = m_folder->write("a.pdf", "x");
    QVERIFY(QDir::setCurrent(m_folder->path()));
    QVERIFY(mdlOpenFile::ShellOpenFile(QStringLiteral("a.pdf")) > 32);
    QTRY_COMPARE(call(), "1|/|" + QFile::encodeName(file));
}

void TestOpenFile::keepsNamesThatLookLikeSomethingElse_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("option") << QByteArray("--help");
    QTest::newRow("command") << QByteArray("$(touch x); \"y\" 'z' & .pdf");
    QTest::newRow("address") << QByteArray("file:x.pdf");
    QTest::newRow("umlauts") << QByteArray("Größe.pdf");
}

void TestOpenFile::keepsNamesThatLookLikeSomethingElse()
{
    QFETCH(QByteArray, name);
    const auto file = m_folder->write(name.constData(), "x");
    QVERIFY(QDir::setCurrent(m_folder->path()));
    QVERIFY(mdlOpenFile::ShellOpenFile(QFile::decodeName(name)) > 32);
    QTRY_COMPARE(call(), "1|/|" + QFile::encodeName(file));
}

void TestOpenFile::doesNotOpenWhatIsNotThere()
{
    QCOMPARE(mdlOpenFile::ShellOpenFile(m_folder->path("missing.pdf")),
             int(mdlOpenFile::FileNotFound));
    QCOMPARE(mdlOpenFile::ShellOpenFile(QString()), int(mdlOpenFile::FileNotFound));
}

void TestOpenFile::failsSilentlyOnADesktopWithoutAnOpener()
{
    qputenv("PATH", QFile::encodeName(m_folder->makeFolder("empty")));
    QCOMPARE(mdlOpenFile::ShellOpenFile(m_folder->write("a.pdf", "x")),
             int(mdlOpenFile::NoAssociation));
}

void TestOpenFile::doesNotWaitForTheProgram()
{
    // The opener ends only when this test has seen that the call came back.
    const auto go = m_folder->path("call.go");
    putOpener("n=0; until [ -e '" + QFile::encodeName(go) +
              "' ] || [ $n -gt 2000 ]; do n=$((n+1)); sleep 0.01; done; "
              "printf done > call");
    QVERIFY(mdlOpenFile::ShellOpenFile(m_folder->write("a.pdf", "x")) > 32);
    QCOMPARE(call(), QByteArray());
    m_folder->write("call.go", "");
    QTRY_COMPARE(call(), QByteArray("done"));
}

void TestOpenFile::opensAPageByItsAddress()
{
    QVERIFY(mdlOpenFile::ShellOpenAddress(QStringLiteral("https://x.example/a?b=$c")) > 32);
    QTRY_COMPARE(call(), QByteArray("1|/|https://x.example/a?b=$c"));
}

void TestOpenFile::tellsOfADesktopWithoutAnOpenerForPages()
{
    qputenv("PATH", QFile::encodeName(m_folder->makeFolder("empty")));
    QCOMPARE(mdlOpenFile::ShellOpenAddress(QStringLiteral("https://x.example/")),
             int(mdlOpenFile::NoAssociation));
}

QTEST_GUILESS_MAIN(TestOpenFile)
#include "tst_mdlopenfile.moc"
