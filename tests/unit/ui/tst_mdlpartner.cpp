#include "ui/mdlPartner.h"

#include "settings/IniFile.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QSet>
#include <QTest>

#include <memory>

using namespace Quorlin;

/// The desktop's opener is a program of the search path; a stand-in writes down its call.
class TestMdlPartner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyLanguageHasItsAddresses_data();
    void everyLanguageHasItsAddresses();
    void englishOpensTheEnglishPageOfTheMakerAndTheProductsHomePage();
    void frenchOpensTheFrenchPageOfTheProductAndTheFrenchSiteOfAdobe();
    void noOtherLanguageStandsInForOneThatIsNotThere_data();
    void noOtherLanguageStandsInForOneThatIsNotThere();
    void aMissingSettingIsAnEmptyAddress();
    void settingsOfOtherGroupsDoNotCount();
    void aFileThatCannotBeReadLeavesAllAddressesEmpty();
    void readingAgainReplacesAllAddresses();
    void theShippedSettingsHaveEveryAddress();
    void opensAPageInTheRootFolder();
    void handsOnAnAddressAsItStands();
    void doesNotOpenWhatIsNoWebAddress_data();
    void doesNotOpenWhatIsNoWebAddress();
    void ignoresADesktopWithoutABrowser();

private:
    void read(const QByteArray &settings);
    [[nodiscard]] QByteArray call() const { return contentOf(m_folder->path("call")); }

    std::unique_ptr<TestFolder> m_folder;
    QByteArray m_searchPath;
};

namespace {

const QByteArray Settings("[WebLinks]\r\nAdobeInternational = https://a.example/int\r\n"
                          "AdobeFrench = https://a.example/fr\r\n"
                          "AdobeGerman = https://a.example/de\r\n"
                          "MakerHome = https://m.example/\r\n"
                          "MakerEnglish = https://m.example/us\r\n"
                          "ProductHome = https://p.example/\r\n"
                          "ProductFrench = https://p.example/index-fr.htm\r\n");

QStringList addressesFor(const QString &language)
{
    return {mdlPartner::GetAdobeLink(language), mdlPartner::GetMakerLink(language),
            mdlPartner::GetProductLink(language)};
}

const QStringList None{QString(), QString(), QString()};

} // namespace

void TestMdlPartner::init()
{
    m_folder = std::make_unique<TestFolder>();
    m_searchPath = qgetenv("PATH");
    const auto into = QFile::encodeName(m_folder->path());
    const auto opener = m_folder->write("bin/xdg-open", "#!/bin/sh\nprintf '%s|%s|%s' \"$#\" "
                                                        "\"$PWD\" \"$1\" > '" +
                                                            into + "/new' && mv '" + into +
                                                            "/new' '" + into + "/call'\n");
    QVERIFY(QFile::setPermissions(opener, QFile::Permissions(0x7700)));
    qputenv("PATH", into + "/bin:" + m_searchPath);
    read(Settings);
}

void TestMdlPartner::cleanup()
{
    qputenv("PATH", m_searchPath);
}

void TestMdlPartner::read(const QByteArray &settings)
{
    m_folder->write("Quorlin.ini", settings);
    mdlPartner::InitWebLinks(m_folder->path());
}

void TestMdlPartner::everyLanguageHasItsAddresses_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("adobe");
    QTest::addColumn<QString>("maker");
    QTest::addColumn<QString>("product");
    const auto row = [](const char *language, const char *adobe, const char *maker,
                        const char *product) {
        QTest::addRow("%s", language)
            << QString::fromUtf8(language)
            << QLatin1String("https://a.example/") + QLatin1String(adobe)
            << QLatin1String("https://m.example/") + QLatin1String(maker)
            << QLatin1String("https://p.example/") + QLatin1String(product);
    };
    row("default", "int", "us", "");
    row("français", "fr", "", "index-fr.htm");
    row("english", "int", "us", "");
    row("deutsch", "de", "us", "");
}

void TestMdlPartner::everyLanguageHasItsAddresses()
{
    QFETCH(QString, language);
    QFETCH(QString, adobe);
    QFETCH(QString, maker);
    QFETCH(QString, product);
    QCOMPARE(addressesFor(language), QStringList({adobe, maker, product}));
}

void TestMdlPartner::englishOpensTheEnglishPageOfTheMakerAndTheProductsHomePage()
{
    QCOMPARE(mdlPartner::GetMakerLink(QStringLiteral("english")),
             QStringLiteral("https://m.example/us"));
    QCOMPARE(mdlPartner::GetProductLink(QStringLiteral("english")),
             QStringLiteral("https://p.example/"));
}

void TestMdlPartner::frenchOpensTheFrenchPageOfTheProductAndTheFrenchSiteOfAdobe()
{
    QCOMPARE(mdlPartner::GetProductLink(QStringLiteral("français")),
             QStringLiteral("https://p.example/index-fr.htm"));
    QCOMPARE(mdlPartner::GetAdobeLink(QStringLiteral("français")),
             QStringLiteral("https://a.example/fr"));
}

void TestMdlPartner::noOtherLanguageStandsInForOneThatIsNotThere_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("a user's own") << QStringLiteral("italiano");
    QTest::newRow("another case") << QStringLiteral("English");
    QTest::newRow("no name") << QString();
}

void TestMdlPartner::noOtherLanguageStandsInForOneThatIsNotThere()
{
    QFETCH(QString, language);
    QCOMPARE(addressesFor(language), None);
}

void TestMdlPartner::aMissingSettingIsAnEmptyAddress()
{
    auto settings = Settings;
    settings.replace("AdobeFrench", "Other");
    read(settings);
    QCOMPARE(mdlPartner::GetAdobeLink(QStringLiteral("français")), QString());
    QCOMPARE(mdlPartner::GetAdobeLink(QStringLiteral("deutsch")),
             QStringLiteral("https://a.example/de"));
}

void TestMdlPartner::settingsOfOtherGroupsDoNotCount()
{
    auto settings = Settings;
    settings.replace("[WebLinks]", "[Links]");
    read(settings);
    QCOMPARE(addressesFor(QStringLiteral("english")), None);
}

void TestMdlPartner::aFileThatCannotBeReadLeavesAllAddressesEmpty()
{
    mdlPartner::InitWebLinks(m_folder->path("missing"));
    QCOMPARE(addressesFor(QStringLiteral("default")), None);
    // Readable up to a limit is not read.
    read(Settings + QByteArray(IniFile::MostBytes, 'x') + "\r\n");
    QCOMPARE(addressesFor(QStringLiteral("english")), None);
}

void TestMdlPartner::readingAgainReplacesAllAddresses()
{
    auto settings = Settings;
    settings.replace("https://m.example/us", "https://new.example/");
    read(settings);
    QCOMPARE(mdlPartner::GetMakerLink(QStringLiteral("english")),
             QStringLiteral("https://new.example/"));
}

void TestMdlPartner::theShippedSettingsHaveEveryAddress()
{
    mdlPartner::InitWebLinks(QStringLiteral(QUORLIN_SOURCE_DIR "/data"));
    QSet<QString> all;
    for (const auto &language : {QStringLiteral("default"), QStringLiteral("français"),
                                 QStringLiteral("english"), QStringLiteral("deutsch")}) {
        for (const auto &address : addressesFor(language)) {
            QVERIFY2(address.startsWith(QLatin1String("https://")), qPrintable(address));
            all.insert(address);
        }
    }
    QCOMPARE(all.size(), 7);
    QVERIFY(mdlPartner::GetProductLink(QStringLiteral("français"))
                .endsWith(QLatin1String("/index-fr.htm")));
}

void TestMdlPartner::opensAPageInTheRootFolder()
{
    mdlPartner::OpenLink(QStringLiteral("https://p.example/a?b=c&d#e"));
    QTRY_COMPARE(call(), QByteArray("1|/|https://p.example/a?b=c&d#e"));
}

void TestMdlPartner::handsOnAnAddressAsItStands()
{
    mdlPartner::OpenLink(QStringLiteral("HTTP://p.example/$(touch%20x);'y'"));
    QTRY_COMPARE(call(), QByteArray("1|/|HTTP://p.example/$(touch%20x);'y'"));
}

void TestMdlPartner::doesNotOpenWhatIsNoWebAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("empty") << QString();
    QTest::newRow("option") << QStringLiteral("--help");
    QTest::newRow("file") << QStringLiteral("file:///etc/passwd");
    QTest::newRow("path") << QStringLiteral("/etc/passwd");
    QTest::newRow("program") << QStringLiteral("javascript:alert(1)");
    QTest::newRow("no server") << QStringLiteral("https:///x");
    QTest::newRow("no scheme") << QStringLiteral("www.varnex.example");
    QTest::newRow("blanks") << QStringLiteral("https://p.example/ --x");
    QTest::newRow("line feed") << QStringLiteral("https://p.example/\nx");
}

void TestMdlPartner::doesNotOpenWhatIsNoWebAddress()
{
    QFETCH(QString, address);
    m_folder->write("bin/xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$1\" >> '" +
                                        QFile::encodeName(m_folder->path()) + "/call'\n");
    mdlPartner::OpenLink(address);
    mdlPartner::OpenLink(QStringLiteral("https://p.example/"));
    QTRY_COMPARE(call(), QByteArray("https://p.example/\n"));
}

void TestMdlPartner::ignoresADesktopWithoutABrowser()
{
    qputenv("PATH", QFile::encodeName(m_folder->makeFolder("empty")));
    mdlPartner::OpenLink(QStringLiteral("https://p.example/"));
    QVERIFY(!QFile::exists(m_folder->path("call")));
}

QTEST_GUILESS_MAIN(TestMdlPartner)
#include "tst_mdlpartner.moc"
