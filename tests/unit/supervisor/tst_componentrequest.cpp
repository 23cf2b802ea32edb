#include "component/supervisor/ComponentRequest.h"

#include <QTest>

using namespace Quorlin;
using Kind = ComponentRequest::Kind;

/// What is read out of a driver's line; the whole component answers in tst_component.
class TestComponentRequest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAJob();
    void aPathThatIsNotFullIsRefused_data();
    void aPathThatIsNotFullIsRefused();
    void aLimitIsNeverNothing();
};

void TestComponentRequest::readsAJob()
{
    const auto request = ComponentRequest::read(
        R"({"type":"merge","job":7,"bookmarks":true,"documents":[{"file":"/d/a.pdf"}]})");
    QCOMPARE(request.kind, Kind::Job);
    QCOMPARE(request.step, Outputs::Step::Merge);
    QCOMPARE(request.number, 7);
    QVERIFY(request.bookmarks);
    QCOMPARE(request.files(), QStringList(QStringLiteral("/d/a.pdf")));
}

void TestComponentRequest::aPathThatIsNotFullIsRefused_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("relative") << QByteArray("a.pdf");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("a resource of the program") << QByteArray(":/a.pdf");
}

void TestComponentRequest::aPathThatIsNotFullIsRefused()
{
    QFETCH(const QByteArray, path);
    const auto request = ComponentRequest::read(
        R"({"type":"print","job":3,"documents":[{"file":")" + path + R"("}]})");
    QCOMPARE(request.kind, Kind::Refused);
    QCOMPARE(request.number, 3);
}

/// A time limit of no milliseconds would end every document before it has begun.
void TestComponentRequest::aLimitIsNeverNothing()
{
    const auto request = ComponentRequest::read(
        R"({"type":"print","job":1,"documents":[],"limits":{"stall":1e-9,"total":0.0004}})");
    QCOMPARE(request.limits.stallMs, 1);
    QCOMPARE(request.limits.totalMs, 1);
}

QTEST_GUILESS_MAIN(TestComponentRequest)
#include "tst_componentrequest.moc"
