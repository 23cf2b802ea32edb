#include "PicturePage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>

using namespace Quorlin;

namespace {

using Kind = PicturePage::Kind;

struct Picture
{
    QString kind;
    QString encoding;
    int dpi = 0;
};

QStringList qualities()
{
    return {QStringLiteral("Default"), QStringLiteral("Low"), QStringLiteral("Medium"),
            QStringLiteral("High")};
}

QString settings(const QString &quality)
{
    return QStringLiteral(QUORLIN_SOURCE_DIR "/data/Settings/%1.joboptions").arg(quality);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What the program printed on both channels; with "exit …" in front when it failed.
QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForStarted() || !process.waitForFinished(60000))
        return "exit: " + process.errorString().toUtf8();
    const QByteArray text = process.readAll();
    return process.exitCode() == 0 ? text : "exit " + text;
}

} // namespace

class TestJobOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyFileIsTakenWithoutAWord_data() { addQualities(); }
    void everyFileIsTakenWithoutAWord();
    void allFilesSetTheSameParameters();
    void onlyAsciiWithLineFeeds();
    void theVersionIsTheOnePromised_data();
    void theVersionIsTheOnePromised();
    void photographsGetSmallerFromHighOverMediumToLow_data();
    void photographsGetSmallerFromHighOverMediumToLow();
    void lowKeepsNoPictureAbove96Dpi_data();
    void lowKeepsNoPictureAbove96Dpi();
    void finePicturesGetTheQualitysResolution_data();
    void finePicturesGetTheQualitysResolution();
    void drawingsWithFewColoursLoseNothing_data();
    void drawingsWithFewColoursLoseNothing();
    void jpegPicturesAreKeptOrCompressedAnew_data();
    void jpegPicturesAreKeptOrCompressedAnew();
    void everyFontIsEmbeddedAsSubset_data() { addQualities(); }
    void everyFontIsEmbeddedAsSubset();
    void transparencyStaysAlive_data() { addQualities(); }
    void transparencyStaysAlive();
    void oneDistillerTakesOneFileAfterAnother();

private:
    static void addQualities();
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString written(const QString &name, const QByteArray &text) const;
    [[nodiscard]] QString distilled(const QString &quality, const QByteArray &pages) const;
    [[nodiscard]] qint64 sizeOf(const QString &quality, const QByteArray &pages) const;
    [[nodiscard]] QByteArray jpeg(Kind kind) const;
    static QList<Picture> pictures(const QString &pdf);

    QTemporaryDir m_folder;
};

void TestJobOptions::initTestCase()
{
    QVERIFY(m_folder.isValid());
}

void TestJobOptions::addQualities()
{
    QTest::addColumn<QString>("quality");
    for (const QString &quality : qualities())
        QTest::newRow(qPrintable(quality)) << quality;
}

QString TestJobOptions::written(const QString &name, const QByteArray &text) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

/// The path of the PDF made of `pages`; the test fails when the distiller says anything.
QString TestJobOptions::distilled(const QString &quality, const QByteArray &pages) const
{
    const QString pdf = path(quality + QStringLiteral(".pdf"));
    QFile::remove(pdf);
    const QByteArray said = outputOf(
        QStringLiteral("gs"),
        {QStringLiteral("-q"), QStringLiteral("-dSAFER"), QStringLiteral("-dALLOWPSTRANSPARENCY"),
         QStringLiteral("-sDEVICE=pdfwrite"), QStringLiteral("-o"), pdf, settings(quality),
         written(QStringLiteral("job.ps"), "%!PS-Adobe-3.0\n" + pages)});
    if (!said.isEmpty())
        QTest::qFail(said.constData(), __FILE__, __LINE__);
    return pdf;
}

qint64 TestJobOptions::sizeOf(const QString &quality, const QByteArray &pages) const
{
    return QFileInfo(distilled(quality, pages)).size();
}

/// A picture of 300 by 300 samples as JPEG of high quality.
QByteArray TestJobOptions::jpeg(Kind kind) const
{
    const QString page = written(QStringLiteral("photo.ps"),
                                 "%!PS\n-36 -36 translate\n" + PicturePage::page(kind, 300, 72));
    const QString file = path(QStringLiteral("photo.jpg"));
    const QByteArray said = outputOf(
        QStringLiteral("gs"), {QStringLiteral("-q"), QStringLiteral("-sDEVICE=jpeg"),
                               QStringLiteral("-r72"), QStringLiteral("-g300x300"),
                               QStringLiteral("-dJPEGQ=92"), QStringLiteral("-o"), file, page});
    if (!said.isEmpty())
        QTest::qFail(said.constData(), __FILE__, __LINE__);
    return contents(file);
}

/// The pictures of a PDF; `dpi` is the finer of the two directions.
QList<Picture> TestJobOptions::pictures(const QString &pdf)
{
    const QByteArray table = outputOf(QStringLiteral("pdfimages"), {QStringLiteral("-list"), pdf});
    QList<Picture> found;
    for (const QString &line : QString::fromUtf8(table).split(u'\n').mid(2)) {
        const QStringList cells = line.simplified().split(u' ');
        if (cells.size() >= 14)
            found.append({cells[2], cells[8], qMax(cells[12].toInt(), cells[13].toInt())});
    }
    return found;
}

void TestJobOptions::everyFileIsTakenWithoutAWord()
{
    QFETCH(QString, quality);
    const QByteArray pdf = contents(distilled(quality, "72 72 144 144 rectfill showpage\n"));
    QVERIFY(pdf.startsWith("%PDF-"));
    QVERIFY(pdf.trimmed().endsWith("%%EOF"));
}

void TestJobOptions::allFilesSetTheSameParameters()
{
    static const QRegularExpression parameter(QStringLiteral("^  /(\\w+) "),
                                              QRegularExpression::MultilineOption);
    QStringList expected;
    for (const QString &quality : qualities()) {
        QStringList names;
        auto match = parameter.globalMatch(QString::fromLatin1(contents(settings(quality))));
        while (match.hasNext())
            names.append(match.next().captured(1));
        QVERIFY2(names.size() > 50, qPrintable(quality));
        if (expected.isEmpty())
            expected = names;
        QCOMPARE(names, expected);
    }
}

void TestJobOptions::onlyAsciiWithLineFeeds()
{
    for (const QString &quality : qualities()) {
        const QByteArray text = contents(settings(quality));
        QVERIFY2(text.endsWith("setdistillerparams\n"), qPrintable(quality));
        for (const char c : text)
            QVERIFY2(c == '\n' || (c >= ' ' && c <= '~'), qPrintable(quality));
    }
}

void TestJobOptions::theVersionIsTheOnePromised_data()
{
    QTest::addColumn<QString>("quality");
    QTest::addColumn<QByteArray>("header");
    QTest::newRow("Low") << QStringLiteral("Low") << QByteArray("%PDF-1.4");
    QTest::newRow("Medium") << QStringLiteral("Medium") << QByteArray("%PDF-1.5");
    QTest::newRow("Default") << QStringLiteral("Default") << QByteArray("%PDF-1.6");
    QTest::newRow("High") << QStringLiteral("High") << QByteArray("%PDF-1.7");
}

void TestJobOptions::theVersionIsTheOnePromised()
{
    QFETCH(QString, quality);
    QFETCH(QByteArray, header);
    const QByteArray pages = "72 72 144 144 rectfill showpage\n";
    QCOMPARE(contents(distilled(quality, pages)).left(header.size()), header);
}

void TestJobOptions::photographsGetSmallerFromHighOverMediumToLow_data()
{
    QTest::addColumn<QByteArray>("pages");
    for (const int dpi : {80, 96, 120, 150, 220, 300, 440, 600})
        QTest::addRow("colour %d", dpi) << PicturePage::page(Kind::Colour, 480, dpi);
    QTest::newRow("grey") << PicturePage::page(Kind::Grey, 480, 200);
    QTest::newRow("jpeg 90") << PicturePage::jpegPage(jpeg(Kind::Colour), 300, 300, 90);
    QTest::newRow("jpeg 220") << PicturePage::jpegPage(jpeg(Kind::Colour), 300, 300, 220);
    QTest::newRow("soft jpeg 90") << PicturePage::jpegPage(jpeg(Kind::Soft), 300, 300, 90);
    QTest::newRow("soft jpeg 240") << PicturePage::jpegPage(jpeg(Kind::Soft), 300, 300, 240);
    QTest::newRow("mixed") << PicturePage::page(Kind::Colour, 400, 150) +
                                  PicturePage::page(Kind::Drawing, 400, 150) +
                                  PicturePage::page(Kind::Grey, 400, 300);
}

void TestJobOptions::photographsGetSmallerFromHighOverMediumToLow()
{
    QFETCH(QByteArray, pages);
    const qint64 high = sizeOf(QStringLiteral("High"), pages);
    const qint64 medium = sizeOf(QStringLiteral("Medium"), pages);
    const qint64 low = sizeOf(QStringLiteral("Low"), pages);
    QVERIFY2(high > medium, qPrintable(QStringLiteral("%1 > %2").arg(high).arg(medium)));
    QVERIFY2(medium > low, qPrintable(QStringLiteral("%1 > %2").arg(medium).arg(low)));
    QVERIFY(sizeOf(QStringLiteral("Default"), pages) > medium);
}

void TestJobOptions::lowKeepsNoPictureAbove96Dpi_data()
{
    QTest::addColumn<int>("kind");
    const QList<std::pair<const char *, Kind>> kinds = {{"colour", Kind::Colour},
                                                        {"grey", Kind::Grey},
                                                        {"mono", Kind::Mono},
                                                        {"mask", Kind::Mask},
                                                        {"drawing", Kind::Drawing}};
    for (const auto &[name, kind] : kinds)
        QTest::newRow(name) << int(kind);
}

void TestJobOptions::lowKeepsNoPictureAbove96Dpi()
{
    QFETCH(int, kind);
    const QList<int> dpis = {72, 96, 97, 100, 120, 150, 192, 200, 223, 300, 357, 600};
    QByteArray pages;
    for (const int dpi : dpis)
        pages += PicturePage::page(Kind(kind), 200, dpi);
    const QList<Picture> found = pictures(distilled(QStringLiteral("Low"), pages));
    QCOMPARE(found.size(), dpis.size());
    QCOMPARE(found[0].dpi, 72);
    QCOMPARE(found[1].dpi, 96);
    for (const Picture &picture : found)
        QVERIFY2(picture.dpi <= 96, qPrintable(QString::number(picture.dpi)));
}

void TestJobOptions::finePicturesGetTheQualitysResolution_data()
{
    QTest::addColumn<QString>("quality");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<int>("untouched");
    QTest::newRow("Low") << QStringLiteral("Low") << 96 << 90;
    QTest::newRow("Medium") << QStringLiteral("Medium") << 150 << 220;
    QTest::newRow("Default") << QStringLiteral("Default") << 200 << 290;
    QTest::newRow("High") << QStringLiteral("High") << 300 << 440;
}

void TestJobOptions::finePicturesGetTheQualitysResolution()
{
    QFETCH(QString, quality);
    QFETCH(int, dpi);
    QFETCH(int, untouched);
    const QByteArray pages = PicturePage::page(Kind::Colour, 600, 600) +
                             PicturePage::page(Kind::Grey, 600, 600) +
                             PicturePage::page(Kind::Colour, 400, untouched);
    const QList<Picture> found = pictures(distilled(quality, pages));
    QCOMPARE(found.size(), 3);
    QCOMPARE(found[0].dpi, dpi);
    QCOMPARE(found[1].dpi, dpi);
    QCOMPARE(found[2].dpi, untouched);
    QCOMPARE(found[2].encoding, QStringLiteral("jpeg"));
}

void TestJobOptions::drawingsWithFewColoursLoseNothing_data()
{
    QTest::addColumn<QString>("quality");
    for (const char *quality : {"Default", "High"})
        QTest::newRow(quality) << QString::fromLatin1(quality);
}

void TestJobOptions::drawingsWithFewColoursLoseNothing()
{
    QFETCH(QString, quality);
    const QString pdf = distilled(quality, PicturePage::page(Kind::Drawing, 400, 150));
    QCOMPARE(pictures(pdf).size(), 1);
    const QString prefix = path(QStringLiteral("drawing"));
    QCOMPARE(outputOf(QStringLiteral("pdfimages"), {pdf, prefix}), QByteArray());
    const QByteArray ppm = contents(prefix + QStringLiteral("-000.ppm"));
    const QByteArray samples = PicturePage::samples(Kind::Drawing, 400);
    QVERIFY(ppm.right(samples.size()) == samples);
}

void TestJobOptions::jpegPicturesAreKeptOrCompressedAnew_data()
{
    QTest::addColumn<QString>("quality");
    QTest::addColumn<bool>("kept");
    QTest::newRow("Low") << QStringLiteral("Low") << false;
    QTest::newRow("Medium") << QStringLiteral("Medium") << false;
    QTest::newRow("Default") << QStringLiteral("Default") << true;
    QTest::newRow("High") << QStringLiteral("High") << true;
}

void TestJobOptions::jpegPicturesAreKeptOrCompressedAnew()
{
    QFETCH(QString, quality);
    QFETCH(bool, kept);
    const QByteArray picture = jpeg(Kind::Colour);
    QVERIFY(picture.startsWith("\xff\xd8"));
    const QString pdf = distilled(quality, PicturePage::jpegPage(picture, 300, 300, 90));
    QCOMPARE(contents(pdf).contains(picture), kept);
    QCOMPARE(pictures(pdf).value(0).encoding, QStringLiteral("jpeg"));
}

void TestJobOptions::everyFontIsEmbeddedAsSubset()
{
    QFETCH(QString, quality);
    QByteArray page;
    for (const char *font : {"Helvetica", "Times-Italic", "Courier-Bold", "Symbol"})
        page += '/' + QByteArray(font) + " 20 selectfont 72 72 moveto (abc) show\n";
    const QString pdf = distilled(quality, page + "showpage\n");
    const QString table = QString::fromUtf8(outputOf(QStringLiteral("pdffonts"), {pdf}));
    const QStringList fonts = table.trimmed().split(u'\n').mid(2);
    QCOMPARE(fonts.size(), 4);
    static const QRegularExpression embeddedSubset(QStringLiteral(" yes yes (yes|no) +\\d+ +0$"));
    for (const QString &font : fonts)
        QVERIFY2(font.trimmed().contains(embeddedSubset), qPrintable(font));
    QVERIFY(table.contains(QStringLiteral("+Helvetica ")));
}

void TestJobOptions::transparencyStaysAlive()
{
    QFETCH(QString, quality);
    const QByteArray page = "1 0 0 setrgbcolor 72 72 144 144 rectfill .5 .setfillconstantalpha "
                            "0 0 1 setrgbcolor 144 144 144 144 rectfill showpage\n";
    const QString pdf = distilled(quality, page);
    QVERIFY(contents(pdf).contains("/ca 0.5"));
    QVERIFY(pictures(pdf).isEmpty());
}

void TestJobOptions::oneDistillerTakesOneFileAfterAnother()
{
    const QString job = written(QStringLiteral("job.ps"),
                                "%!PS-Adobe-3.0\n" + PicturePage::page(Kind::Colour, 300, 150));
    QByteArray program;
    QStringList results;
    for (const char *quality : {"Low", "High", "Medium", "Low", "Default", "High"}) {
        results += path(QStringLiteral("run%1.pdf").arg(results.size()));
        program += "<< /OutputFile (" + results.last().toUtf8() + ") >> setpagedevice (" +
                   settings(QString::fromLatin1(quality)).toUtf8() + ") run (" + job.toUtf8() +
                   ") run\n";
    }
    const QByteArray said =
        outputOf(QStringLiteral("gs"),
                 {QStringLiteral("-q"), QStringLiteral("-dNOSAFER"),
                  QStringLiteral("-sDEVICE=pdfwrite"), QStringLiteral("-o"),
                  path(QStringLiteral("first.pdf")), written(QStringLiteral("runs.ps"), program)});
    QCOMPARE(said, QByteArray());
    const auto size = [&](int run) { return QFileInfo(results[run]).size(); };
    // Runs in different seconds hold different dates, which may compress to other lengths.
    constexpr qint64 OfDates = 32;
    QVERIFY(std::abs(size(0) - size(3)) < OfDates);
    QVERIFY(std::abs(size(1) - size(5)) < OfDates);
    QVERIFY(size(1) > size(2) && size(2) > size(3) && size(4) > size(2));
    QCOMPARE(contents(results[3]).left(8), QByteArray("%PDF-1.4"));
}

QTEST_GUILESS_MAIN(TestJobOptions)
#include "tst_joboptions.moc"
