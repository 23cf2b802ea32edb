#include "component/protocol/Reason.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

using namespace Quorlin;

/// What is written about reasons for people and for programs, against the one table of them.
class TestReasonDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theProtocolListsEveryReasonOnce();
    void theSchemaListsEveryReasonOnce();
    void theSchemaGivesEveryReasonItsNumber();
    void theGuideTellsWhatToDoAboutEveryReason();
    void theReportsMembersAreDescribed();
};

namespace {

QString contentOf(const char *name)
{
    QFile file(QStringLiteral(QUORLIN_SOURCE_DIR "/docs/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QList<Reason> toldReasons()
{
    auto reasons = allReasons();
    reasons.removeOne(Reason::None);
    return reasons;
}

/// The rows of a table below a heading, up to the next heading.
QStringList rowsBelow(const QString &text, const char *heading)
{
    const auto begin = text.indexOf(QLatin1Char('\n') + QLatin1String(heading) + QLatin1Char('\n'));
    if (begin < 0)
        return {};
    const auto section = text.mid(begin + 1).split(QStringLiteral("\n#")).first();
    QStringList rows =
        section.split(QLatin1Char('\n')).filter(QRegularExpression(QStringLiteral("^\\|")));
    rows.removeIf([](const QString &row) { return row.startsWith(QLatin1String("| ---")); });
    return rows.mid(1);
}

QString capital(const QString &text)
{
    return text.left(1).toUpper() + text.mid(1);
}

QJsonObject definitions()
{
    return QJsonDocument::fromJson(contentOf("convert-report.schema.json").toUtf8())
        .object()
        .value(QLatin1String("$defs"))
        .toObject();
}

} // namespace

void TestReasonDocuments::theProtocolListsEveryReasonOnce()
{
    QStringList expected;
    for (const auto reason : toldReasons())
        expected.append(QStringLiteral("| `%1` | %2 | %3 |")
                            .arg(reasonKey(reason))
                            .arg(static_cast<int>(reason))
                            .arg(reasonText(reason)));
    auto rows = rowsBelow(contentOf("component-protocol.md"), "## Reasons");
    rows.sort();
    expected.sort();
    QCOMPARE(rows, expected);
}

void TestReasonDocuments::theSchemaListsEveryReasonOnce()
{
    QStringList words;
    for (const auto &word : definitions()
                                .value(QLatin1String("reason"))
                                .toObject()
                                .value(QLatin1String("enum"))
                                .toArray())
        words.append(word.toString());
    QStringList expected;
    for (const auto reason : toldReasons())
        expected.append(reasonKey(reason));
    words.sort();
    expected.sort();
    QCOMPARE(words, expected);
}

void TestReasonDocuments::theSchemaGivesEveryReasonItsNumber()
{
    QStringList pairs;
    for (const auto &entry : definitions()
                                 .value(QLatin1String("reasonAndCode"))
                                 .toObject()
                                 .value(QLatin1String("oneOf"))
                                 .toArray()) {
        const auto members = entry.toObject().value(QLatin1String("properties")).toObject();
        const auto constant = [&members](const char *name) {
            return members.value(QLatin1String(name)).toObject().value(QLatin1String("const"));
        };
        pairs.append(QStringLiteral("%1 %2")
                         .arg(constant("reason").toString())
                         .arg(constant("code").toInt(-1)));
    }
    QStringList expected;
    for (const auto reason : toldReasons())
        expected.append(
            QStringLiteral("%1 %2").arg(reasonKey(reason)).arg(static_cast<int>(reason)));
    pairs.sort();
    expected.sort();
    QCOMPARE(pairs, expected);
}

void TestReasonDocuments::theGuideTellsWhatToDoAboutEveryReason()
{
    const auto rows = rowsBelow(contentOf("users-guide.md"),
                                "### Why a document was not converted, and what to do");
    QCOMPARE(rows.size(), toldReasons().size());
    for (const auto reason : toldReasons()) {
        const auto begin = QStringLiteral("| %1 | ").arg(capital(reasonText(reason)));
        const auto found = rows.filter(QRegularExpression(
            QLatin1Char('^') + QRegularExpression::escape(begin) + QStringLiteral("\\S.+ \\|$")));
        QVERIFY2(found.size() == 1, qPrintable(begin));
    }
}

void TestReasonDocuments::theReportsMembersAreDescribed()
{
    const auto members = definitions()
                             .value(QLatin1String("document"))
                             .toObject()
                             .value(QLatin1String("properties"))
                             .toObject()
                             .keys();
    QVERIFY(members.contains(QStringLiteral("code")));
    const auto text = contentOf("convert-report.md");
    for (const auto &member : members)
        QCOMPARE(text.count(QStringLiteral("\n| `%1` |").arg(member)), 1);
}

QTEST_GUILESS_MAIN(TestReasonDocuments)
#include "tst_reason_documents.moc"
