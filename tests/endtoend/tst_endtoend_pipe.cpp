#include "component/protocol/LineBuffer.h"
#include "component/protocol/Message.h"
#include "endtoend/ConvertScene.h"
#include "endtoend/PdfFacts.h"
#include "endtoend/TestDocuments.h"
#include "support/Reports.h"

#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

using namespace Quorlin;

/// The component's own pipe, with a driver that talks nonsense.
class tst_endtoend_pipe : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nonsenseIsAnsweredWithAnError_data();
    void nonsenseIsAnsweredWithAnError();
    void randomBytesAreAnsweredWithErrors();
    void aLineThatIsTooLongIsAnsweredWithAnError();
    void limitsThatMakeNoSenseAreLeftOut();
    void nothingOfAClearedJobStaysInTheWorkingFolder();
    void theEndOfThePipeInTheMiddleOfALineEndsTheComponent();
    void theEndOfThePipeInTheMiddleOfAJobEndsTheComponent();

private:
    void send(const QByteArray &line) { m_component.write(line + '\n'); }
    void sendJob(const char *type, int number, const QString &file, const QByteArray &more = {});
    bool waitFor(const std::function<bool()> &state);
    bool waitForErrors(qsizetype count);
    QString complete(const char *type, int number, const QString &file);
    void aJobWorks();
    void clearEverything();
    QStringList workingFiles() const;

    std::unique_ptr<ConvertScene> m_scene;
    QProcess m_component;
    LineBuffer m_lines{1 << 20};
    Reports m_reports;
    int m_number = 100;
};

void tst_endtoend_pipe::init()
{
    m_scene = std::make_unique<ConvertScene>();
    m_reports.clear();
    m_component.setProcessEnvironment(m_scene->environment());
    m_component.start(QStringLiteral(QUORLIN_BIN_DIR "/quorlin-pdf"), QStringList());
    QVERIFY(waitFor([this] { return m_reports.has("hello"); }));
}

void tst_endtoend_pipe::cleanup()
{
    m_component.closeWriteChannel();
    QVERIFY(m_component.waitForFinished(10'000));
    QCOMPARE(m_component.exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_component.exitCode(), 0);
    QCOMPARE(m_scene->leftovers(), QString());
    m_scene.reset();
}

bool tst_endtoend_pipe::waitFor(const std::function<bool()> &state)
{
    return ConvertScene::waitFor([&] {
               m_lines.append(m_component.readAllStandardOutput());
               while (const auto line = m_lines.takeLine())
                   if (const auto message = Message::decode(*line))
                       m_reports.add(*message);
               return state() || m_component.state() == QProcess::NotRunning;
           }) &&
           m_component.state() == QProcess::Running;
}

bool tst_endtoend_pipe::waitForErrors(qsizetype count)
{
    return waitFor([this, count] { return m_reports.of("error").size() >= count; });
}

void tst_endtoend_pipe::sendJob(const char *type, int number, const QString &file,
                                const QByteArray &more)
{
    send(R"({"type":")" + QByteArray(type) + R"(","job":)" + QByteArray::number(number) +
         R"(,"documents":[{"file":")" + file.toUtf8() +
         R"(","options":")" QUORLIN_BIN_DIR R"(/Settings/Low.joboptions"}])" + more + "}");
}

/// Runs a job with one document and returns its output.
QString tst_endtoend_pipe::complete(const char *type, int number, const QString &file)
{
    sendJob(type, number, file);
    if (!waitFor([this, number] { return m_reports.has("complete", number); }))
        return {};
    return m_reports.outputs(number).value(0);
}

void tst_endtoend_pipe::aJobWorks()
{
    const auto file = m_scene->write(QStringLiteral("a.pdf"), TestDocuments::pdf("words"));
    const auto printed = complete("print", ++m_number, file);
    QVERIFY(QFileInfo(printed).isFile());
    const auto distilled = complete("distil", ++m_number, printed);
    QCOMPARE(PdfFacts(distilled).text().trimmed(), QStringLiteral("words"));
}

void tst_endtoend_pipe::nonsenseIsAnsweredWithAnError_data()
{
    QTest::addColumn<QByteArray>("line");
    const auto row = [](const char *what, const QByteArray &line) { QTest::newRow(what) << line; };
    row("no JSON", "print everything");
    row("half an object", R"({"type":"print","job":1)");
    row("an array", "[1,2,3]");
    row("a number", "17");
    row("no UTF-8", "{\"type\":\"\xff\xfe\"}");
    row("an object with nothing", "{}");
    row("an unknown type", R"({"type":"explode"})");
    row("a type that is a number", R"({"type":5})");
    row("a type that is an object", R"({"type":{"type":"print"}})");
    row("no number", R"({"type":"print","documents":[]})");
    row("a number that is a text", R"({"type":"print","job":"1","documents":[]})");
    row("a negative number", R"({"type":"print","job":-1,"documents":[]})");
    row("a number beyond all limits", R"({"type":"print","job":1e300,"documents":[]})");
    row("a number with a fraction", R"({"type":"print","job":1.5,"documents":[]})");
    row("no documents", R"({"type":"print","job":1})");
    row("documents that are a number", R"({"type":"distil","job":1,"documents":7})");
    row("documents that are an object", R"({"type":"merge","job":1,"documents":{"file":"/a"}})");
    row("a document that is a number", R"({"type":"print","job":1,"documents":[7]})");
    row("a document that is nothing", R"({"type":"merge","job":1,"documents":[null]})");
    row("a file that is a number", R"({"type":"print","job":1,"documents":[{"file":7}]})");
    row("a file without a folder", R"({"type":"distil","job":1,"documents":[{"file":"a.ps"}]})");
    row("an empty file name", R"({"type":"print","job":1,"documents":[{"file":""}]})");
    row("no step to clear", R"({"type":"clear"})");
    row("a step that is a number", R"({"type":"clear","step":1})");
    row("an unknown step", R"({"type":"clear","step":"everything"})");
    row("deep arrays", QByteArray(1'000'000, '['));
    row("deep objects", QByteArray(R"({"type":)").repeated(100'000));
}

void tst_endtoend_pipe::nonsenseIsAnsweredWithAnError()
{
    QFETCH(QByteArray, line);
    send(line);
    QVERIFY(waitForErrors(1));
    QVERIFY(!m_reports.last("error").value(QLatin1String("text")).toString().isEmpty());
    // The answer to a request that is fine comes after all answers to the one before.
    send(R"({"type":"print","job":99,"documents":[]})");
    QVERIFY(waitFor([this] { return m_reports.has("complete", 99); }));
    QCOMPARE(m_reports.of("error").size(), 1);
}

void tst_endtoend_pipe::randomBytesAreAnsweredWithErrors()
{
    constexpr int Count = 300;
    QRandomGenerator random(20250426);
    for (int number = 0; number < Count; ++number) {
        QByteArray line("{");
        const auto length = random.bounded(2000);
        for (int position = 0; position < length; ++position)
            line += static_cast<char>(random.bounded(256));
        send(line.replace('\n', ' '));
    }
    QVERIFY(waitForErrors(Count));
    aJobWorks();
    QCOMPARE(m_reports.of("error").size(), Count);
}

void tst_endtoend_pipe::aLineThatIsTooLongIsAnsweredWithAnError()
{
    constexpr int Megabyte = 1 << 20;
    m_component.write(R"({"type":"print","job":1,"printer":")");
    for (int written = 0; written < 65; ++written)
        m_component.write(QByteArray(Megabyte, 'x'));
    send(R"(","documents":[]})");
    QVERIFY(waitForErrors(1));
    aJobWorks();
    QVERIFY(!m_reports.has("complete", 1));
}

void tst_endtoend_pipe::limitsThatMakeNoSenseAreLeftOut()
{
    const auto file = m_scene->write(QStringLiteral("a.pdf"), TestDocuments::pdf("words"));
    int number = 0;
    for (const auto *limits : {"7", "[]", R"("x")", "null", R"({"stall":-1,"total":-1})",
                               R"({"stall":"1","total":{}})", R"({"stall":1e300,"total":1e300})"}) {
        sendJob("print", ++number, file, QByteArray(",\"limits\":") + limits);
        QVERIFY(waitFor([this, number] { return m_reports.has("complete", number); }));
        QCOMPARE(m_reports.failures(number), QStringList());
    }
}

void tst_endtoend_pipe::clearEverything()
{
    for (const auto *step : {"print", "distil", "merge"})
        send(R"({"type":"clear","step":")" + QByteArray(step) + R"("})");
    // The answer to a request comes after all that was asked before.
    send(R"({"type":"print","job":)" + QByteArray::number(++m_number) + R"(,"documents":[]})");
    QVERIFY(waitFor([this] { return m_reports.has("complete", m_number); }));
}

QStringList tst_endtoend_pipe::workingFiles() const
{
    const auto work = namesIn(m_scene->temporary()).value(0);
    return namesIn(m_scene->temporary() + QLatin1Char('/') + work);
}

void tst_endtoend_pipe::nothingOfAClearedJobStaysInTheWorkingFolder()
{
    aJobWorks();
    clearEverything();
    const auto broken = m_scene->write(QStringLiteral("broken.ps"), "%!PS\nnonsense\n");
    for (int time = 0; time < 3; ++time) {
        aJobWorks();
        const auto one = m_scene->write(QStringLiteral("one.txt"), "words");
        const auto printed = complete("print", ++m_number, one);
        const auto distilled = complete("distil", ++m_number, printed);
        QVERIFY(QFileInfo(complete("merge", ++m_number, distilled)).isFile());
        QVERIFY(!QFileInfo::exists(complete("distil", ++m_number, broken)));
        clearEverything();
    }
    // The places of the workers stay, and what serves all jobs.
    auto left = workingFiles();
    left.removeIf([](const QString &name) {
        return name.startsWith(u"quorlin-pdf-") || name.startsWith(u"gs-") ||
               name.startsWith(u"options-");
    });
    QCOMPARE(left, QStringList());
}

void tst_endtoend_pipe::theEndOfThePipeInTheMiddleOfALineEndsTheComponent()
{
    aJobWorks();
    m_component.write(R"({"type":"print","job":1,"docum)");
}

void tst_endtoend_pipe::theEndOfThePipeInTheMiddleOfAJobEndsTheComponent()
{
    sendJob("print", 1, m_scene->write(QStringLiteral("long.html"), TestDocuments::longPage(1500)));
    QVERIFY(waitFor([this] { return m_reports.has("progress", 1); }));
    QVERIFY(!m_reports.has("complete", 1));
}

QTEST_GUILESS_MAIN(tst_endtoend_pipe)
#include "tst_endtoend_pipe.moc"
