#include "fuzz/FuzzApplication.h"
#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"

#include "component/protocol/LineBuffer.h"
#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"
#include "component/supervisor/Component.h"
#include "component/supervisor/ComponentRequest.h"
#include "component/supervisor/Job.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>

#include <memory>

using namespace Quorlin;
using Fuzz::check;
using Kind = ComponentRequest::Kind;

namespace {

constexpr qsizetype LongestLine = 4096;

QByteArrayList linesOf(std::string_view text, std::size_t piece)
{
    LineBuffer buffer(LongestLine);
    QByteArrayList lines;
    Fuzz::inPieces(text, piece, [&](std::string_view part) {
        buffer.append({part.data(), static_cast<qsizetype>(part.size())});
        while (const auto line = buffer.takeLine()) {
            check(line->size() <= LongestLine && !line->contains('\n'));
            lines.append(*line);
        }
    });
    return lines;
}

/// What was taken for a message can be sent, and is the same message then; but for a byte order
/// mark at the beginning of a text, which is lost.
void checkMessage(const QByteArray &line)
{
    const auto message = Message::decode(line);
    if (!message || line.contains("\xEF\xBB\xBF"))
        return;
    const auto encoded = Message::encode(*message);
    check(encoded.endsWith('\n') && encoded.count('\n') == 1);
    check(Message::decode(encoded.chopped(1)) == message);
}

void checkLimits(const Limits &limits)
{
    constexpr int Week = 7 * 24 * 3600 * 1000;
    check(limits.stallMs > 0 && limits.stallMs <= Week && limits.totalMs > 0 &&
          limits.totalMs <= Week && limits.memoryBytes >= 0 &&
          limits.memoryBytes <= qint64{1} << 40 && limits.atOnce >= 0 &&
          limits.atOnce <= Job::MostUnderWay);
}

ComponentRequest readRequest(const QByteArray &line)
{
    auto request = ComponentRequest::read(line);
    checkLimits(request.limits);
    check((request.kind == Kind::Refused) == !request.complaint.isEmpty());
    check(request.kind != Kind::Job || request.number.value_or(-1) >= 0);
    check(request.kind == Kind::Job || request.documents.isEmpty());
    for (const auto &document : std::as_const(request.documents))
        check(document.file.startsWith(QLatin1Char('/')));
    return request;
}

/// What the driver hears of one job.
struct Heard
{
    qsizetype documents = 0;
    int starts = 0;
    int ends = 0;
    int percent = -1;
    int failures = 0;
};

/// A real component whose programs are all missing: nothing is ever started.
class Scene
{
public:
    Scene()
    {
        check(QDir(m_folder.path()).mkpath(QStringLiteral("none")));
        for (const auto *name : {"HOME", "TMPDIR", "XDG_CACHE_HOME"})
            qputenv(name, QFile::encodeName(m_folder.path()));
        qputenv("PATH", QFile::encodeName(m_folder.filePath(QStringLiteral("none"))));
        make();
    }

    void run(const QByteArray &bytes, const QList<ComponentRequest> &requests)
    {
        m_jobs.clear();
        m_errors = 0;
        m_component->receive(bytes + '\n');
        const int refused = static_cast<int>(std::ranges::count_if(
            requests, [](const auto &request) { return request.kind == Kind::Refused; }));
        check(m_errors >= refused);
        waitForJobs();
        for (const auto &job : std::as_const(m_jobs))
            check(job.failures == job.documents);
        // What one input leaves behind shall not matter to the next.
        if (++m_runs % 256 == 0)
            make();
    }

private:
    void make()
    {
        m_component = std::make_unique<Component>(Component::Folders{
            m_folder.filePath(QStringLiteral("none")), m_folder.filePath(QStringLiteral("j"))});
        check(m_component->prepare());
        QObject::connect(m_component.get(), &Component::send, m_component.get(),
                         [this](const QJsonObject &message) { take(message); });
    }

    void take(const QJsonObject &message)
    {
        const auto type = message.value(QLatin1String("type")).toString();
        if (type == QLatin1String(Protocol::Error)) {
            ++m_errors;
            return;
        }
        check(message.contains(QLatin1String("job")));
        const auto number = message.value(QLatin1String("job")).toInt();
        // Jobs of different kinds may have one number by the driver's fault.
        if (type == QLatin1String(Protocol::Start)) {
            ++m_jobs[number].starts;
            ++m_open;
            m_jobs[number].percent = -1;
        } else {
            takeReport(m_jobs[number], type, message);
        }
    }

    void takeReport(Heard &job, const QString &type, const QJsonObject &message)
    {
        check(job.starts > job.ends);
        if (type == QLatin1String(Protocol::Progress)) {
            const auto percent = message.value(QLatin1String("percent")).toInt(-1);
            check(percent >= 0 && percent <= 100 && (percent > job.percent || job.starts > 1));
            job.percent = percent;
        } else if (type == QLatin1String(Protocol::Failure)) {
            check(message.value(QLatin1String("index")).toInt() > 0);
            check(!message.value(QLatin1String("text")).toString().isEmpty());
            ++job.failures;
        } else if (type == QLatin1String(Protocol::Complete)) {
            const auto outputs = message.value(QLatin1String("outputs")).toArray();
            check(message.value(QLatin1String("success")).toBool() == outputs.isEmpty());
            job.documents += outputs.size();
            ++job.ends;
            --m_open;
        }
    }

    void waitForJobs() const
    {
        // A job that never ends is found by the time limit of whoever runs this.
        while (m_open > 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QTemporaryDir m_folder;
    std::unique_ptr<Component> m_component;
    QHash<int, Heard> m_jobs;
    int m_errors = 0;
    int m_open = 0;
    int m_runs = 0;
};

/// Only documents that are not there: a component that finds one would begin to work on it.
bool isImpossible(const ComponentRequest &request)
{
    constexpr qsizetype Many = 40;
    const auto missing = [](const ComponentRequest::Document &document) {
        return !document.file.contains(QChar(0)) && !QFileInfo::exists(document.file);
    };
    return request.documents.size() <= Many && std::ranges::all_of(request.documents, missing);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Fuzz::Application application;
    static std::unique_ptr<Scene> scene;
    if (!scene) {
        scene = std::make_unique<Scene>();
        // The component needs the application to its end.
        qAddPostRoutine([] { scene.reset(); });
    }

    const auto text = Fuzz::textOf(data, size);
    const auto lines = linesOf(text, std::max<std::size_t>(size, 1));
    check(linesOf(text, 1) == lines && linesOf(text, 7) == lines);
    QList<ComponentRequest> requests;
    for (const auto &line : Fuzz::bytesOf(text).split('\n')) {
        checkMessage(line);
        requests.append(readRequest(line));
    }
    if (std::ranges::all_of(requests, isImpossible))
        scene->run(Fuzz::bytesOf(text), requests);
    return 0;
}
