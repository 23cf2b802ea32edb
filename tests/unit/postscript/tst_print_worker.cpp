#include "support/TestFolder.h"
#include "unit/postscript/PdfBuilder.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace Quorlin;

class TestPrintWorker : public QObject
{
    Q_OBJECT

private:
    /// Reads events until one of these has come.
    static QJsonObject next(QProcess &worker, const QStringList &events)
    {
        while (worker.canReadLine() || worker.waitForReadyRead(20000)) {
            while (worker.canReadLine()) {
                const auto message = QJsonDocument::fromJson(worker.readLine()).object();
                if (events.contains(message.value(QLatin1String("event")).toString()))
                    return message;
            }
        }
        return {};
    }

private Q_SLOTS:
    void requestsAreAnsweredOneAfterTheOther()
    {
        const TestFolder folder;
        PdfDocument document;
        document.addPage("BT /F1 20 Tf 20 100 Td (words) Tj ET");
        document.addPage({});
        const auto input = folder.write("a.pdf", document.file());
        QProcess worker;
        worker.start(QStringLiteral(QUORLIN_BIN_DIR "/quorlin-pdf-print"),
                     {QStringLiteral("--work"), folder.path()});
        QCOMPARE(next(worker, {QStringLiteral("ready")}).value(QLatin1String("worker")).toString(),
                 QStringLiteral("quorlin-pdf-print"));
        QJsonObject request{{QStringLiteral("id"), 1},
                            {QStringLiteral("op"), QStringLiteral("print")},
                            {QStringLiteral("input"), input},
                            {QStringLiteral("output"), folder.path("a.ps")},
                            {QStringLiteral("work"), folder.path()}};
        const QStringList ends{QStringLiteral("done"), QStringLiteral("failed")};
        worker.write("nonsense\n" + QJsonDocument(request).toJson(QJsonDocument::Compact) + "\n");
        const auto done = next(worker, ends);
        QCOMPARE(done.value(QLatin1String("id")).toInt(), 1);
        QCOMPARE(done.value(QLatin1String("event")).toString(), QStringLiteral("done"));
        QCOMPARE(done.value(QLatin1String("pages")).toInt(), 2);
        QVERIFY(contentOf(folder.path("a.ps")).startsWith("%!PS-Adobe-3.0\n"));
        request[QStringLiteral("id")] = 2;
        request[QStringLiteral("input")] = folder.path("b.pdf");
        worker.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + "\n");
        const auto failed = next(worker, ends);
        QCOMPARE(failed.value(QLatin1String("reason")).toString(), QStringLiteral("not-found"));
        worker.closeWriteChannel();
        QVERIFY(worker.waitForFinished());
        QCOMPARE(worker.exitCode(), 0);
        QCOMPARE(folder.names(), QStringList({QStringLiteral("a.pdf"), QStringLiteral("a.ps")}));
    }
};

QTEST_GUILESS_MAIN(TestPrintWorker)
#include "tst_print_worker.moc"
