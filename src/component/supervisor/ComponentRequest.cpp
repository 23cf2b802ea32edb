#include "component/supervisor/ComponentRequest.h"

#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"
#include "component/supervisor/Job.h"

#include <QDir>
#include <QJsonArray>

#include <algorithm>

namespace Quorlin {

namespace {

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

constexpr double MostMebibytes = 1 << 20;

Limits limitsOf(const QJsonObject &request)
{
    Limits limits;
    const auto given = request.value(QLatin1String("limits")).toObject();
    const auto read = [&given](const char *key, int &milliseconds) {
        constexpr double MostSeconds = 7 * 24 * 3600;
        const auto seconds = given.value(QLatin1String(key)).toDouble(0);
        if (seconds > 0)
            milliseconds = std::max(1, static_cast<int>(std::min(seconds, MostSeconds) * 1000));
    };
    read("stall", limits.stallMs);
    read("total", limits.totalMs);
    const auto atOnce = given.value(QLatin1String("atOnce")).toDouble(0);
    if (atOnce >= 1)
        limits.atOnce = static_cast<int>(std::min<double>(atOnce, Job::MostUnderWay));
    const auto memory = given.value(QLatin1String("memory")).toDouble(0);
    if (memory >= 1)
        limits.memoryBytes = static_cast<qint64>(std::min<double>(memory, MostMebibytes)) << 20;
    return limits;
}

/// A path that begins with ":" would be a resource of the program.
bool isFullPath(const QString &path)
{
    return QDir::isAbsolutePath(path) && !path.startsWith(QLatin1Char(':'));
}

/// The documents of a request; nothing unless each has an absolute path.
std::optional<QList<ComponentRequest::Document>> documentsOf(const QJsonObject &request)
{
    const auto value = request.value(QLatin1String("documents"));
    if (!value.isArray())
        return std::nullopt;
    QList<ComponentRequest::Document> documents;
    for (const auto &entry : value.toArray()) {
        const auto object = entry.toObject();
        documents.append({textOf(object, "file"), textOf(object, "options")});
        if (!isFullPath(documents.last().file))
            return std::nullopt;
    }
    return documents;
}

std::optional<Outputs::Step> stepOf(const QString &word)
{
    if (word == QLatin1String(Protocol::Print))
        return Outputs::Step::Print;
    if (word == QLatin1String(Protocol::Distil))
        return Outputs::Step::Distil;
    if (word == QLatin1String(Protocol::Merge))
        return Outputs::Step::Merge;
    return std::nullopt;
}

} // namespace

ComponentRequest ComponentRequest::read(const QByteArray &line)
{
    if (line.trimmed().isEmpty())
        return {};
    const auto request = Message::decode(line);
    if (!request)
        return refused(QStringLiteral("a line is not a JSON object"));
    const auto type = textOf(*request, "type");
    if (const auto step = stepOf(type))
        return readJob(*step, *request);
    if (type == QLatin1String(Protocol::Clear))
        return readClear(*request);
    if (type != QLatin1String(Protocol::Warm))
        return refused(QStringLiteral("no request has this type"));
    ComponentRequest warm;
    warm.kind = Kind::Warm;
    return warm;
}

ComponentRequest ComponentRequest::readJob(Outputs::Step step, const QJsonObject &request)
{
    const auto number = request.value(QLatin1String("job")).toInt(-1);
    if (number < 0)
        return refused(QStringLiteral("a job needs a number"));
    const auto documents = documentsOf(request);
    if (!documents)
        return refused(QStringLiteral("the documents of the job make no sense"), number);
    ComponentRequest job;
    job.kind = Kind::Job;
    job.number = number;
    job.step = step;
    job.documents = *documents;
    job.printer = textOf(request, "printer");
    job.bookmarks = request.value(QLatin1String("bookmarks")).toBool();
    job.limits = limitsOf(request);
    return job;
}

ComponentRequest ComponentRequest::readClear(const QJsonObject &request)
{
    const auto step = stepOf(textOf(request, "step"));
    if (!step)
        return refused(QStringLiteral("this step cannot be cleared"));
    ComponentRequest clear;
    clear.kind = Kind::Clear;
    clear.step = *step;
    return clear;
}

ComponentRequest ComponentRequest::refused(const QString &complaint, std::optional<int> number)
{
    ComponentRequest result;
    result.kind = Kind::Refused;
    result.complaint = complaint;
    result.number = number;
    return result;
}

QStringList ComponentRequest::files() const
{
    QStringList files;
    for (const auto &document : documents)
        files << document.file;
    return files;
}

} // namespace Quorlin
