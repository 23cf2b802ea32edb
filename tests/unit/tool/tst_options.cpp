#include "tool/FileNames.h"
#include "tool/OptionsReader.h"
#include "unit/tool/ToolFolder.h"

#include <QDir>
#include <QTest>

using namespace Quorlin;

namespace {

std::optional<Options> read(const QStringList &arguments, QString *error = nullptr)
{
    OptionsReader reader;
    auto options = reader.read(QStringList(QStringLiteral("quorlin-convert")) + arguments);
    if (error)
        *error = reader.error();
    return options;
}

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class tst_options : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everythingHasItsDefault();
    void everyOptionIsRead();
    void lettersAreReadInEveryForm();
    void whatFollowsTwoDashesIsADocument();
    void helpAndVersionNeedNoDocument();
    void wrongUseIsRefused_data();
    void wrongUseIsRefused();
    void targetsThatAreNotUtf8AreRefused();
    void aFolderIsNoMergedFile();
    void aFileIsNoOutputFolder();
    void aRelativeMergedFileLiesInTheOutputFolder();
    void helpNamesEveryOptionInOneColumn();
};

void tst_options::everythingHasItsDefault()
{
    const auto options = read({QStringLiteral("a.odt")});
    QVERIFY(options);
    QCOMPARE(options->action, Options::Action::Convert);
    QCOMPARE(options->quality, QStringLiteral("Default"));
    QVERIFY(!options->merges() && options->outputFolder.isEmpty() && options->lists.isEmpty());
    QVERIFY(!options->dryRun && !options->summary && !options->listsHoldNul);
    QVERIFY(options->limits.toJson().isEmpty());
}

void tst_options::everyOptionIsRead()
{
    const auto options = read(words("-q High -m all.pdf -o out --json - --timeout 600 --stall 60 "
                                    "-v a.odt folder"));
    QVERIFY(options);
    QCOMPARE(options->quality, QStringLiteral("High"));
    QCOMPARE(options->mergeFile, QStringLiteral("all.pdf"));
    QCOMPARE(options->outputFolder, QStringLiteral("out"));
    QVERIFY(options->reportsToOutput() && options->verbose && !options->quiet);
    QCOMPARE(options->limits.total.count(), 600);
    QCOMPARE(options->limits.stall.count(), 60);
    QCOMPARE(options->inputs, words("a.odt folder"));
    QCOMPARE(read(words("--quality Low --merge=x.pdf --output=o a"))->mergeFile,
             QStringLiteral("x.pdf"));
}

void tst_options::lettersAreReadInEveryForm()
{
    for (const auto *line : {"-0 -T - -T more -j 4 -n -s", "-0nsT - -Tmore -j4",
                             "--null --files-from=- --files-from more --jobs=4 --dry-run "
                             "--summary"}) {
        const auto options = read(words(line));
        QVERIFY2(options, line);
        QCOMPARE(options->lists, words("- more"));
        QCOMPARE(options->limits.atOnce, 4);
        QVERIFY(options->listsHoldNul && options->dryRun && options->summary);
        QVERIFY(options->inputs.isEmpty());
    }
}

void tst_options::whatFollowsTwoDashesIsADocument()
{
    QCOMPARE(read(words("-- -q --help"))->inputs, words("-q --help"));
}

void tst_options::helpAndVersionNeedNoDocument()
{
    QCOMPARE(read(words("--help"))->action, Options::Action::Help);
    QCOMPARE(read(words("-h"))->action, Options::Action::Help);
    QCOMPARE(read(words("--version"))->action, Options::Action::Version);
}

void tst_options::wrongUseIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("no document") << words("-q High");
    QTest::newRow("unknown option") << words("--nothing a.odt");
    QTest::newRow("no value") << words("a.odt -q");
    QTest::newRow("no name") << words("-q= a.odt");
    QTest::newRow("no merged file") << words("--merge= a.odt");
    QTest::newRow("no number") << words("--timeout soon a.odt");
    QTest::newRow("zero") << words("--stall 0 a.odt");
    QTest::newRow("negative") << words("--stall=-5 a.odt");
    QTest::newRow("too large") << words("--timeout 99999999999 a.odt");
    QTest::newRow("no job") << words("-j 0 a.odt");
    QTest::newRow("jobs without a number") << words("--jobs many a.odt");
    QTest::newRow("a list without a name") << words("--files-from= a.odt");
    QTest::newRow("NUL in no list") << words("-0 a.odt");
    QTest::newRow("standard input twice") << words("-T - -T -");
    QTest::newRow("an empty name") << QStringList{QStringLiteral("a.odt"), QString()};
    QTest::newRow("standard input as a document") << words("-");
    QTest::newRow("a report over an office document") << words("--json a.docx b.docx");
    QTest::newRow("a merged file over an office document") << words("-m a.docx b.docx");
    QTest::newRow("quiet and loud") << words("--quiet -v a.odt");
    QTest::newRow("one name for two") << words("-m x --json ./x a.odt");
}

void tst_options::wrongUseIsRefused()
{
    QFETCH(QStringList, arguments);
    QString error;
    QVERIFY(!read(arguments, &error));
    QVERIFY(!error.isEmpty());
}

void tst_options::targetsThatAreNotUtf8AreRefused()
{
    for (const auto *option : {"-T", "-o", "-m", "--json"}) {
        QString error;
        QVERIFY(
            !read({QString::fromUtf8(option), FileNames::fromBytes("\xff"), QStringLiteral("a")},
                  &error));
        QCOMPARE(error, QStringLiteral("the name \uFFFD is not UTF-8"));
    }
}

void tst_options::aFolderIsNoMergedFile()
{
    const ToolFolder folder;
    folder.write("sub/a.odt");
    QVERIFY(!read(words("-m sub a.odt")));
}

void tst_options::aFileIsNoOutputFolder()
{
    const ToolFolder folder;
    folder.write("out");
    QVERIFY(!read(words("-o out a.odt")));
    QVERIFY(read(words("-o other a.odt")));
}

void tst_options::aRelativeMergedFileLiesInTheOutputFolder()
{
    const auto current = QDir::currentPath();
    QCOMPARE(read(words("-m x.pdf a"))->mergeTarget(), current + QStringLiteral("/x.pdf"));
    QCOMPARE(read(words("-m x.pdf -o out a"))->mergeTarget(),
             current + QStringLiteral("/out/x.pdf"));
    QCOMPARE(read(words("-m /t/x.pdf -o out a"))->mergeTarget(), QStringLiteral("/t/x.pdf"));
}

void tst_options::helpNamesEveryOptionInOneColumn()
{
    const auto lines = OptionsReader::help().split(QLatin1Char('\n'));
    int options = 0;
    for (const auto &line : lines) {
        QVERIFY2(line.size() <= 82, qPrintable(line));
        if (!line.startsWith(QLatin1String("  -")) && !line.startsWith(QLatin1String("      --")))
            continue;
        ++options;
        QCOMPARE(line.at(25), QLatin1Char(' '));
        QVERIFY2(line.at(26) != QLatin1Char(' '), qPrintable(line));
    }
    QCOMPARE(options, 16);
    for (const auto &code : words("0 1 2 130"))
        QVERIFY(!lines.filter(QStringLiteral("  ") + code + QLatin1Char(' ')).isEmpty());
}

QTEST_GUILESS_MAIN(tst_options)
#include "tst_options.moc"
