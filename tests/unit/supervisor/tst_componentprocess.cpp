#include "component/protocol/Message.h"
#include "support/Reports.h"
#include "support/SystemActions.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>
#include <QSet>
#include <QTest>

#include <memory>

using namespace Quorlin;

namespace {

constexpr int Patience = 60000; ///< milliseconds

} // namespace

/// The program itself, with stand-ins for its workers beside it.
class TestComponentProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void greetsFirst();
    void answersOptionsAndEnds();
    void endsWithItsInput();
    void endsWithItsInputInTheMiddleOfAJob();
    void endsWhenItIsAskedTo();
    void endsWhenNobodyReadsItsReports();
    void doesAJob();
    void removesWhatAKilledOneLeft();
    void theWorkersDieWithAKilledOne();
    void leavesTheFilesOfALivingOneAlone();
    void printsNothingButMessages();
    void failsWithoutAFolderForTemporaryFiles();

private:
    std::unique_ptr<QProcess> makeProcess() const;
    void start();
    bool waitFor(const char *type);
    void print(const char *name, const QByteArray &text);
    [[nodiscard]] QList<qint64> workers() const;

    std::unique_ptr<TestFolder> m_programs, m_home, m_temporary, m_documents;
    std::unique_ptr<QProcess> m_process;
    Reports m_reports;
    QByteArray m_output;
    int m_job = 0;
};

void TestComponentProcess::init()
{
    m_programs = std::make_unique<TestFolder>();
    m_home = std::make_unique<TestFolder>();
    m_temporary = std::make_unique<TestFolder>();
    m_documents = std::make_unique<TestFolder>();
    QVERIFY(QFile::copy(QStringLiteral(QUORLIN_BIN_DIR "/quorlin-pdf"),
                        m_programs->path("quorlin-pdf")));
    for (const char *name : {"quorlin-pdf-office", "quorlin-pdf-print", "quorlin-pdf-merge"})
        QVERIFY(QFile::copy(QStringLiteral(QUORLIN_STAND_IN_WORKER), m_programs->path(name)));
    start();
}

void TestComponentProcess::cleanup()
{
    m_process->closeWriteChannel();
    if (m_process->state() != QProcess::NotRunning)
        QVERIFY(m_process->waitForFinished(Patience));
    m_process.reset();
    m_programs.reset();
    m_home.reset();
    m_temporary.reset();
    m_documents.reset();
}

std::unique_ptr<QProcess> TestComponentProcess::makeProcess() const
{
    auto process = std::make_unique<QProcess>();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), m_home->path());
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), m_home->path("cache"));
    environment.insert(QStringLiteral("TMPDIR"), m_temporary->path());
    process->setProcessEnvironment(environment);
    process->setProgram(m_programs->path("quorlin-pdf"));
    return process;
}

void TestComponentProcess::start()
{
    m_reports.clear();
    m_output.clear();
    m_process = makeProcess();
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, [this] {
        while (m_process->canReadLine()) {
            const auto line = m_process->readLine();
            m_output += line;
            m_reports.add(Message::decode(line).value_or(QJsonObject()));
        }
    });
    m_process->start();
    QVERIFY(waitFor("hello"));
}

bool TestComponentProcess::waitFor(const char *type)
{
    return QTest::qWaitFor([&] { return m_reports.has(type); }, Patience);
}

void TestComponentProcess::print(const char *name, const QByteArray &text)
{
    const QJsonObject document{{QStringLiteral("file"), m_documents->write(name, text)}};
    m_process->write(Message::encode({{QStringLiteral("type"), QStringLiteral("print")},
                                      {QStringLiteral("job"), ++m_job},
                                      {QStringLiteral("documents"), QJsonArray{document}}}));
}

/// The processes that have been asked something so far.
QList<qint64> TestComponentProcess::workers() const
{
    QSet<qint64> found;
    for (const auto &line : contentOf(m_programs->path("requests.log")).split('\n'))
        if (const auto request = Message::decode(line))
            found.insert(request->value(QLatin1String("pid")).toInteger());
    return found.values();
}

void TestComponentProcess::greetsFirst()
{
    QCOMPARE(m_reports.outline(), QStringLiteral("hello"));
    QCOMPARE(m_reports.last("hello").value(QLatin1String("component")).toString(),
             QStringLiteral("quorlin-pdf"));
}

/// Without a folder for temporary files: nothing is prepared for it.
void TestComponentProcess::answersOptionsAndEnds()
{
    const auto answerTo = [this](const char *option) {
        const auto process = makeProcess();
        auto environment = process->processEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), m_temporary->path("missing"));
        process->setProcessEnvironment(environment);
        process->setArguments({QString::fromLatin1(option)});
        process->start();
        const bool isDone = process->waitForFinished(Patience) && process->exitCode() == 0 &&
                            process->exitStatus() == QProcess::NormalExit;
        return isDone ? process->readAllStandardOutput() : QByteArray("failed");
    };
    QCOMPARE(answerTo("--version"), QByteArray("quorlin-pdf " QUORLIN_VERSION "\n"));
    const auto help = answerTo("--help");
    QVERIFY(help.startsWith("Usage: quorlin-pdf ") && help.contains("standard input"));
    QCOMPARE(answerTo("-h"), help);
}

void TestComponentProcess::endsWithItsInput()
{
    print("a.docx", "text");
    QVERIFY(waitFor("complete"));
    m_process->closeWriteChannel();
    QVERIFY(m_process->waitForFinished(Patience));
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
    QCOMPARE(m_temporary->names(), QStringList());
    QCOMPARE(namesIn(m_home->path("cache/quorlin/journal")), QStringList());
    QCOMPARE(m_documents->names(), QStringList{QStringLiteral("a.docx")});
}

void TestComponentProcess::endsWithItsInputInTheMiddleOfAJob()
{
    print("a.docx", "export hang");
    QTRY_COMPARE_WITH_TIMEOUT(workers().size(), 1, Patience);
    const auto worker = workers().first();
    m_process->closeWriteChannel();
    QVERIFY(m_process->waitForFinished(Patience));
    QCOMPARE(m_process->exitCode(), 0);
    QVERIFY(!m_reports.has("complete"));
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(worker), Patience);
    QCOMPARE(m_temporary->names(), QStringList());
}

void TestComponentProcess::endsWhenItIsAskedTo()
{
    print("a.docx", "text");
    QVERIFY(waitFor("complete"));
    SystemActions::askToEnd(m_process->processId());
    QVERIFY(m_process->waitForFinished(Patience));
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
    QCOMPARE(m_temporary->names(), QStringList());
    QCOMPARE(m_documents->names(), QStringList{QStringLiteral("a.docx")});
}

void TestComponentProcess::endsWhenNobodyReadsItsReports()
{
    auto process = makeProcess();
    QProcess reader;
    process->setStandardOutputProcess(&reader);
    process->start();
    reader.start(QStringLiteral("head"), {QStringLiteral("-n1")});
    QVERIFY(reader.waitForFinished(Patience));
    process->write("garbage\n");
    process->closeWriteChannel();
    QVERIFY(process->waitForFinished(Patience));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
}

void TestComponentProcess::doesAJob()
{
    print("a.docx", "text");
    QVERIFY(waitFor("complete"));
    QCOMPARE(m_reports.outputs(), QStringList{m_documents->path("a.ps~")});
    QVERIFY(QFileInfo::exists(m_documents->path("a.ps~")));
}

void TestComponentProcess::removesWhatAKilledOneLeft()
{
    print("a.docx", "text");
    QVERIFY(waitFor("complete"));
    SystemActions::kill(m_process->processId());
    QVERIFY(m_process->waitForFinished(Patience));
    QVERIFY(QFileInfo::exists(m_documents->path("a.ps~")));
    QCOMPARE(m_temporary->names().size(), 1);
    const auto left = m_temporary->names().first();
    start();
    QCOMPARE(m_documents->names(), QStringList{QStringLiteral("a.docx")});
    QVERIFY(!m_temporary->names().contains(left));
    const auto journal = namesIn(m_home->path("cache/quorlin/journal"));
    QCOMPARE(journal.filter(QStringLiteral(".lock")).size(), 1);
    QCOMPARE(journal.size(), 2);
}

void TestComponentProcess::theWorkersDieWithAKilledOne()
{
    print("a.docx", "export hang");
    QTRY_COMPARE_WITH_TIMEOUT(workers().size(), 1, Patience);
    const auto worker = workers().first();
    QVERIFY(SystemActions::isRunning(worker));
    SystemActions::kill(m_process->processId());
    QVERIFY(m_process->waitForFinished(Patience));
    QTRY_VERIFY_WITH_TIMEOUT(!SystemActions::isRunning(worker), Patience);
}

void TestComponentProcess::leavesTheFilesOfALivingOneAlone()
{
    print("a.docx", "text");
    QVERIFY(waitFor("complete"));
    auto other = makeProcess();
    other->start();
    QVERIFY(other->waitForReadyRead(Patience));
    QVERIFY(QFileInfo::exists(m_documents->path("a.ps~")));
    QCOMPARE(m_temporary->names().size(), 2);
    other->closeWriteChannel();
    QVERIFY(other->waitForFinished(Patience));
    QVERIFY(QFileInfo::exists(m_documents->path("a.ps~")));
    QCOMPARE(m_temporary->names().size(), 1);
}

void TestComponentProcess::printsNothingButMessages()
{
    m_process->write("garbage\n\xff\xfe\n{\"type\":\"warm\"}\n");
    print("a.docx", "text");
    QVERIFY(waitFor("complete"));
    for (const auto &line : m_output.trimmed().split('\n'))
        QVERIFY2(Message::decode(line), line.constData());
    QCOMPARE(m_reports.of("error").size(), 2);
}

void TestComponentProcess::failsWithoutAFolderForTemporaryFiles()
{
    auto process = makeProcess();
    auto environment = process->processEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), m_home->path("gone"));
    process->setProcessEnvironment(environment);
    process->start();
    QVERIFY(process->waitForFinished(Patience));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 1);
    QCOMPARE(process->readAllStandardOutput(), QByteArray());
    QVERIFY(!process->readAllStandardError().isEmpty());
}

QTEST_GUILESS_MAIN(TestComponentProcess)
#include "tst_componentprocess.moc"
