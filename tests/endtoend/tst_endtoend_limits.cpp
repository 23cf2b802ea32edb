#include "component/protocol/Reason.h"
#include "endtoend/ConvertScene.h"
#include "endtoend/PdfFacts.h"
#include "endtoend/TestDocuments.h"
#include "support/SystemActions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTest>

using namespace Quorlin;

/// Programs that are missing or never answer, and disks without room.
class tst_endtoend_limits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = std::make_unique<ConvertScene>(); }
    void cleanup();
    void aMissingProgramIsNamed_data();
    void aMissingProgramIsNamed();
    void anEngineThatNeverAnswersTakesTooLong();
    void aDocumentThatNeedsTooMuchMemoryIsReported();
    void endlessProgramsTakeTooLong_data();
    void endlessProgramsTakeTooLong();
    void anEngineThatBreaksIsReported_data();
    void anEngineThatBreaksIsReported();
    void aDiskThatIsReadOnlyIsReported_data();
    void aDiskThatIsReadOnlyIsReported();
    void aFullDocumentsFolderIsReported();
    void aFullTemporaryFolderIsReported_data();
    void aFullTemporaryFolderIsReported();

private:
    QString installPrograms(const QStringList &names);
    void installStandIn(const char *name, const QByteArray &script) const;

    std::unique_ptr<SmallDisk> m_disk;
    std::unique_ptr<ConvertScene> m_scene;
};

void tst_endtoend_limits::cleanup()
{
    QCOMPARE(m_scene->leftovers(), QString());
    m_disk.reset();
    m_scene.reset();
}

/// Makes a folder with these programs alone and returns it.
QString tst_endtoend_limits::installPrograms(const QStringList &names)
{
    const auto folder = m_scene->world().makeFolder("programs");
    for (const auto &name : names)
        if (!QFile::link(QStandardPaths::findExecutable(name), folder + QLatin1Char('/') + name))
            qFatal("no link to %s", qUtf8Printable(name));
    return folder;
}

/// Puts a script in a program's place, in the folder of installPrograms().
void tst_endtoend_limits::installStandIn(const char *name, const QByteArray &script) const
{
    const auto path = QByteArray("programs/") + name;
    m_scene->world().write(path.constData(), "#!/bin/sh\n" + script + '\n');
    QFile::setPermissions(m_scene->world().path(path.constData()),
                          QFile::ReadOwner | QFile::ExeOwner);
}

void tst_endtoend_limits::aMissingProgramIsNamed_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("results");
    QTest::newRow("office engine") << "soffice"
                                   << "LibreOffice (soffice) is not installed"
                                   << "program-missing converted converted";
    QTest::newRow("pdftops") << "pdftops"
                             << "poppler-utils (pdftops) is not installed"
                             << "program-missing program-missing converted";
    QTest::newRow("Ghostscript") << "gs"
                                 << "Ghostscript (gs) is not installed"
                                 << "program-missing program-missing program-missing";
}

void tst_endtoend_limits::aMissingProgramIsNamed()
{
    QFETCH(QString, missing);
    QFETCH(QString, text);
    QStringList programs{QStringLiteral("soffice"), QStringLiteral("gs"),
                         QStringLiteral("pdftops")};
    programs.removeAll(missing);
    m_scene->setVariable("PATH", installPrograms(programs));
    m_scene->write(QStringLiteral("a.fodt"), TestDocuments::letter("a"));
    m_scene->write(QStringLiteral("b.pdf"), TestDocuments::pdf("b"));
    m_scene->write(QStringLiteral("c.ps"), TestDocuments::postScript("c"));
    const auto outcome = m_scene->convert(
        {QStringLiteral("a.fodt"), QStringLiteral("b.pdf"), QStringLiteral("c.ps")});
    QTEST(outcome.results().join(QLatin1Char(' ')), "results");
    QCOMPARE(outcome.exitCode, 1);
    const auto sentence = reasonText(Reason::ProgramMissing);
    QVERIFY2(outcome.errors.contains(QStringLiteral("a.fodt: %1 (%2)").arg(sentence, text)),
             qPrintable(outcome.errors));
    QCOMPARE(outcome.document(0).value(QLatin1String("detail")).toString(), text);
}

void tst_endtoend_limits::anEngineThatNeverAnswersTakesTooLong()
{
    const auto folder =
        installPrograms({QStringLiteral("gs"), QStringLiteral("pdftops"), QStringLiteral("sleep")});
    for (const auto *name : {"programs/soffice", "programs/soffice.bin"}) {
        m_scene->world().write(name, "#!/bin/sh\nexec sleep 600\n");
        QFile::setPermissions(m_scene->world().path(name), QFile::ReadOwner | QFile::ExeOwner);
    }
    m_scene->world().write("programs/fundamentalrc", "[Bootstrap]\n");
    m_scene->setVariable("PATH", folder);
    QStringList names;
    for (int number = 0; number < 4; ++number) {
        names += QStringLiteral("%1.fodt").arg(number);
        m_scene->write(names.last(), TestDocuments::letter("a"));
    }
    m_scene->write(QStringLiteral("b.pdf"), TestDocuments::pdf("b"));
    const auto outcome =
        m_scene->convert(QStringList{QStringLiteral("--stall"), QStringLiteral("2")} + names +
                         QStringList{QStringLiteral("b.pdf")});
    QCOMPARE(outcome.results(), QStringList(4, QStringLiteral("too-long"))
                                    << QStringLiteral("converted"));
    QVERIFY2(outcome.seconds < 15, qPrintable(QString::number(outcome.seconds)));
}

void tst_endtoend_limits::anEngineThatBreaksIsReported_data()
{
    QTest::addColumn<QString>("broken");
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("results");
    QTest::newRow("ends") << "pdftops"
                          << "exit 77"
                          << "engine-failed converted";
    QTest::newRow("crashes") << "pdftops"
                             << "kill -SEGV $$"
                             << "engine-failed converted";
    QTest::newRow("the distiller crashes") << "gs"
                                           << "kill -SEGV $$"
                                           << "engine-failed engine-failed";
}

void tst_endtoend_limits::anEngineThatBreaksIsReported()
{
    QFETCH(QString, broken);
    QFETCH(QString, script);
    QStringList programs{QStringLiteral("soffice"), QStringLiteral("gs"),
                         QStringLiteral("pdftops")};
    programs.removeAll(broken);
    m_scene->setVariable("PATH", installPrograms(programs));
    installStandIn(qPrintable(broken), script.toUtf8());
    m_scene->write(QStringLiteral("b.pdf"), TestDocuments::pdf("b"));
    m_scene->write(QStringLiteral("c.ps"), TestDocuments::postScript("c"));
    const auto outcome = m_scene->convert({QStringLiteral("b.pdf"), QStringLiteral("c.ps")});
    QTEST(outcome.results().join(QLatin1Char(' ')), "results");
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.document(0).value(QLatin1String("code")).toInt(), 55);
    QVERIFY2(outcome.errors.contains(
                 QStringLiteral("quorlin-convert: b.pdf: the converter failed on this document")),
             qPrintable(outcome.errors));
}

void tst_endtoend_limits::aDiskThatIsReadOnlyIsReported_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("the folder of results") << "disk/results";
    QTest::newRow("the folder of the document and the home") << "";
}

void tst_endtoend_limits::aDiskThatIsReadOnlyIsReported()
{
    QFETCH(QString, folder);
    const auto place = m_scene->path(QStringLiteral("disk"));
    QDir().mkpath(place);
    m_disk = std::make_unique<SmallDisk>(place, 64);
    if (!m_disk->isMounted())
        QSKIP("This user may not mount a small disk.");
    m_scene->write(QStringLiteral("disk/a.pdf"), TestDocuments::pdf("a"));
    QVERIFY(m_disk->makeReadOnly());
    if (folder.isEmpty())
        m_scene->setVariable("HOME", place);
    const auto arguments =
        folder.isEmpty() ? QStringList() : QStringList{QStringLiteral("-o"), m_scene->path(folder)};
    const auto outcome = m_scene->convert(arguments + QStringList{QStringLiteral("disk/a.pdf")});
    QCOMPARE(outcome.results(), QStringList(QStringLiteral("not-allowed")));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.document(0).value(QLatin1String("code")).toInt(), 58);
    QCOMPARE(outcome.document(0).value(QLatin1String("text")).toString(),
             reasonText(Reason::NotAllowed));
}

void tst_endtoend_limits::aDocumentThatNeedsTooMuchMemoryIsReported()
{
    m_scene->write(QStringLiteral("a.ps"), TestDocuments::postScript("a"));
    m_scene->write(QStringLiteral("hungry.ps"),
                   "%!PS\n/all [ 3000 { 1000000 string } repeat ] def showpage\n");
    m_scene->write(QStringLiteral("b.ps"), TestDocuments::postScript("b"));
    const auto outcome =
        m_scene->convert({QStringLiteral("--memory"), QStringLiteral("300"), QStringLiteral("a.ps"),
                          QStringLiteral("hungry.ps"), QStringLiteral("b.ps")});
    QCOMPARE(outcome.results(),
             QStringList({QStringLiteral("converted"), QStringLiteral("out-of-memory"),
                          QStringLiteral("converted")}));
    QCOMPARE(outcome.document(1).value(QLatin1String("code")).toInt(), 54);
    QVERIFY2(outcome.errors.contains(QStringLiteral("hungry.ps: it needed too much memory")),
             qPrintable(outcome.errors));
}

void tst_endtoend_limits::endlessProgramsTakeTooLong_data()
{
    QTest::addColumn<QString>("limit");
    QTest::newRow("standing still") << "--stall";
    QTest::newRow("altogether") << "--timeout";
}

void tst_endtoend_limits::endlessProgramsTakeTooLong()
{
    QFETCH(QString, limit);
    m_scene->write(QStringLiteral("a.ps"), TestDocuments::postScript("a"));
    m_scene->write(QStringLiteral("endless.ps"), TestDocuments::endlessPostScript());
    m_scene->write(QStringLiteral("b.ps"), TestDocuments::postScript("b"));
    const auto outcome = m_scene->convert({limit, QStringLiteral("3"), QStringLiteral("a.ps"),
                                           QStringLiteral("endless.ps"), QStringLiteral("b.ps")});
    QCOMPARE(outcome.results(),
             QStringList({QStringLiteral("converted"), QStringLiteral("too-long"),
                          QStringLiteral("converted")}));
    QVERIFY(outcome.errors.contains(QStringLiteral("endless.ps: it took too long")));
    QVERIFY2(outcome.seconds > 2.5 && outcome.seconds < 10,
             qPrintable(QString::number(outcome.seconds)));
}

void tst_endtoend_limits::aFullDocumentsFolderIsReported()
{
    const auto folder = m_scene->path(QStringLiteral("disk"));
    QDir().mkpath(folder);
    m_disk = std::make_unique<SmallDisk>(folder, 64);
    if (!m_disk->isMounted())
        QSKIP("This user may not mount a small disk.");
    m_scene->write(QStringLiteral("disk/a.html"), TestDocuments::longPage(100));
    m_scene->write(QStringLiteral("disk/b.pdf"), TestDocuments::pdf("b"));
    m_scene->write(QStringLiteral("disk/filler"), QByteArray(12'000, 'x'));
    m_scene->write(QStringLiteral("c.fodt"), TestDocuments::letter("c"));
    const auto outcome = m_scene->convert(
        {QStringLiteral("disk/a.html"), QStringLiteral("disk/b.pdf"), QStringLiteral("c.fodt")});
    QCOMPARE(outcome.results(), QStringList({QStringLiteral("no-room"), QStringLiteral("no-room"),
                                             QStringLiteral("converted")}));
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(namesIn(folder), QStringList({QStringLiteral("a.html"), QStringLiteral("b.pdf"),
                                           QStringLiteral("filler")}));
}

void tst_endtoend_limits::aFullTemporaryFolderIsReported_data()
{
    QTest::addColumn<int>("kilobytes");
    QTest::addColumn<QString>("result");
    QTest::newRow("too small for the document") << 64 << "no-room";
    QTest::newRow("too small for the engine") << 512 << "no-room";
    QTest::newRow("too small for what is printed") << 1200 << "no-room";
    QTest::newRow("large enough") << 40'000 << "converted";
}

void tst_endtoend_limits::aFullTemporaryFolderIsReported()
{
    QFETCH(int, kilobytes);
    QFETCH(QString, result);
    m_disk = std::make_unique<SmallDisk>(m_scene->temporary(), kilobytes);
    if (!m_disk->isMounted())
        QSKIP("This user may not mount a small disk.");
    m_scene->write(QStringLiteral("a.html"), TestDocuments::longPage(600));
    const auto outcome = m_scene->convert({QStringLiteral("a.html")});
    QVERIFY2(outcome.results().join(QLatin1Char(' ')) == result, qPrintable(outcome.errors));
}

QTEST_GUILESS_MAIN(tst_endtoend_limits)
#include "tst_endtoend_limits.moc"
