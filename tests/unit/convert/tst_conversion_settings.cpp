#include "convert/ConversionSettings.h"

#include "support/TestFolder.h"

#include <QFile>
#include <QTest>

using namespace Quorlin;

class TestConversionSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMissingFileGivesNothing();
    void readsThePrinterAndTheJobOptions();
    void thePrinterHasADefault_data();
    void thePrinterHasADefault();
    void theShippedFileNamesFilesThatExist();

private:
    TestFolder m_folder;
};

void TestConversionSettings::aMissingFileGivesNothing()
{
    QVERIFY(!ConversionSettings::load(m_folder.path("nowhere")));
}

void TestConversionSettings::readsThePrinterAndTheJobOptions()
{
    m_folder.write("Quorlin.ini", "[Printer]\r\nName = B\xfcro \x80\x99\r\n[JobOptions]\r\n"
                                  "High = h.joboptions\r\nLast = l.joboptions");
    const auto settings = ConversionSettings::load(m_folder.path());
    QVERIFY(settings);
    QCOMPARE(settings->printerName, QStringLiteral("Büro €\u2122"));
    QCOMPARE(settings->jobOptions.names(), QStringList{QStringLiteral("High")});
    QCOMPARE(settings->jobOptions.Item(1)->Filename(), m_folder.path("Settings/h.joboptions"));
}

void TestConversionSettings::thePrinterHasADefault_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("empty value") << QByteArray("[Printer]\nName =  \n");
    QTest::newRow("other group") << QByteArray("[Print]\nName = x\n");
    QTest::newRow("other case") << QByteArray("[Printer]\nname = x\n");
}

void TestConversionSettings::thePrinterHasADefault()
{
    QFETCH(QByteArray, bytes);
    m_folder.write("Quorlin.ini", bytes);
    const auto settings = ConversionSettings::load(m_folder.path());
    QVERIFY(settings);
    QCOMPARE(settings->printerName, QStringLiteral("Varnex PDF"));
    QCOMPARE(settings->jobOptions.Count(), 0);
}

void TestConversionSettings::theShippedFileNamesFilesThatExist()
{
    const auto settings = ConversionSettings::load(QStringLiteral(QUORLIN_SOURCE_DIR "/data"));
    QVERIFY(settings);
    QCOMPARE(settings->jobOptions.names(),
             (QStringList{QStringLiteral("Default"), QStringLiteral("Low"),
                          QStringLiteral("Medium"), QStringLiteral("High")}));
    for (qsizetype index = 1; index <= settings->jobOptions.Count(); ++index)
        QVERIFY2(QFile::exists(settings->jobOptions.Item(index)->Filename()),
                 qPrintable(settings->jobOptions.Item(index)->name()));
}

QTEST_GUILESS_MAIN(TestConversionSettings)
#include "tst_conversion_settings.moc"
