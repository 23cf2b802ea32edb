#include "fuzz/FuzzApplication.h"
#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"

#include "convert/ComponentClient.h"
#include "convert/ComponentProcess.h"
#include "convert/PDFDistiller.h"
#include "convert/PDFLib.h"
#include "convert/PDFMerger.h"

#include <QPointer>
#include <QSet>
#include <QStringList>

#include <cmath>

using namespace Quorlin;
using Fuzz::check;

namespace {

/// A process that says what it is told to, and then dies.
class SpeakingProcess : public ComponentProcess
{
public:
    using ComponentProcess::ComponentProcess;

    void start() override {}
    void send(const QByteArray & /*line*/) override {}
    void say(std::string_view bytes) { takeReports(Fuzz::bytesOf(bytes)); }
    void die() { Q_EMIT lost(Reason::EngineFailed, QStringLiteral("it died")); }
};

class SpeakingClient : public ComponentClient
{
public:
    QPointer<SpeakingProcess> speaking;
    int processes = 0;

protected:
    ComponentProcess *makeProcess() override
    {
        ++processes;
        return speaking = new SpeakingProcess(ComponentSettings{{}}, this);
    }
};

/// Watches one object: every event in its place, and everything once.
class Witness
{
public:
    Witness(ComponentObject &object, int documents) : m_object(object), m_documents(documents)
    {
        QObject::connect(&object, &ComponentObject::OnStart, &object, [this] {
            check(!m_started);
            m_started = true;
            m_events << QStringLiteral("start");
        });
        QObject::connect(&object, &ComponentObject::OnStateChange, &object,
                         [this](const QString &state) { note(QLatin1String("state ") + state); });
        QObject::connect(&object, &ComponentObject::OnProgress, &object, [this](qint32 percent) {
            note(QStringLiteral("progress %1").arg(percent));
        });
        QObject::connect(&object, &ComponentObject::documentFailed, &object,
                         [this](qint32 index, Reason reason, const QString &text) {
                             check(isNew(m_failures, index) && !text.isEmpty() &&
                                   reason != Reason::None);
                             note(QStringLiteral("failure %1 %2").arg(index).arg(text));
                         });
        QObject::connect(&object, &ComponentObject::OnComplete, &object,
                         [this](bool success, float duration) {
                             check(std::isfinite(duration) && duration >= 0);
                             note(QStringLiteral("complete %1").arg(success));
                             m_completed = true;
                         });
    }

    void watchOutputs(PDFLib &lib)
    {
        QObject::connect(&lib, &PDFLib::OnOutputFilename, &lib,
                         [this](qint32 index, const QString &file) {
                             check(isNew(m_outputs, index));
                             note(QStringLiteral("output %1 %2").arg(index).arg(file));
                         });
    }

    [[nodiscard]] bool completed() const { return m_completed; }

    [[nodiscard]] QStringList events() const
    {
        auto events = m_events;
        for (qint32 i = 1; i <= m_documents; ++i)
            events << m_object.Documents().Item(i).OutputFilename();
        return events;
    }

private:
    void note(const QString &event)
    {
        check(m_started && !m_completed);
        m_events << event;
    }

    [[nodiscard]] bool isNew(QSet<qint32> &seen, qint32 index) const
    {
        if (index < 1 || index > m_documents || seen.contains(index))
            return false;
        seen.insert(index);
        return true;
    }

    ComponentObject &m_object;
    int m_documents;
    QStringList m_events;
    QSet<qint32> m_outputs;
    QSet<qint32> m_failures;
    bool m_started = false;
    bool m_completed = false;
};

/// Three jobs, numbered 1 to 3, of which the component tells whatever the input says.
class Scene
{
public:
    Scene()
    {
        m_printing.watchOutputs(m_lib);
        add(m_lib, 3);
        add(m_distiller, 2);
        add(m_merger, 2);
    }

    [[nodiscard]] QStringList hear(std::string_view text, std::size_t piece)
    {
        QCoreApplication::processEvents();
        Fuzz::inPieces(text, piece, [this](std::string_view part) {
            if (m_client.speaking)
                m_client.speaking->say(part);
        });
        deliver();
        if (m_client.speaking)
            m_client.speaking->die();
        deliver();
        for (const auto *witness : {&m_printing, &m_distilling, &m_merging})
            check(witness->completed());
        check(m_client.processes == 1);
        return m_printing.events() + m_distilling.events() + m_merging.events();
    }

private:
    static void add(ComponentObject &object, int documents)
    {
        for (int i = 1; i <= documents; ++i)
            object.Documents().Add(QStringLiteral("/nowhere/%1").arg(i));
        object.Start();
    }

    /// One event is delivered in each turn of the loop.
    void deliver()
    {
        bool idle = false;
        m_client.post([&idle] { idle = true; });
        while (!idle)
            QCoreApplication::processEvents();
        // What a lost process leaves is handed on once more.
        for (int turn = 0; turn < 8; ++turn)
            QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    SpeakingClient m_client;
    PDFLib m_lib{m_client};
    PDFDistiller m_distiller{m_client};
    PDFMerger m_merger{m_client};
    Witness m_printing{m_lib, 3};
    Witness m_distilling{m_distiller, 2};
    Witness m_merging{m_merger, 2};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Fuzz::Application application;
    const auto text = Fuzz::textOf(data, size);
    const auto events = Scene().hear(text, std::max<std::size_t>(size, 1));
    check(Scene().hear(text, 13) == events);
    return 0;
}
