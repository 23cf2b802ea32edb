#include "convert/ComponentClient.h"
#include "convert/ComponentProcess.h"
#include "convert/PDFLib.h"

#include <QPointer>
#include <QTest>

using namespace Quorlin;

namespace {

/// A process that says what it is told to.
class SpeakingProcess : public ComponentProcess
{
public:
    using ComponentProcess::ComponentProcess;

    void start() override {}
    void send(const QByteArray & /*line*/) override {}
    void say(const QByteArray &bytes) { takeReports(bytes); }
};

class SpeakingClient : public ComponentClient
{
public:
    QPointer<SpeakingProcess> speaking;

protected:
    ComponentProcess *makeProcess() override
    {
        return speaking = new SpeakingProcess(ComponentSettings{{}}, this);
    }
};

} // namespace

/// What a client makes of reports that no component should send.
class TestComponentReports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDurationThatMakesNoSenseIsMeasured_data();
    void aDurationThatMakesNoSenseIsMeasured();
};

void TestComponentReports::aDurationThatMakesNoSenseIsMeasured_data()
{
    QTest::addColumn<QByteArray>("duration");
    QTest::addColumn<bool>("makesSense");
    QTest::newRow("told") << QByteArray("77.5") << true;
    QTest::newRow("negative") << QByteArray("-1") << false;
    QTest::newRow("endless") << QByteArray("1e300") << false;
    QTest::newRow("no number") << QByteArray("\"x\"") << false;
}

void TestComponentReports::aDurationThatMakesNoSenseIsMeasured()
{
    QFETCH(const QByteArray, duration);
    QFETCH(const bool, makesSense);
    SpeakingClient client;
    PDFLib lib(client);
    float heard = -1;
    connect(&lib, &ComponentObject::OnComplete, &lib,
            [&heard](bool, float seconds) { heard = seconds; });
    lib.Documents().Add(QStringLiteral("/nowhere/a"));
    lib.Start();
    QVERIFY(client.speaking);
    client.speaking->say("{\"type\":\"hello\",\"protocol\":1}\n"
                         "{\"type\":\"complete\",\"job\":1,\"duration\":" +
                         duration + "}\n");
    QTRY_VERIFY(heard >= 0);
    QVERIFY(makesSense ? heard == 77.5F : heard < 60);
}

QTEST_GUILESS_MAIN(TestComponentReports)
#include "tst_component_reports.moc"
