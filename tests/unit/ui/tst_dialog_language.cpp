#include "ui/DialogLanguage.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QPushButton>
#include <QTest>

using namespace Quorlin;

class TestDialogLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dialogsSpeakTheLanguageInUse_data();
    void dialogsSpeakTheLanguageInUse();
    void theLastLanguageCounts();
    void anUnknownLanguageTakesTheEarlierOneBack();
    void dialogsAreEnglishAgainWithoutIt();
};

namespace {

QString cancelText()
{
    const QDialogButtonBox box(QDialogButtonBox::Cancel);
    return box.button(QDialogButtonBox::Cancel)->text().remove(QLatin1Char('&'));
}

const QString German = QStringLiteral("Abbrechen");
const QString English = QStringLiteral("Cancel");

} // namespace

void TestDialogLanguage::dialogsSpeakTheLanguageInUse_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("cancel");
    QTest::addColumn<QString>("fileName");
    QTest::newRow("english") << QStringLiteral("english") << English << QStringLiteral("name:");
    QTest::newRow("français") << QStringLiteral("français") << QStringLiteral("Annuler")
                              << QStringLiteral("Nom de fichier");
    QTest::newRow("deutsch") << QStringLiteral("deutsch") << German << QStringLiteral("Dateiname");
}

void TestDialogLanguage::dialogsSpeakTheLanguageInUse()
{
    QFETCH(QString, language);
    QFETCH(QString, cancel);
    QFETCH(QString, fileName);
    DialogLanguage dialogs;
    dialogs.set(language);
    QCOMPARE(cancelText(), cancel);
    QFileDialog files;
    files.setOption(QFileDialog::DontUseNativeDialog);
    auto label = files.labelText(QFileDialog::FileName).remove(QLatin1Char('&'));
    QVERIFY2(label.contains(fileName), qPrintable(label));
}

void TestDialogLanguage::theLastLanguageCounts()
{
    DialogLanguage dialogs;
    dialogs.set(QStringLiteral("français"));
    dialogs.set(QStringLiteral("deutsch"));
    QCOMPARE(cancelText(), German);
    dialogs.set(QStringLiteral("english"));
    QCOMPARE(cancelText(), English);
}

void TestDialogLanguage::anUnknownLanguageTakesTheEarlierOneBack()
{
    DialogLanguage dialogs;
    for (const auto &unknown : {QStringLiteral("italiano"), QStringLiteral("../qtbase_fr"),
                                QStringLiteral("Deutsch"), QString()}) {
        dialogs.set(QStringLiteral("deutsch"));
        QCOMPARE(cancelText(), German);
        dialogs.set(unknown);
        QCOMPARE(cancelText(), English);
    }
}

void TestDialogLanguage::dialogsAreEnglishAgainWithoutIt()
{
    {
        DialogLanguage dialogs;
        dialogs.set(QStringLiteral("deutsch"));
        QCOMPARE(cancelText(), German);
    }
    QCOMPARE(cancelText(), English);
}

QTEST_MAIN(TestDialogLanguage)
#include "tst_dialog_language.moc"
