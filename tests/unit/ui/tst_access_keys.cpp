#include "ui/AccessKeys.h"

#include <QTest>

using namespace Quorlin;

class TestAccessKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void marksTheFirstLetter();
    void takesAnotherWordsBeginningWhenALetterIsTaken();
    void takesALetterWithinAWordWhenNoBeginningIsFree();
    void leavesACaptionWithoutAFreeLetterAsItIs();
    void passesOverLettersThatNotEveryKeyboardHas();
    void keepsTheMarkThatACaptionHas();
    void takesADoubledMarkForNoMark();
    void leavesAnEmptyCaptionEmpty();
};

namespace {

QStringList texts(const char *joined)
{
    return QString::fromUtf8(joined).split(QLatin1Char('|'));
}

} // namespace

void TestAccessKeys::marksTheFirstLetter()
{
    QCOMPARE(AccessKeys::marked(texts("Convert|Merge")), texts("&Convert|&Merge"));
}

void TestAccessKeys::takesAnotherWordsBeginningWhenALetterIsTaken()
{
    QCOMPARE(AccessKeys::marked(texts("Send result|Show result file")),
             texts("&Send result|Show &result file"));
}

void TestAccessKeys::takesALetterWithinAWordWhenNoBeginningIsFree()
{
    QCOMPARE(AccessKeys::marked(texts("Show|Send")), texts("&Show|S&end"));
}

void TestAccessKeys::leavesACaptionWithoutAFreeLetterAsItIs()
{
    QCOMPARE(AccessKeys::marked(texts("a|b|ab")), texts("&a|&b|ab"));
}

void TestAccessKeys::passesOverLettersThatNotEveryKeyboardHas()
{
    QCOMPARE(AccessKeys::marked(texts("Öffnen|Éa")), texts("Ö&ffnen|É&a"));
    QCOMPARE(AccessKeys::marked(texts("Все|1 2")), texts("Все|1 2"));
}

void TestAccessKeys::keepsTheMarkThatACaptionHas()
{
    QCOMPARE(AccessKeys::marked(texts("Show|&Send")), texts("S&how|&Send"));
}

void TestAccessKeys::takesADoubledMarkForNoMark()
{
    QCOMPARE(AccessKeys::marked(texts("&&Send|Show")), texts("&&Send|&Show"));
}

void TestAccessKeys::leavesAnEmptyCaptionEmpty()
{
    QCOMPARE(AccessKeys::marked({QString()}), QStringList{QString()});
}

QTEST_GUILESS_MAIN(TestAccessKeys)
#include "tst_access_keys.moc"
