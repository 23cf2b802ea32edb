#include "settings/Registry.h"
#include "settings/SystemRegistry.h"

#include "RegistryScene.h"
#include "support/SystemActions.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include <memory>
#include <vector>

using namespace Quorlin;

namespace {

constexpr auto Key = "Test\\Writers";
constexpr int Timeout = 60000;

/// A process that writes values one by one and says so.
class Writer
{
public:
    Writer(const RegistryScene &scene, const QString &name, int from, int count) : m_name(name)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), scene.folder().path("user"));
        environment.insert(QStringLiteral("XDG_CONFIG_DIRS"), scene.folder().path("machine"));
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(QUORLIN_REGISTRY_WRITER),
                        {name, QString::number(from), QString::number(count)});
    }

    /// Takes what the process has said until now.
    int written()
    {
        m_said += m_process.readAllStandardOutput();
        return static_cast<int>(m_said.count('\n'));
    }
    void kill() { SystemActions::kill(m_process.processId()); }
    bool ended() { return m_process.waitForFinished(Timeout); }
    [[nodiscard]] int exitCode() const { return m_process.exitCode(); }

    /// The values that were reported and are not there, or are there with another text.
    QStringList lost(const RegistryScene &scene)
    {
        static_cast<void>(written());
        QStringList names;
        auto numbers = m_said.split('\n');
        numbers.removeLast(); // the killed writer may have said half a number
        for (const auto &number : numbers) {
            const auto name = m_name.toUtf8() + ' ' + number;
            if (scene.read(RegistryRoot::CurrentUser, Key, name) != QString::fromUtf8(number))
                names.append(QString::fromUtf8(name));
        }
        return names;
    }

private:
    QString m_name;
    QProcess m_process;
    QByteArray m_said;
};

QString damagedFiles(const RegistryScene &scene)
{
    return namesIn(scene.folder().path("user/quorlin"))
        .filter(QStringLiteral("damaged"))
        .join(QLatin1Char(' '));
}

} // namespace

class tst_registry_processes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesOutliveTheirProcess();
    void twoProcessesAtOnceLoseNothing();
    void aKilledWriterLosesNothingThatItReported();
    void twoProcessesSetADamagedFileAsideOnce();
};

void tst_registry_processes::valuesOutliveTheirProcess()
{
    const RegistryScene scene;
    Writer writer(scene, QStringLiteral("only"), 0, 5);
    QVERIFY(writer.ended());
    QCOMPARE(writer.exitCode(), 0);
    QCOMPARE(writer.written(), 5);
    QCOMPARE(writer.lost(scene), QStringList());
    QCOMPARE(SystemActions::modeOf(scene.userFile()), 0600);
}

void tst_registry_processes::twoProcessesAtOnceLoseNothing()
{
    constexpr auto count = 100;
    const RegistryScene scene;
    Writer first(scene, QStringLiteral("first"), 0, count);
    Writer second(scene, QStringLiteral("second"), 0, count);
    QVERIFY(first.ended() && second.ended());
    QCOMPARE(first.written(), count);
    QCOMPARE(second.written(), count);
    QCOMPARE(first.lost(scene), QStringList());
    QCOMPARE(second.lost(scene), QStringList());
    QVERIFY(isWhole(scene.userFile()));
}

void tst_registry_processes::aKilledWriterLosesNothingThatItReported()
{
    constexpr auto rounds = 12;
    const RegistryScene scene;
    std::vector<std::unique_ptr<Writer>> killed;
    QStringList moments;
    Writer other(scene, QStringLiteral("other"), 0, 100000);
    for (auto round = 0; round < rounds; ++round) {
        const auto name = QStringLiteral("killed in round %1").arg(round);
        killed.push_back(std::make_unique<Writer>(scene, name, 0, 100000));
        auto &writer = *killed.back();
        QTRY_VERIFY_WITH_TIMEOUT(writer.written() > 0, Timeout);
        // At any moment of a write, whatever that is doing.
        const auto moment = QRandomGenerator::global()->bounded(40000);
        QTest::qWait(moment / 1000);
        for (auto spin = 0; spin < moment % 1000; ++spin)
            static_cast<void>(writer.written());
        writer.kill();
        const auto when = QStringLiteral("killed at the moment %1").arg(moment);
        QVERIFY2(writer.ended(), qPrintable(when));
        const auto lost = writer.lost(scene);
        QVERIFY2(lost.isEmpty(), qPrintable(when + QStringLiteral(", lost ") + lost.join(u'|')));
        moments.append(QString::number(moment));
    }
    const auto before = other.written();
    QTRY_VERIFY_WITH_TIMEOUT(other.written() > before, Timeout);
    other.kill();
    QVERIFY(other.ended());
    QCOMPARE(other.lost(scene), QStringList());
    const auto when = QStringLiteral("killed at the moments ") + moments.join(u' ');
    for (const auto &writer : killed)
        QVERIFY2(writer->lost(scene).isEmpty(), qPrintable(when));
    QVERIFY2(damagedFiles(scene).isEmpty(), qPrintable(when));
    QVERIFY2(isWhole(scene.userFile()), qPrintable(when));
    scene.write(RegistryRoot::CurrentUser, Key, "last", QStringLiteral("more"));
}

/// The second must not take the first one's new file for the damaged one.
void tst_registry_processes::twoProcessesSetADamagedFileAsideOnce()
{
    constexpr auto count = 10;
    for (auto round = 0; round < 3; ++round) {
        const RegistryScene scene;
        const QByteArray bytes(5000, 'x');
        scene.plant(bytes);
        Writer first(scene, QStringLiteral("first"), 0, count);
        Writer second(scene, QStringLiteral("second"), 0, count);
        QVERIFY(first.ended() && second.ended());
        QCOMPARE(first.lost(scene), QStringList());
        QCOMPARE(second.lost(scene), QStringList());
        QCOMPARE(first.written() + second.written(), 2 * count);
        QCOMPARE(damagedFiles(scene), QStringLiteral("registry.db.damaged-1"));
        QCOMPARE(contentOf(scene.damaged(1)), bytes);
    }
}

QTEST_GUILESS_MAIN(tst_registry_processes)
#include "tst_registry_processes.moc"
