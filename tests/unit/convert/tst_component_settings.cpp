#include "convert/ComponentSettings.h"

#include <QCoreApplication>
#include <QTest>

using namespace Quorlin;

class tst_component_settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theComponentLiesBesideTheProgram();
};

void tst_component_settings::theComponentLiesBesideTheProgram()
{
    QCOMPARE(ComponentSettings().program,
             QCoreApplication::applicationDirPath() + QStringLiteral("/quorlin-pdf"));
}

QTEST_GUILESS_MAIN(tst_component_settings)
#include "tst_component_settings.moc"
