#include "tool/Report.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Quorlin;

class tst_report : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyDocumentIsTold();
    void theMergedFileIsToldOnlyForAMerge();
    void anEmptyRunIsAReportToo();
};

void tst_report::everyDocumentIsTold()
{
    Report report;
    report.quality = QStringLiteral("High");
    report.seconds = 2.0006;
    report.documents.append({QStringLiteral("/d/ä.odt"), {}, {}, QStringLiteral("/d/ä.pdf")});
    report.documents.append(
        {QStringLiteral("/d/b.odt"), {}, {}, {}, Reason::Protected, QStringLiteral("locked"), 0.5});
    const auto json = QJsonDocument::fromJson(report.toJson()).object();
    const QJsonObject first{{QStringLiteral("input"), QStringLiteral("/d/ä.odt")},
                            {QStringLiteral("output"), QStringLiteral("/d/ä.pdf")},
                            {QStringLiteral("seconds"), 0},
                            {QStringLiteral("status"), QStringLiteral("converted")}};
    const QJsonObject second{{QStringLiteral("input"), QStringLiteral("/d/b.odt")},
                             {QStringLiteral("output"), QJsonValue()},
                             {QStringLiteral("seconds"), 0.5},
                             {QStringLiteral("status"), QStringLiteral("failed")},
                             {QStringLiteral("reason"), QStringLiteral("protected")},
                             {QStringLiteral("text"), QStringLiteral("locked")}};
    const QJsonObject totals{{QStringLiteral("documents"), 2},
                             {QStringLiteral("converted"), 1},
                             {QStringLiteral("failed"), 1},
                             {QStringLiteral("seconds"), 2.001}};
    QCOMPARE(json.value(QStringLiteral("documents")).toArray(), QJsonArray({first, second}));
    QCOMPARE(json.value(QStringLiteral("totals")).toObject(), totals);
    QCOMPARE(json.value(QStringLiteral("quality")).toString(), QStringLiteral("High"));
    QCOMPARE(json.value(QStringLiteral("version")).toString(), QStringLiteral(QUORLIN_VERSION));
    QCOMPARE(json.value(QStringLiteral("report")).toInt(), 1);
}

void tst_report::theMergedFileIsToldOnlyForAMerge()
{
    Report report;
    QVERIFY(!QJsonDocument::fromJson(report.toJson()).object().contains(QStringLiteral("merged")));
    report.merges = true;
    QVERIFY(
        QJsonDocument::fromJson(report.toJson()).object().value(QStringLiteral("merged")).isNull());
    report.mergedFile = QStringLiteral("/d/all.pdf");
    QCOMPARE(QJsonDocument::fromJson(report.toJson())
                 .object()
                 .value(QStringLiteral("merged"))
                 .toString(),
             QStringLiteral("/d/all.pdf"));
}

void tst_report::anEmptyRunIsAReportToo()
{
    const auto bytes = Report().toJson();
    QVERIFY(bytes.endsWith("}\n"));
    QVERIFY(QJsonDocument::fromJson(bytes).object().value(QStringLiteral("documents")).isArray());
}

QTEST_GUILESS_MAIN(tst_report)
#include "tst_report.moc"
