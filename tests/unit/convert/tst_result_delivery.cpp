#include "convert/ResultDelivery.h"
#include "convert/mdlOpenFile.h"
#include "winsupport/MessageService.h"
#include "winsupport/TextSource.h"
#include "winsupport/clsKelCopyFile.h"

#include "support/KeptMessages.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QMap>
#include <QTest>

using namespace Quorlin;

namespace {

class EnglishTexts : public TextSource
{
public:
    [[nodiscard]] QString text(const QString &key) const override
    {
        static const QMap<QString, QString> texts{
            {QStringLiteral("ErrorWindowTitle"), QStringLiteral("Error")},
            {QStringLiteral("ErrorCopyFilename1"), QStringLiteral("Can't copy the file in")},
            {QStringLiteral("ErrorCopyFilename2"), QStringLiteral(".")}};
        return texts.value(key);
    }
};

} // namespace

/// The delivery with the real copy.
class TestResultDelivery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void replacesWhatFollowsTheLastPoint_data();
    void replacesWhatFollowsTheLastPoint();
    void copiesOpensAndRemovesTheTemporaryFile();
    void opensNothingUnlessAsked();
    void sendsNothingByMail();
    void replacesAnOldResult();
    void takesAProtectedOldFileAsTheResultAndOpensItWithoutAMessage();
    void copiesOverAnInputWhoseNameHasNoPoint();
    void tellsThatTheFileCannotBeCopied();
    void tellsItWhenTheFolderIsGone();
    void tellsItWhenAFolderHasTheName();
    void removesTheTemporaryFileAlsoAfterAFailure();
    void leavesAProtectedTemporaryFile();
    void neverRemovesTheResultItself();

private:
    ResultDelivery delivery();

    std::unique_ptr<TestFolder> m_folder;
    clsKelCopyFile m_copy;
    KeptMessages m_messages;
    EnglishTexts m_texts;
    QStringList m_opened;
};

void TestResultDelivery::init()
{
    m_folder = std::make_unique<TestFolder>();
    m_messages.clear();
    m_opened.clear();
}

ResultDelivery TestResultDelivery::delivery()
{
    return {[this](const QString &source, const QString &destination) {
                return m_copy.CopyFile(source, destination, true, true);
            },
            [this](const QString &name) { m_opened.append(name); }, m_messages, m_texts};
}

void TestResultDelivery::replacesWhatFollowsTheLastPoint_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("name");
    QTest::newRow("printed") << QStringLiteral("/d/report.ps") << QStringLiteral("/d/report.pdf");
    QTest::newRow("several points") << QStringLiteral("/d/a.b.c") << QStringLiteral("/d/a.b.pdf");
    QTest::newRow("none") << QStringLiteral("/d/report") << QStringLiteral("/d/report");
    QTest::newRow("only in the folder") << QStringLiteral("/d.e/x") << QStringLiteral("/d.e/x");
    QTest::newRow("at the end") << QStringLiteral("/d/x.") << QStringLiteral("/d/x.pdf");
    QTest::newRow("at the beginning") << QStringLiteral("/d/.x") << QStringLiteral("/d/.pdf");
    QTest::newRow("no folder") << QStringLiteral("x.ps") << QStringLiteral("x.pdf");
    QTest::newRow("empty") << QString() << QString();
}

void TestResultDelivery::replacesWhatFollowsTheLastPoint()
{
    QFETCH(QString, input);
    QFETCH(QString, name);
    QCOMPARE(ResultDelivery::finalName(input), name);
}

void TestResultDelivery::copiesOpensAndRemovesTheTemporaryFile()
{
    const auto temporary = m_folder->write("work/0.pdf", "new");
    const auto target = m_folder->path("report.pdf");
    const auto outcome = delivery().deliver(temporary, target, true);
    QVERIFY(outcome.delivered);
    QVERIFY(outcome.temporaryRemoved);
    QCOMPARE(contentOf(target), QByteArray("new"));
    QVERIFY(!QFile::exists(temporary));
    QCOMPARE(m_opened, QStringList{target});
    QVERIFY(m_messages.all().isEmpty());
}

void TestResultDelivery::opensNothingUnlessAsked()
{
    const auto outcome =
        delivery().deliver(m_folder->write("0.pdf", "new"), m_folder->path("r.pdf"), false);
    QVERIFY(outcome.delivered);
    QVERIFY(m_opened.isEmpty());
}

void TestResultDelivery::sendsNothingByMail()
{
    // Programs that open and that send stand in the search path and write down their calls.
    const auto bin = m_folder->makeFolder("bin");
    const auto calls = m_folder->path("calls");
    for (const auto *const name : {"xdg-open", "xdg-email", "sendmail", "mail", "thunderbird"}) {
        const auto program = m_folder->write(
            qPrintable(QLatin1String("bin/") + QLatin1String(name)),
            "#!/bin/sh\necho \"${0##*/} $*\" >> '" + QFile::encodeName(calls) + "'\n");
        QVERIFY(QFile::setPermissions(program, QFile::Permissions(0x7700)));
    }
    const auto searchPath = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(bin) + ':' + searchPath);

    ResultDelivery delivery(
        [this](const QString &source, const QString &destination) {
            return m_copy.CopyFile(source, destination, true, true);
        },
        [](const QString &name) { mdlOpenFile::ShellOpenFile(name); }, m_messages, m_texts);
    const auto target = m_folder->path("r.pdf");
    const auto outcome = delivery.deliver(m_folder->write("0.pdf", "new"), target, true);
    qputenv("PATH", searchPath);
    QVERIFY(outcome.delivered);
    QTRY_COMPARE(contentOf(calls), "xdg-open " + QFile::encodeName(target) + '\n');
}

void TestResultDelivery::replacesAnOldResult()
{
    const auto target = m_folder->write("r.pdf", "old");
    QVERIFY(delivery().deliver(m_folder->write("0.pdf", "new"), target, false).delivered);
    QCOMPARE(contentOf(target), QByteArray("new"));
}

void TestResultDelivery::takesAProtectedOldFileAsTheResultAndOpensItWithoutAMessage()
{
    // Success is that a file of the name is there, not that the copy said so.
    const auto target = m_folder->write("r.pdf", "old");
    QVERIFY(QFile::setPermissions(target, QFile::ReadOwner | QFile::ReadUser));
    const auto temporary = m_folder->write("0.pdf", "new");
    const auto outcome = delivery().deliver(temporary, target, true);
    QVERIFY(outcome.delivered);
    QCOMPARE(contentOf(target), QByteArray("old"));
    QCOMPARE(m_opened, QStringList{target});
    QVERIFY(m_messages.all().isEmpty());
    QVERIFY(!QFile::exists(temporary));
}

void TestResultDelivery::copiesOverAnInputWhoseNameHasNoPoint()
{
    const auto input = m_folder->write("report", "the document");
    const auto target = ResultDelivery::finalName(input);
    QVERIFY(delivery().deliver(m_folder->write("0.pdf", "pdf"), target, false).delivered);
    QCOMPARE(contentOf(input), QByteArray("pdf"));
}

void TestResultDelivery::tellsThatTheFileCannotBeCopied()
{
    const auto target = m_folder->path("r.pdf");
    const auto outcome = delivery().deliver(m_folder->path("vanished.pdf"), target, true);
    QVERIFY(!outcome.delivered);
    QCOMPARE(m_messages.all().size(), 1);
    // No space before the second part.
    QCOMPARE(m_messages.all().first().text,
             QStringLiteral("Can't copy the file in ") + target + QStringLiteral("."));
    QCOMPARE(m_messages.all().first().style, MessageStyle::Critical);
    QCOMPARE(m_messages.all().first().title, QStringLiteral("Error"));
    QVERIFY(m_opened.isEmpty());
}

void TestResultDelivery::tellsItWhenTheFolderIsGone()
{
    const auto temporary = m_folder->write("0.pdf", "new");
    QVERIFY(!delivery().deliver(temporary, m_folder->path("gone/r.pdf"), true).delivered);
    QCOMPARE(m_messages.all().size(), 1);
}

void TestResultDelivery::tellsItWhenAFolderHasTheName()
{
    const auto folder = m_folder->makeFolder("r.pdf");
    QVERIFY(!delivery().deliver(m_folder->write("0.pdf", "new"), folder, true).delivered);
    QCOMPARE(m_messages.all().size(), 1);
    QVERIFY(m_opened.isEmpty());
}

void TestResultDelivery::removesTheTemporaryFileAlsoAfterAFailure()
{
    const auto temporary = m_folder->write("0.pdf", "new");
    const auto outcome = delivery().deliver(temporary, m_folder->path("gone/r.pdf"), true);
    QVERIFY(outcome.temporaryRemoved);
    QVERIFY(!QFile::exists(temporary));
}

void TestResultDelivery::leavesAProtectedTemporaryFile()
{
    const auto temporary = m_folder->write("0.pdf", "new");
    QVERIFY(QFile::setPermissions(temporary, QFile::ReadOwner | QFile::ReadUser));
    const auto target = m_folder->path("r.pdf");
    const auto outcome = delivery().deliver(temporary, target, false);
    QVERIFY(outcome.delivered);
    QVERIFY(!outcome.temporaryRemoved);
    QVERIFY(QFile::exists(temporary));
    QCOMPARE(contentOf(target), QByteArray("new"));
}

void TestResultDelivery::neverRemovesTheResultItself()
{
    const auto target = m_folder->write("r.pdf", "new");
    const auto outcome = delivery().deliver(target, target, false);
    QVERIFY(outcome.delivered);
    QVERIFY(!outcome.temporaryRemoved);
    QCOMPARE(contentOf(target), QByteArray("new"));
}

QTEST_GUILESS_MAIN(TestResultDelivery)
#include "tst_result_delivery.moc"
