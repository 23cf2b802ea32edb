#include "fakes/FakeComponent.h"

#include "component/protocol/Acceptance.h"
#include "component/protocol/Message.h"
#include "component/protocol/Protocol.h"
#include "component/protocol/Reason.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace Quorlin {

namespace {

using namespace std::chrono_literals;

/// A name beside the file with another extension, under which no file is yet.
QString replaceExtension(const QString &path, const char *extension)
{
    const QFileInfo info(path);
    auto free = info.path() + QLatin1Char('/') + info.completeBaseName() + QLatin1String(extension);
    while (QFile::exists(free))
        free += QLatin1Char('~');
    return free;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool named(const QString &path, const char *word)
{
    return QFileInfo(path).completeBaseName().contains(QLatin1String(word));
}

QString member(const QJsonObject &object, const char *name)
{
    return object.value(QLatin1String(name)).toString();
}

} // namespace

FakeComponent::FakeComponent()
    : m_words(qEnvironmentVariable("QUORLIN_FAKE").split(QLatin1Char(','))),
      m_log(qEnvironmentVariable("QUORLIN_FAKE_LOG"))
{
}

int FakeComponent::run()
{
    note("pid " + QByteArray::number(QCoreApplication::applicationPid()));
    if (is("absent"))
        return 3;
    if (!is("mute"))
        greet();
    while (const auto line = m_requests.next()) {
        note(*line);
        if (const auto request = Message::decode(*line))
            handle(*request);
        else
            send({{QStringLiteral("type"), QStringLiteral("error")},
                  {QStringLiteral("text"), QStringLiteral("this is not a message")}});
    }
    while (is("deaf"))
        std::this_thread::sleep_for(1s);
    for (const auto *step : {Protocol::Print, Protocol::Distil, Protocol::Merge})
        clear(QString::fromLatin1(step));
    note("end");
    return 0;
}

void FakeComponent::greet()
{
    send({{QStringLiteral("type"), QStringLiteral("hello")},
          {QStringLiteral("protocol"), is("version") ? 99 : Protocol::Version},
          {QStringLiteral("component"), QStringLiteral("fake")},
          {QStringLiteral("version"), QStringLiteral("0.0.0")}});
}

void FakeComponent::handle(const QJsonObject &request)
{
    const auto type = member(request, "type");
    if (type == QLatin1String(Protocol::Clear))
        clear(member(request, "step"));
    else if (type != QLatin1String(Protocol::Warm))
        runJob(request);
}

void FakeComponent::runJob(const QJsonObject &request)
{
    const auto job = request.value(QLatin1String("job")).toInt();
    const auto step = member(request, "type");
    const auto documents = request.value(QLatin1String("documents")).toArray();
    if (is("refuse")) {
        send({{QStringLiteral("type"), QStringLiteral("error")},
              {QStringLiteral("job"), job},
              {QStringLiteral("text"), QStringLiteral("not today")}});
        return;
    }
    misbehaveBefore(job);
    QStringList outputs;
    bool success = false;
    const auto merged = step == QLatin1String(Protocol::Merge) ? merge(documents) : Outcome();
    for (int index = 1; index <= documents.size(); ++index) {
        const auto document = documents.at(index - 1).toObject();
        const auto outcome =
            step == QLatin1String(Protocol::Merge) ? merged : convert(step, document);
        outputs.append(outcome.output);
        success = success || outcome.reason.isEmpty();
        report(job, index, step, outcome);
        send({{QStringLiteral("type"), QStringLiteral("progress")},
              {QStringLiteral("job"), job},
              {QStringLiteral("percent"), index * 100 / static_cast<int>(documents.size())}});
    }
    complete(job, success, outputs);
}

void FakeComponent::misbehaveBefore(int job)
{
    for (const auto &word : m_words) {
        const auto once = word.startsWith(QLatin1String("once:")) ? word.mid(5) : QString();
        if (!once.isEmpty() && !QFile::exists(once)) {
            QFile(once).open(QIODevice::WriteOnly);
            std::_Exit(9);
        }
    }
    if (is("overlong"))
        sendBytes(QByteArray(Protocol::MaxLineBytes + 2, 'x') + '\n');
    send({{QStringLiteral("type"), QStringLiteral("start")}, {QStringLiteral("job"), job}});
    send({{QStringLiteral("type"), QStringLiteral("state")},
          {QStringLiteral("job"), job},
          {QStringLiteral("state"), QStringLiteral("Working")}});
    if (is("progress")) {
        for (const int percent : {-5, 250})
            send({{QStringLiteral("type"), QStringLiteral("progress")},
                  {QStringLiteral("job"), job},
                  {QStringLiteral("percent"), percent}});
    }
    if (is("strangers")) {
        complete(job + 1000, true, {});
        for (const int index : {-1, 0, 1000})
            report(job, index, QStringLiteral("print"), {QStringLiteral("damaged"), {}});
    }
}

QString FakeComponent::reasonFor(const QString &step, const QJsonObject &document) const
{
    const auto path = member(document, "file");
    const auto word = step == QLatin1String(Protocol::Print) ? QStringLiteral("because-%1-")
                                                             : QStringLiteral("later-%1-");
    for (const auto reason : allReasons())
        if (const auto key = reasonKey(reason); named(path, qPrintable(word.arg(key))))
            return key;
    if (named(path, "protected"))
        return QStringLiteral("protected");
    if (is("failall") || named(path, "fail") || named(path, "damaged"))
        return QStringLiteral("damaged");
    if (!QFile::exists(path))
        return QStringLiteral("not-found");
    if (step != QLatin1String(Protocol::Distil))
        return {};
    if (named(path, "undistillable"))
        return QStringLiteral("damaged");
    const auto options = member(document, "options");
    return QFile::exists(options) ? QString() : QStringLiteral("bad-options");
}

FakeComponent::Outcome FakeComponent::convert(const QString &step, const QJsonObject &document)
{
    const auto path = member(document, "file");
    const bool prints = step == QLatin1String(Protocol::Print);
    if (named(path, prints ? "die" : "perish"))
        std::_Exit(9);
    if (named(path, "dawdle"))
        m_requests.waitForEnd(10s);
    if (prints && Acceptance::entranceOf(path) == Entrance::PostScript)
        return {{}, path};
    const auto output = replaceExtension(path, prints ? ".ps~" : ".pdf~");
    const auto reason = reasonFor(step, document);
    if (reason.isEmpty() && !named(path, "missing"))
        write(step, output, (prints ? "%!PS-Adobe-3.0\n" : "%PDF-1.4\n") + contentOf(path));
    if (!prints)
        removeMade(path);
    return {reason, output};
}

FakeComponent::Outcome FakeComponent::merge(const QJsonArray &documents)
{
    QByteArray bytes("%PDF-1.4\n");
    QString reason;
    for (const auto &document : documents) {
        const auto path = member(document.toObject(), "file");
        if (named(path, "unmergeable"))
            reason = QStringLiteral("damaged");
        bytes += contentOf(path);
        removeMade(path);
    }
    const auto first = member(documents.first().toObject(), "file");
    const auto output = replaceExtension(first, ".merged.pdf~");
    if (reason.isEmpty())
        write(QString::fromLatin1(Protocol::Merge), output, bytes);
    return {reason, output};
}

void FakeComponent::report(int job, int index, const QString &step, const Outcome &outcome)
{
    if (is("garbage"))
        sendBytes("this is no JSON\n[1,2]\n\n{\"type\":17}\n\xff\xfe\n{\"type\":\"progress\"\n");
    if (is("silent"))
        return;
    if (!outcome.reason.isEmpty())
        send({{QStringLiteral("type"), QStringLiteral("failure")},
              {QStringLiteral("job"), job},
              {QStringLiteral("index"), index},
              {QStringLiteral("reason"), outcome.reason},
              {QStringLiteral("text"), QStringLiteral("it is ") + outcome.reason}});
    if (step == QLatin1String(Protocol::Print))
        send({{QStringLiteral("type"), QStringLiteral("output")},
              {QStringLiteral("job"), job},
              {QStringLiteral("index"), index},
              {QStringLiteral("file"), outcome.output}});
}

void FakeComponent::complete(int job, bool success, const QStringList &outputs)
{
    for (int time = 0; time < (is("twice") ? 2 : 1); ++time)
        send({{QStringLiteral("type"), QStringLiteral("complete")},
              {QStringLiteral("job"), job},
              {QStringLiteral("success"), success},
              {QStringLiteral("duration"), 0.25},
              {QStringLiteral("outputs"), QJsonArray::fromStringList(outputs)}});
}

void FakeComponent::clear(const QString &step)
{
    for (const auto &path : m_made.keys(step))
        removeMade(path);
}

void FakeComponent::write(const QString &step, const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(bytes);
    m_made.insert(path, step);
}

void FakeComponent::removeMade(const QString &path)
{
    if (m_made.remove(path))
        QFile::remove(path);
}

bool FakeComponent::is(const char *word) const
{
    return m_words.contains(QLatin1String(word));
}

void FakeComponent::send(const QJsonObject &message)
{
    sendBytes(Message::encode(message));
}

void FakeComponent::sendBytes(const QByteArray &bytes)
{
    if (is("split")) {
        for (const auto byte : bytes) {
            std::fputc(byte, stdout);
            std::fflush(stdout);
        }
        return;
    }
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void FakeComponent::note(const QByteArray &line)
{
    if (m_log.isEmpty())
        return;
    QFile file(m_log);
    if (file.open(QIODevice::Append))
        file.write(line + '\n');
}

} // namespace Quorlin
