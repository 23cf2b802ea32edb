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
    void everyReasonHasItsWordItsNumberAndItsSentence();
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
                             {QStringLiteral("code"), 50},
                             {QStringLiteral("text"), reasonText(Reason::Protected)},
                             {QStringLiteral("advice"), reasonAdvice(Reason::Protected)},
                             {QStringLiteral("detail"), QStringLiteral("locked")}};
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

void tst_report::everyReasonHasItsWordItsNumberAndItsSentence()
{
    for (const auto reason : allReasons()) {
        if (reason == Reason::None)
            continue;
        Report report;
        report.documents.append({QStringLiteral("/d/b.odt"), {}, {}, {}, reason, {}, 0.5});
        const auto entry = QJsonDocument::fromJson(report.toJson())
                               .object()
                               .value(QStringLiteral("documents"))
                               .toArray()
                               .first()
                               .toObject();
        QCOMPARE(entry.value(QStringLiteral("reason")).toString(), reasonKey(reason));
        QCOMPARE(entry.value(QStringLiteral("code")).toInt(), static_cast<int>(reason));
        QCOMPARE(entry.value(QStringLiteral("text")).toString(), reasonText(reason));
        QVERIFY(!entry.value(QStringLiteral("advice")).toString().isEmpty());
        QVERIFY(!entry.contains(QStringLiteral("detail")));
    }
}

QTEST_GUILESS_MAIN(tst_report)
#include "tst_report.moc"
