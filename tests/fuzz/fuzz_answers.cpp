#include "fuzz/FuzzApplication.h"
#include "fuzz/FuzzSupport.h"
#include "fuzz/FuzzTarget.h"

#include "component/backends/ghostscript/GhostscriptServer.h"
#include "component/supervisor/GhostscriptRun.h"
#include "component/supervisor/JsonWorker.h"

#include <QList>

using namespace Quorlin;
using Fuzz::check;

namespace {

/// What became of one task.
struct Course
{
    QList<int> progress;
    QList<WorkerAnswer> answers;

    [[nodiscard]] WorkerTask task()
    {
        WorkerTask task;
        task.progressed = [this](int percent) { progress.append(percent); };
        task.finished = [this](const WorkerAnswer &answer) { answers.append(answer); };
        return task;
    }
};

/// A worker without a process: it counts as started, and reads what it is told.
template <typename Base>
class ToldWorker : public Base
{
public:
    using Base::Base;

    void wake()
    {
        Base::start();
        QCoreApplication::processEvents();
        m_hasProcess = true;
        check(Base::isFree());
    }

    void tell(std::string_view bytes) { Base::read(Fuzz::bytesOf(bytes)); }

    [[nodiscard]] WorkerAnswer exit(int code) { return Base::exited(code, QProcess::NormalExit); }

protected:
    [[nodiscard]] bool startsWithTask() const override { return !m_hasProcess; }

private:
    bool m_hasProcess = false;
};

void checkAnswer(const WorkerAnswer &answer)
{
    check(!reasonKey(answer.reason).isEmpty());
    check(answer.reason == Reason::None || !reasonText(answer.reason).isEmpty());
}

Course courseOf(std::string_view text, std::size_t piece)
{
    Course course;
    ToldWorker<JsonWorker> worker(QStringLiteral("/nowhere"), QStringList(),
                                  QStringLiteral("nobody"));
    worker.wake();
    worker.run(course.task());
    Fuzz::inPieces(text, piece, [&](std::string_view part) { worker.tell(part); });
    check(course.answers.size() <= 1);
    worker.end();
    check(course.answers.size() == 1 && !worker.isFree());
    checkAnswer(course.answers.first());
    return course;
}

void checkJson(std::string_view text)
{
    const auto whole = courseOf(text, std::max<std::size_t>(text.size(), 1));
    const auto pieces = courseOf(text, 5);
    check(whole.progress == pieces.progress);
    check(whole.answers.first().reason == pieces.answers.first().reason &&
          whole.answers.first().values == pieces.answers.first().values);
}

WorkerAnswer distilled(std::string_view text, std::size_t piece, int exitCode)
{
    Course course;
    ToldWorker<GhostscriptRun> run;
    run.wake();
    run.run(course.task());
    Fuzz::inPieces(text, piece, [&](std::string_view part) { run.tell(part); });
    check(course.answers.isEmpty());
    const auto answer = run.exit(exitCode);
    run.end();
    return answer;
}

/// There is no output: whatever the process says, it did not do its work.
void checkRun(std::string_view text)
{
    for (const int exitCode : {0, 1}) {
        const auto whole = distilled(text, std::max<std::size_t>(text.size(), 1), exitCode);
        const auto pieces = distilled(text, 5, exitCode);
        checkAnswer(whole);
        check(whole.reason != Reason::None && whole.reason == pieces.reason &&
              whole.text == pieces.text);
    }
}

void checkServer(std::string_view text)
{
    using Answer = GhostscriptServer::Answer;
    for (const auto &line : Fuzz::bytesOf(text).split('\n')) {
        check(!GhostscriptServer::parse(line, "0") || line.contains(" 0 "));
        const auto answer = GhostscriptServer::parse(line, "token");
        if (!answer)
            continue;
        check(line.contains("%quorlin") && line.contains("token"));
        check(answer->pages >= 0);
        check((answer->kind == Answer::Kind::Error) == !answer->errorName.isEmpty());
        check(!answer->errorName.contains(' '));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Fuzz::Application application;
    const auto text = Fuzz::textOf(data, size);
    checkServer(text);
    checkJson(text);
    checkRun(text);
    return 0;
}
